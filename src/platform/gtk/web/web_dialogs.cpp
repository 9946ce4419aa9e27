// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/gtk/web/web_dialogs.h"

#include "platform/gtk/utf8_text.h"
#include "platform/gtk/web/web_text.h"

namespace kivandra::gtk {
namespace {

constexpr std::size_t kMostOfTitle = 200;
constexpr std::size_t kMostOfAddress = 400;

void OnDialogGone(gpointer view, GObject* dialog) {
  for (const char* name : {"kivandra-save", "kivandra-print", "kivandra-setup", "kivandra-properties"}) {
    if (g_object_get_data(G_OBJECT(view), name) == dialog) g_object_set_data(G_OBJECT(view), name, nullptr);
  }
  g_object_unref(view);
}

/// The view is no longer in a window: its dialog has no place either. (The view itself may be held for
/// longer.)
void OnViewMoved(GtkWidget* view, GParamSpec* /*property*/, GtkWindow* dialog) {
  if (gtk_widget_get_root(view) == nullptr) gtk_window_destroy(dialog);
}

void DressButtons(GtkWidget* widget) {
  if (GTK_IS_BUTTON(widget) && gtk_button_get_label(GTK_BUTTON(widget)) != nullptr) {
    gtk_widget_add_css_class(widget, "kv-btn");
  }
  for (GtkWidget* child = gtk_widget_get_first_child(widget); child != nullptr;
       child = gtk_widget_get_next_sibling(child)) {
    DressButtons(child);
  }
}

GtkWidget* NewBox(WebKitWebView* view, const std::string& title, const std::string& text) {
  GtkWidget* box = gtk_message_dialog_new(WindowOf(view), GTK_DIALOG_MODAL, GTK_MESSAGE_INFO,
                                          GTK_BUTTONS_CLOSE, "%s", title.c_str());
  gtk_message_dialog_format_secondary_text(GTK_MESSAGE_DIALOG(box), "%s", text.c_str());
  gtk_window_set_title(GTK_WINDOW(box), "Kivandra");
  g_signal_connect(box, "response", G_CALLBACK(gtk_window_destroy), nullptr);
  DressButtons(box);
  return box;
}

}  // namespace

GtkWindow* WindowOf(WebKitWebView* view) {
  GtkRoot* root = gtk_widget_get_root(GTK_WIDGET(view));
  return GTK_IS_WINDOW(root) ? GTK_WINDOW(root) : nullptr;
}

GtkWindow* OpenDialog(WebKitWebView* view, const char* name) {
  gpointer dialog = g_object_get_data(G_OBJECT(view), name);
  if (dialog == nullptr) return nullptr;
  gtk_window_present(GTK_WINDOW(dialog));
  return GTK_WINDOW(dialog);
}

void PresentDialog(WebKitWebView* view, const char* name, GtkWindow* dialog) {
  gtk_widget_add_css_class(GTK_WIDGET(dialog), "kv-plain");
  g_object_set_data(G_OBJECT(view), name, dialog);
  g_object_weak_ref(G_OBJECT(dialog), OnDialogGone, g_object_ref(view));
  g_signal_connect_object(view, "notify::root", G_CALLBACK(OnViewMoved), dialog, G_CONNECT_DEFAULT);
  gtk_window_present(dialog);
}

void ShowProperties(WebKitWebView* view) {
  constexpr char kName[] = "kivandra-properties";
  if (OpenDialog(view, kName) != nullptr) return;
  GTlsCertificate* certificate = nullptr;
  GTlsCertificateFlags errors{};
  const bool secret = webkit_web_view_get_tls_info(view, &certificate, &errors) != FALSE;
  const std::string title = ShownText(Text(webkit_web_view_get_title(view)), kMostOfTitle);
  const std::string address = ShownText(Text(webkit_web_view_get_uri(view)), kMostOfAddress);
  GtkWidget* box = NewBox(view, title.empty() ? "Page" : title,
                          address + "\n\n" +
                              (secret ? "Nobody between here and the site can read along."
                                      : "Others between here and the site could read along."));
  PresentDialog(view, kName, GTK_WINDOW(box));
}

void SayOf(WebKitWebView* view, const std::string& title, const std::string& text) {
  GtkWidget* box = NewBox(view, title, text);
  gtk_widget_add_css_class(box, "kv-plain");
  g_signal_connect_object(view, "notify::root", G_CALLBACK(OnViewMoved), box, G_CONNECT_DEFAULT);
  gtk_window_present(GTK_WINDOW(box));
}

}  // namespace kivandra::gtk
