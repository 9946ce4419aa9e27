// SPDX-License-Identifier: GPL-3.0-or-later
#include <algorithm>
#include <memory>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/gtk/web/web_dialogs.h"
#include "platform/gtk/web/web_frames.h"
#include "platform/gtk/web/web_text.h"

namespace kivandra::gtk {
namespace {

constexpr char kDialog[] = "kivandra-save";

/// Longest file name of Linux file systems in bytes (NAME_MAX of limits.h), less room for an ending and for
/// the signs that a file system adds while it writes.
constexpr std::size_t kLongestName = 255 - 40;

/// The page as it stands now. Its text is UTF-8 from here on, and says so.
constexpr char kPageScript[] = R"js((() => {
  const page = document.documentElement.cloneNode(true);
  const make = (name) => Document.prototype.createElement.call(document, name);
  let head = page.querySelector('head');
  if (head === null) {
    head = make('head');
    page.prepend(head);
  }
  for (const old of head.querySelectorAll('meta[charset], meta[http-equiv="content-type" i]')) old.remove();
  if (head.querySelector('base') === null) {
    const base = make('base');
    base.setAttribute('href', document.baseURI);
    head.prepend(base);
  }
  const charset = make('meta');
  charset.setAttribute('charset', 'utf-8');
  head.prepend(charset);
  return (document.doctype === null ? '' : '<!DOCTYPE html>\n') + page.outerHTML;
})())js";

bool IsHtml(const std::string& type) {
  return type.empty() || type == "text/html" || type == "application/xhtml+xml";
}

std::string TypeOf(WebKitWebView* view) {
  WebKitWebResource* resource = webkit_web_view_get_main_resource(view);
  WebKitURIResponse* response = resource != nullptr ? webkit_web_resource_get_response(resource) : nullptr;
  return response != nullptr ? Text(webkit_uri_response_get_mime_type(response)) : std::string();
}

/// The ending for a type of content; none for a type that is not known, since a site can call it anything.
std::string EndingFor(const std::string& type) {
  constexpr std::pair<std::string_view, const char*> kEndings[] = {
      {"text/plain", ".txt"},  {"image/jpeg", ".jpg"},    {"image/png", ".png"},      {"image/gif", ".gif"},
      {"image/webp", ".webp"}, {"image/svg+xml", ".svg"}, {"application/pdf", ".pdf"}};
  if (IsHtml(type)) return ".html";
  for (const auto& [known, ending] : kEndings) {
    if (type == known) return ending;
  }
  return {};
}

/// Signs that have no place in a file's name: they part folders, stand for nothing, or turn text round so
/// that a name reads as another one.
bool MayStandInName(gunichar sign) {
  switch (g_unichar_type(sign)) {
    case G_UNICODE_CONTROL:
    case G_UNICODE_FORMAT:
    case G_UNICODE_LINE_SEPARATOR:
    case G_UNICODE_PARAGRAPH_SEPARATOR:
    case G_UNICODE_PRIVATE_USE:
    case G_UNICODE_UNASSIGNED:
      return false;
    default:
      return sign > 0x7F ||
             std::string_view("/\\:*?\"<>|").find(static_cast<char>(sign)) == std::string_view::npos;
  }
}

void SayIfFailed(WebKitWebView* view, GError* error) {
  if (error != nullptr) SayOf(view, "The page was not saved", WordsForSaving(error));
  g_clear_error(&error);
}

/// A save on its way; holds the view and the bytes until the file is written.
struct Saving {
  Saving(WebKitWebView* of, GFile* to)
      : view(WEBKIT_WEB_VIEW(g_object_ref(of))), file(G_FILE(g_object_ref(to))) {}
  ~Saving() {
    g_object_unref(view);
    g_object_unref(file);
  }
  Saving(const Saving&) = delete;
  Saving& operator=(const Saving&) = delete;

  WebKitWebView* view;
  GFile* file;
  std::string bytes;
};

void OnWritten(GObject* file, GAsyncResult* result, gpointer data) {
  const std::unique_ptr<Saving> saving(static_cast<Saving*>(data));
  GError* error = nullptr;
  g_file_replace_contents_finish(G_FILE(file), result, nullptr, &error);
  SayIfFailed(saving->view, error);
}

void Write(std::unique_ptr<Saving> saving) {
  Saving& held = *saving.release();
  g_file_replace_contents_async(held.file, held.bytes.data(), held.bytes.size(), nullptr, FALSE,
                                G_FILE_CREATE_NONE, nullptr, OnWritten, &held);
}

void OnPageText(GObject* view, GAsyncResult* result, gpointer data) {
  std::unique_ptr<Saving> saving(static_cast<Saving*>(data));
  GError* error = nullptr;
  JSCValue* page = webkit_web_view_evaluate_javascript_finish(WEBKIT_WEB_VIEW(view), result, &error);
  if (page == nullptr) return SayIfFailed(saving->view, error);
  char* text = jsc_value_to_string(page);
  saving->bytes = Text(text);
  g_free(text);
  g_object_unref(page);
  Write(std::move(saving));
}

void OnData(GObject* resource, GAsyncResult* result, gpointer data) {
  std::unique_ptr<Saving> saving(static_cast<Saving*>(data));
  GError* error = nullptr;
  gsize size = 0;
  guchar* bytes = webkit_web_resource_get_data_finish(WEBKIT_WEB_RESOURCE(resource), result, &size, &error);
  if (bytes == nullptr) return SayIfFailed(saving->view, error);
  saving->bytes.assign(reinterpret_cast<const char*>(bytes), size);
  g_free(bytes);
  Write(std::move(saving));
}

void OnArchived(GObject* view, GAsyncResult* result, gpointer data) {
  const std::unique_ptr<Saving> saving(static_cast<Saving*>(data));
  GError* error = nullptr;
  webkit_web_view_save_to_file_finish(WEBKIT_WEB_VIEW(view), result, &error);
  SayIfFailed(saving->view, error);
}

void OnAnswered(GtkDialog* dialog, int response, gpointer view) {
  GFile* file =
      response == GTK_RESPONSE_ACCEPT ? gtk_file_chooser_get_file(GTK_FILE_CHOOSER(dialog)) : nullptr;
  if (file != nullptr) {
    SavePage(WEBKIT_WEB_VIEW(view), file);
    g_object_unref(file);
  }
  gtk_window_destroy(GTK_WINDOW(dialog));
}

void AddFilter(GtkFileChooser* chooser, const char* name, const std::vector<const char*>& patterns) {
  GtkFileFilter* filter = gtk_file_filter_new();
  gtk_file_filter_set_name(filter, name);
  for (const char* pattern : patterns) gtk_file_filter_add_pattern(filter, pattern);
  gtk_file_chooser_add_filter(chooser, filter);
  g_object_unref(filter);
}

}  // namespace

std::string FileNameFor(const std::string& title, const std::string& type) {
  char* valid = g_utf8_make_valid(title.data(), static_cast<gssize>(title.size()));
  std::string name;
  for (const char* at = valid; *at != '\0'; at = g_utf8_next_char(at)) {
    const gunichar sign = g_utf8_get_char(at);
    const bool blank = g_unichar_isspace(sign) != FALSE || !MayStandInName(sign);
    const std::string next =
        blank ? std::string(" ") : std::string(at, static_cast<std::size_t>(g_utf8_next_char(at) - at));
    if (name.size() + next.size() > kLongestName) break;
    if (blank && (name.empty() || name.back() == ' ')) continue;
    name += next;
  }
  g_free(valid);
  // A dot at the beginning would hide the file, a tilde would stand for a folder.
  name.erase(0, std::min(name.find_first_not_of(" .~"), name.size()));
  name.erase(name.find_last_not_of(" .") + 1);
  const std::string ending = EndingFor(type);
  if (!ending.empty() && name.ends_with(ending)) return name;
  return (name.empty() ? "page" : name) + ending;
}

std::string WordsForSaving(const GError* error) {
  if (g_error_matches(error, G_IO_ERROR, G_IO_ERROR_NO_SPACE)) {
    return "There is no more room on the disk. Ask a grown-up to make some.";
  }
  if (g_error_matches(error, G_IO_ERROR, G_IO_ERROR_PERMISSION_DENIED) ||
      g_error_matches(error, G_IO_ERROR, G_IO_ERROR_READ_ONLY)) {
    return "Nothing may be written into this folder. Choose another one.";
  }
  if (g_error_matches(error, G_IO_ERROR, G_IO_ERROR_NOT_FOUND) ||
      g_error_matches(error, G_IO_ERROR, G_IO_ERROR_NOT_DIRECTORY)) {
    return "This folder is not there any more. Choose another one.";
  }
  if (g_error_matches(error, G_IO_ERROR, G_IO_ERROR_FILENAME_TOO_LONG) ||
      g_error_matches(error, G_IO_ERROR, G_IO_ERROR_INVALID_FILENAME)) {
    return "This name can't be used. Choose a shorter one.";
  }
  return "It could not be written. Choose another folder or another name.";
}

void SavePage(WebKitWebView* view, GFile* file) {
  auto saving = std::make_unique<Saving>(view, file);
  char* path = g_file_get_basename(file);
  const std::string name = Text(path);
  g_free(path);
  if (name.ends_with(".mhtml") || name.ends_with(".mht")) {
    webkit_web_view_save_to_file(view, file, WEBKIT_SAVE_MODE_MHTML, nullptr, OnArchived, saving.release());
  } else if (IsHtml(TypeOf(view))) {
    webkit_web_view_evaluate_javascript(view, kPageScript, -1, kOwnWorld, nullptr, nullptr, OnPageText,
                                        saving.release());
  } else {
    webkit_web_resource_get_data(webkit_web_view_get_main_resource(view), nullptr, OnData, saving.release());
  }
}

void AskSaveAs(WebKitWebView* view) {
  if (OpenDialog(view, kDialog) != nullptr) return;
  GtkWidget* dialog =
      gtk_file_chooser_dialog_new("Save the page", WindowOf(view), GTK_FILE_CHOOSER_ACTION_SAVE, "_Cancel",
                                  GTK_RESPONSE_CANCEL, "_Save", GTK_RESPONSE_ACCEPT, nullptr);
  auto* chooser = GTK_FILE_CHOOSER(dialog);
  const std::string type = TypeOf(view);
  gtk_file_chooser_set_current_name(chooser,
                                    FileNameFor(Text(webkit_web_view_get_title(view)), type).c_str());
  if (IsHtml(type)) {
    AddFilter(chooser, "Web page (.html)", {"*.html", "*.htm"});
    AddFilter(chooser, "Web page with its pictures in one file (.mhtml)", {"*.mhtml", "*.mht"});
  }
  gtk_window_set_modal(GTK_WINDOW(dialog), TRUE);
  gtk_dialog_set_default_response(GTK_DIALOG(dialog), GTK_RESPONSE_ACCEPT);
  g_signal_connect_object(dialog, "response", G_CALLBACK(OnAnswered), view, G_CONNECT_DEFAULT);
  PresentDialog(view, kDialog, GTK_WINDOW(dialog));
}

}  // namespace kivandra::gtk
