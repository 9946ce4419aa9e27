// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/gtk/web/web_copy.h"

#include <memory>
#include <string>
#include <string_view>

#include "platform/gtk/brief_wait.h"
#include "platform/gtk/gtk_clipboard.h"

namespace kivandra::gtk {
namespace {

/// What the clipboard holds: all of it if it is the program's own, else its text.
class KeptClipboard {
 public:
  KeptClipboard() {
    if (gdk_clipboard_is_local(clipboard_) == FALSE) {
      text_ = GtkClipboard().GetText();
    } else if (GdkContentProvider* content = gdk_clipboard_get_content(clipboard_); content != nullptr) {
      content_ = GDK_CONTENT_PROVIDER(g_object_ref(content));
    }
  }
  ~KeptClipboard() { g_clear_object(&content_); }
  KeptClipboard(const KeptClipboard&) = delete;
  KeptClipboard& operator=(const KeptClipboard&) = delete;

  void PutBackIfEmptied() {
    if (!IsEmpty()) {
      return;
    }
    if (content_ != nullptr) {
      gdk_clipboard_set_content(clipboard_, content_);
    } else if (!text_.empty()) {
      gdk_clipboard_set_text(clipboard_, text_.c_str());
    }
  }

 private:
  /// The engine's own note, which it also writes when it has nothing else, does not count.
  [[nodiscard]] bool IsEmpty() const {
    GdkContentFormats* formats = gdk_clipboard_get_formats(clipboard_);
    gsize kinds = 0;
    static_cast<void>(gdk_content_formats_get_gtypes(formats, &kinds));
    const char* const* types = gdk_content_formats_get_mime_types(formats, nullptr);
    for (; types != nullptr && *types != nullptr; ++types) {
      kinds += std::string_view(*types).starts_with("org.webkitgtk.") ? 0 : 1;
    }
    return kinds == 0;
  }

  GdkClipboard* clipboard_ = gdk_display_get_clipboard(gdk_display_get_default());
  GdkContentProvider* content_ = nullptr;
  std::string text_;
};

void OnAnswered(GObject* view, GAsyncResult* result, gpointer data) {
  const std::unique_ptr<std::shared_ptr<bool>> answered(static_cast<std::shared_ptr<bool>*>(data));
  static_cast<void>(
      webkit_web_view_can_execute_editing_command_finish(WEBKIT_WEB_VIEW(view), result, nullptr));
  **answered = true;
}

}  // namespace

void TakeSelection(WebKitWebView* view, const char* command) {
  g_object_ref(view);       // its window may close meanwhile
  KeptClipboard clipboard;  // with nothing selected the engine empties it
  const auto answered = std::make_shared<bool>(false);
  webkit_web_view_execute_editing_command(view, command);
  // The page's process does one thing after the other: when it answers this it has done the command.
  webkit_web_view_can_execute_editing_command(view, command, nullptr, OnAnswered,
                                              new std::shared_ptr<bool>(answered));
  WaitBriefly(*answered);
  clipboard.PutBackIfEmptied();
  g_object_unref(view);
}

}  // namespace kivandra::gtk
