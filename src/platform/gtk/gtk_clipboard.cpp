// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/gtk/gtk_clipboard.h"

#include <gtk/gtk.h>

#include <memory>

#include "platform/gtk/brief_wait.h"

namespace kivandra::gtk {
namespace {

/// What a read leaves behind; shared, for a slow owner may answer after the wait.
struct Answer {
  bool done = false;
  std::string text;
};

void Read(GObject* clipboard, GAsyncResult* result, gpointer data) {
  const std::unique_ptr<std::shared_ptr<Answer>> answer(static_cast<std::shared_ptr<Answer>*>(data));
  char* text = gdk_clipboard_read_text_finish(GDK_CLIPBOARD(clipboard), result, nullptr);
  if (text != nullptr) {
    (*answer)->text = text;
    g_free(text);
  }
  (*answer)->done = true;
}

GdkClipboard* Desktop() { return gdk_display_get_clipboard(gdk_display_get_default()); }

}  // namespace

void GtkClipboard::Clear() { gdk_clipboard_set_content(Desktop(), nullptr); }

std::string GtkClipboard::GetText() {
  auto answer = std::make_shared<Answer>();
  GCancellable* cancellable = g_cancellable_new();
  gdk_clipboard_read_text_async(Desktop(), cancellable, Read, new std::shared_ptr<Answer>(answer));
  WaitBriefly(answer->done);
  if (!answer->done) {
    g_cancellable_cancel(cancellable);
  }
  g_object_unref(cancellable);
  return answer->text;
}

}  // namespace kivandra::gtk
