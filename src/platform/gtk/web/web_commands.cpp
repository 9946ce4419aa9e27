// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/gtk/web/web_commands.h"

#include <gtkmm.h>

#include <array>

#include "platform/platform_error.h"
#include "platform/web_browser.h"

namespace kivandra::gtk {
namespace {

GtkWindow* WindowOf(WebKitWebView* view) {
  GtkRoot* root = gtk_widget_get_root(GTK_WIDGET(view));
  return GTK_IS_WINDOW(root) ? GTK_WINDOW(root) : nullptr;
}

/// The page setup that the last dialog gave, shared by all windows.
GtkPageSetup*& SharedPageSetup() {
  static GtkPageSetup* setup = nullptr;
  return setup;
}

void Print(WebKitWebView* view, bool ask) {
  WebKitPrintOperation* operation = webkit_print_operation_new(view);
  if (SharedPageSetup() != nullptr) webkit_print_operation_set_page_setup(operation, SharedPageSetup());
  if (ask) {
    webkit_print_operation_run_dialog(operation, WindowOf(view));
  } else {
    webkit_print_operation_print(operation);
  }
  g_object_unref(operation);
}

void OnPageSetupDone(GtkPageSetup* setup, gpointer /*data*/) {
  if (setup != nullptr) SharedPageSetup() = setup;
}

void AskPageSetup(WebKitWebView* view) {
  gtk_print_run_page_setup_dialog_async(WindowOf(view), SharedPageSetup(), nullptr, OnPageSetupDone, nullptr);
}

void OnSaved(GObject* source, GAsyncResult* result, gpointer /*data*/) {
  webkit_web_view_save_to_file_finish(WEBKIT_WEB_VIEW(source), result, nullptr);
}

void OnSaveAnswered(GtkNativeDialog* dialog, int response, gpointer view) {
  if (response == GTK_RESPONSE_ACCEPT) {
    GFile* file = gtk_file_chooser_get_file(GTK_FILE_CHOOSER(dialog));
    webkit_web_view_save_to_file(WEBKIT_WEB_VIEW(view), file, WEBKIT_SAVE_MODE_MHTML, nullptr, OnSaved,
                                 nullptr);
    g_object_unref(file);
  }
  g_object_unref(view);
  g_object_unref(dialog);
}

void AskSaveAs(WebKitWebView* view) {
  const char* title = webkit_web_view_get_title(view);
  std::string name = title != nullptr && *title != '\0' ? title : "page";
  for (char& c : name) {
    if (c == '/' || c == '\0') c = ' ';
  }
  GtkFileChooserNative* dialog = gtk_file_chooser_native_new(
      "Save the page", WindowOf(view), GTK_FILE_CHOOSER_ACTION_SAVE, "_Save", "_Cancel");
  gtk_file_chooser_set_current_name(GTK_FILE_CHOOSER(dialog), (name + ".mhtml").c_str());
  gtk_native_dialog_set_modal(GTK_NATIVE_DIALOG(dialog), TRUE);
  g_signal_connect(dialog, "response", G_CALLBACK(OnSaveAnswered), g_object_ref(view));
  gtk_native_dialog_show(GTK_NATIVE_DIALOG(dialog));
}

void ShowProperties(WebKitWebView* view) {
  const char* title = webkit_web_view_get_title(view);
  const char* address = webkit_web_view_get_uri(view);
  GTlsCertificate* certificate = nullptr;
  GTlsCertificateFlags errors{};
  const bool secret = webkit_web_view_get_tls_info(view, &certificate, &errors) != FALSE;
  GtkWidget* dialog =
      gtk_message_dialog_new(WindowOf(view), GTK_DIALOG_MODAL, GTK_MESSAGE_INFO, GTK_BUTTONS_CLOSE, "%s",
                             title != nullptr && *title != '\0' ? title : "Page");
  gtk_message_dialog_format_secondary_text(GTK_MESSAGE_DIALOG(dialog), "%s\n\n%s",
                                           address != nullptr ? address : "",
                                           secret ? "Nobody between here and the site can read along."
                                                  : "Others between here and the site could read along.");
  g_signal_connect(dialog, "response", G_CALLBACK(gtk_window_destroy), nullptr);
  gtk_window_present(GTK_WINDOW(dialog));
}

/// Letters alone grow and shrink; the page keeps its layout.
void SetTextSize(WebKitWebView* view, int size) {
  constexpr std::array<double, 5> kSizes{0.75, 0.875, 1.0, 1.25, 1.5};
  if (size < 0 || size >= static_cast<int>(kSizes.size())) {
    throw PlatformError(kInvalidCall, "There is no such size of letters.");
  }
  webkit_settings_set_zoom_text_only(webkit_web_view_get_settings(view), TRUE);
  webkit_web_view_set_zoom_level(view, kSizes[static_cast<std::size_t>(size)]);
}

}  // namespace

int CommandStatus(int command) {
  constexpr int kSupportedAndEnabled = 3;
  switch (command) {
    case OLECMDID_SAVEAS:
    case OLECMDID_PRINT:
    case OLECMDID_PRINTPREVIEW:
    case OLECMDID_PAGESETUP:
    case OLECMDID_PROPERTIES:
    case OLECMDID_CUT:
    case OLECMDID_COPY:
    case OLECMDID_PASTE:
    case OLECMDID_SELECTALL:
    case OLECMDID_ZOOM:
    case OLECMDID_UPDATECOMMANDS:
      return kSupportedAndEnabled;
    default:
      throw PlatformError(kInvalidCall, "The engine does not know this command.");
  }
}

void ExecuteCommand(WebKitWebView* view, int command, int option, int value) {
  switch (command) {
    case OLECMDID_SAVEAS:
      return AskSaveAs(view);
    case OLECMDID_PRINT:
      return Print(view, option != 2);
    case OLECMDID_PRINTPREVIEW:
      return Print(view, true);
    case OLECMDID_PAGESETUP:
      return AskPageSetup(view);
    case OLECMDID_PROPERTIES:
      return ShowProperties(view);
    case OLECMDID_CUT:
      return webkit_web_view_execute_editing_command(view, WEBKIT_EDITING_COMMAND_CUT);
    case OLECMDID_COPY:
      return webkit_web_view_execute_editing_command(view, WEBKIT_EDITING_COMMAND_COPY);
    case OLECMDID_PASTE:
      return webkit_web_view_execute_editing_command(view, WEBKIT_EDITING_COMMAND_PASTE);
    case OLECMDID_SELECTALL:
      return webkit_web_view_execute_editing_command(view, WEBKIT_EDITING_COMMAND_SELECT_ALL);
    case OLECMDID_ZOOM:
      return SetTextSize(view, value);
    case OLECMDID_UPDATECOMMANDS:
      return;
    default:
      throw PlatformError(kInvalidCall, "The engine does not know this command.");
  }
}

}  // namespace kivandra::gtk
