// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/gtk/web/web_settings.h"

#include <algorithm>
#include <string_view>

namespace kivandra::gtk {
namespace {

/// Features of the engine that are switched off, by their identifiers.
constexpr std::string_view kFeaturesOff[] = {
    "ServiceWorkers",  // a worker can show a page that the network never gave
    "SharedWorker",
    "DownloadAttribute",  // a link with it would skip the question of where it goes
    "LinkPreload",       "LinkPrefetch",
    "LinkDNSPrefetch",   "BackspaceKeyNavigation",
    "FullScreen",        "PointerLock",
    "Notifications",     "ScreenWakeLockAPI",
    "MediaDevices",      "AllowTopNavigationToDataURLs",
};

void SwitchFeaturesOff(WebKitSettings* settings) {
  WebKitFeatureList* features = webkit_settings_get_all_features();
  for (gsize i = 0; i < webkit_feature_list_get_length(features); ++i) {
    WebKitFeature* feature = webkit_feature_list_get(features, i);
    const std::string_view identifier = webkit_feature_get_identifier(feature);
    if (std::find(std::begin(kFeaturesOff), std::end(kFeaturesOff), identifier) != std::end(kFeaturesOff)) {
      webkit_settings_set_feature_enabled(settings, feature, FALSE);
    }
  }
  webkit_feature_list_unref(features);
}

/// A page's boxes are answered for it, as if they had been cancelled: an open one would hold up every later
/// page of its window, and none can pass for the program's own question or ask for a password.
gboolean OnScriptDialog(WebKitWebView* /*view*/, WebKitScriptDialog* dialog, gpointer /*data*/) {
  if (webkit_script_dialog_get_dialog_type(dialog) == WEBKIT_SCRIPT_DIALOG_BEFORE_UNLOAD_CONFIRM) {
    webkit_script_dialog_confirm_set_confirmed(dialog, TRUE);  // a page never holds its window open
  }
  return TRUE;
}

gboolean OnPermissionRequest(WebKitWebView* /*view*/, WebKitPermissionRequest* request, gpointer /*data*/) {
  webkit_permission_request_deny(request);
  return TRUE;
}

gboolean OnAuthenticate(WebKitWebView* /*view*/, WebKitAuthenticationRequest* request, gpointer /*data*/) {
  webkit_authentication_request_cancel(request);
  return TRUE;
}

gboolean OnFileChooser(WebKitWebView* /*view*/, WebKitFileChooserRequest* request, gpointer /*data*/) {
  webkit_file_chooser_request_cancel(request);
  return TRUE;
}

bool IsEditingItem(WebKitContextMenuItem* item) {
  switch (webkit_context_menu_item_get_stock_action(item)) {
    case WEBKIT_CONTEXT_MENU_ACTION_COPY:
    case WEBKIT_CONTEXT_MENU_ACTION_CUT:
    case WEBKIT_CONTEXT_MENU_ACTION_PASTE:
    case WEBKIT_CONTEXT_MENU_ACTION_DELETE:
    case WEBKIT_CONTEXT_MENU_ACTION_SELECT_ALL:
      return true;
    default:
      return false;
  }
}

gboolean OnContextMenu(WebKitWebView* /*view*/, WebKitContextMenu* menu, WebKitHitTestResult* /*hit*/,
                       gpointer /*data*/) {
  GList* items = g_list_copy(webkit_context_menu_get_items(menu));
  for (GList* item = items; item != nullptr; item = item->next) {
    auto* menuItem = WEBKIT_CONTEXT_MENU_ITEM(item->data);
    if (!IsEditingItem(menuItem)) webkit_context_menu_remove(menu, menuItem);
  }
  g_list_free(items);
  return webkit_context_menu_get_n_items(menu) == 0;
}

gboolean Swallow() { return TRUE; }

/// The engine has a hidden text field inside the view, from which it learns the desktop's editing keys. Tab
/// would lead from the end of a page into it, and never out again.
void PassHiddenField(WebKitWebView* view) {
  for (GtkWidget* child = gtk_widget_get_first_child(GTK_WIDGET(view)); child != nullptr;
       child = gtk_widget_get_next_sibling(child)) {
    if (GTK_IS_TEXT_VIEW(child) || GTK_IS_TEXT(child)) {
      gtk_widget_set_can_focus(child, FALSE);
    }
  }
}

}  // namespace

WebKitSettings* MakeReaderSettings() {
  WebKitSettings* settings = webkit_settings_new();
  g_object_set(settings,                                            //
               "allow-file-access-from-file-urls", FALSE,           //
               "allow-universal-access-from-file-urls", FALSE,      //
               "allow-top-navigation-to-data-urls", FALSE,          //
               "allow-modal-dialogs", FALSE,                        //
               "enable-back-forward-navigation-gestures", FALSE,    //
               "enable-caret-browsing", FALSE,                      //
               "enable-developer-extras", FALSE,                    //
               "enable-dns-prefetching", FALSE,                     //
               "enable-fullscreen", FALSE,                          //
               "enable-media-stream", FALSE,                        //
               "enable-page-cache", FALSE,                          //
               "enable-webrtc", FALSE,                              //
               "javascript-can-access-clipboard", FALSE,            //
               "javascript-can-open-windows-automatically", FALSE,  //
               "media-playback-requires-user-gesture", TRUE,        //
               nullptr);
  SwitchFeaturesOff(settings);
  return settings;
}

void RefuseExtras(WebKitWebView* view) {
  PassHiddenField(view);
  g_signal_connect(view, "script-dialog", G_CALLBACK(OnScriptDialog), nullptr);
  g_signal_connect(view, "permission-request", G_CALLBACK(OnPermissionRequest), nullptr);
  g_signal_connect(view, "authenticate", G_CALLBACK(OnAuthenticate), nullptr);
  g_signal_connect(view, "run-file-chooser", G_CALLBACK(OnFileChooser), nullptr);
  g_signal_connect(view, "context-menu", G_CALLBACK(OnContextMenu), nullptr);
  g_signal_connect(view, "print", G_CALLBACK(Swallow), nullptr);
  g_signal_connect(view, "enter-fullscreen", G_CALLBACK(Swallow), nullptr);
  g_signal_connect(view, "show-notification", G_CALLBACK(Swallow), nullptr);
}

}  // namespace kivandra::gtk
