// SPDX-License-Identifier: GPL-3.0-or-later
#include <gtk/gtkunixprint.h>

#include "platform/gtk/web/web_dialogs.h"

namespace kivandra::gtk {
namespace {

constexpr char kPrintDialog[] = "kivandra-print";
constexpr char kSetupDialog[] = "kivandra-setup";

/// What the engine can do by itself, whatever the printer.
constexpr auto kCapabilities = static_cast<GtkPrintCapabilities>(
    GTK_PRINT_CAPABILITY_PAGE_SET | GTK_PRINT_CAPABILITY_COPIES | GTK_PRINT_CAPABILITY_COLLATE |
    GTK_PRINT_CAPABILITY_REVERSE | GTK_PRINT_CAPABILITY_SCALE | GTK_PRINT_CAPABILITY_NUMBER_UP);

/// The page setup that the last dialog gave, or null.
GtkPageSetup* pageSetup = nullptr;
/// The one print dialog that is open, or null.
gpointer openPrintDialog = nullptr;

void KeepPageSetup(GtkPageSetup* setup) { g_set_object(&pageSetup, setup); }

void OnFailed(WebKitPrintOperation* /*operation*/, GError* error, gpointer view) {
  const bool none = g_error_matches(error, WEBKIT_PRINT_ERROR, WEBKIT_PRINT_ERROR_PRINTER_NOT_FOUND) != FALSE;
  SayOf(WEBKIT_WEB_VIEW(view), "The page was not printed",
        none ? "There is no printer here. Ask a grown-up to connect one."
             : "The printer could not do it. Ask a grown-up to look at it.");
}

void Print(WebKitWebView* view, GtkPrintSettings* settings) {
  WebKitPrintOperation* operation = webkit_print_operation_new(view);
  if (settings != nullptr) webkit_print_operation_set_print_settings(operation, settings);
  if (pageSetup != nullptr) webkit_print_operation_set_page_setup(operation, pageSetup);
  g_signal_connect_object(operation, "failed", G_CALLBACK(OnFailed), view, G_CONNECT_DEFAULT);
  // It lives until the engine has done with it.
  g_signal_connect(operation, "finished", G_CALLBACK(g_object_unref), nullptr);
  webkit_print_operation_print(operation);
}

void OnPrintAnswered(GtkDialog* dialog, int response, gpointer view) {
  auto* chosen = GTK_PRINT_UNIX_DIALOG(dialog);
  if (response == GTK_RESPONSE_OK) {
    KeepPageSetup(gtk_print_unix_dialog_get_page_setup(chosen));
    GtkPrintSettings* settings = gtk_print_unix_dialog_get_settings(chosen);
    Print(WEBKIT_WEB_VIEW(view), settings);
    g_object_unref(settings);
  }
  gtk_window_destroy(GTK_WINDOW(dialog));
}

void OnSetupAnswered(GtkDialog* dialog, int response, gpointer /*data*/) {
  if (response == GTK_RESPONSE_OK) {
    KeepPageSetup(gtk_page_setup_unix_dialog_get_page_setup(GTK_PAGE_SETUP_UNIX_DIALOG(dialog)));
  }
  gtk_window_destroy(GTK_WINDOW(dialog));
}

}  // namespace

void PrintPage(WebKitWebView* view) { Print(view, nullptr); }

void AskPrint(WebKitWebView* view) {
  if (openPrintDialog != nullptr) return gtk_window_present(GTK_WINDOW(openPrintDialog));
  GtkWidget* dialog = gtk_print_unix_dialog_new("Print the page", WindowOf(view));
  auto* print = GTK_PRINT_UNIX_DIALOG(dialog);
  gtk_print_unix_dialog_set_manual_capabilities(print, kCapabilities);
  gtk_print_unix_dialog_set_embed_page_setup(print, TRUE);
  if (pageSetup != nullptr) gtk_print_unix_dialog_set_page_setup(print, pageSetup);
  gtk_window_set_modal(GTK_WINDOW(dialog), TRUE);
  openPrintDialog = dialog;
  g_object_add_weak_pointer(G_OBJECT(dialog), &openPrintDialog);
  g_signal_connect_object(dialog, "response", G_CALLBACK(OnPrintAnswered), view, G_CONNECT_DEFAULT);
  PresentDialog(view, kPrintDialog, GTK_WINDOW(dialog));
}

void AskPageSetup(WebKitWebView* view) {
  if (OpenDialog(view, kSetupDialog) != nullptr) return;
  GtkWidget* dialog = gtk_page_setup_unix_dialog_new("Page setup", WindowOf(view));
  if (pageSetup != nullptr) {
    gtk_page_setup_unix_dialog_set_page_setup(GTK_PAGE_SETUP_UNIX_DIALOG(dialog), pageSetup);
  }
  gtk_window_set_modal(GTK_WINDOW(dialog), TRUE);
  g_signal_connect(dialog, "response", G_CALLBACK(OnSetupAnswered), nullptr);
  PresentDialog(view, kSetupDialog, GTK_WINDOW(dialog));
}

}  // namespace kivandra::gtk
