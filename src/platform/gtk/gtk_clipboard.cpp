// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/gtk/gtk_clipboard.h"

#include <gtk/gtk.h>

#include <memory>

namespace kivandra::gtk {
namespace {

constexpr guint kPatience = 1000;  // milliseconds

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

gboolean GiveUp(gpointer data) {
  *static_cast<bool*>(data) = true;
  return G_SOURCE_REMOVE;
}

GdkClipboard* Desktop() { return gdk_display_get_clipboard(gdk_display_get_default()); }

}  // namespace

void GtkClipboard::Clear() { gdk_clipboard_set_content(Desktop(), nullptr); }

std::string GtkClipboard::GetText() {
  auto answer = std::make_shared<Answer>();
  GCancellable* cancellable = g_cancellable_new();
  gdk_clipboard_read_text_async(Desktop(), cancellable, Read, new std::shared_ptr<Answer>(answer));
  bool late = false;
  const guint timer = g_timeout_add(kPatience, GiveUp, &late);
  while (!answer->done && !late) {
    g_main_context_iteration(nullptr, TRUE);
  }
  if (late) {
    g_cancellable_cancel(cancellable);
  } else {
    g_source_remove(timer);
  }
  g_object_unref(cancellable);
  return answer->text;
}

}  // namespace kivandra::gtk
