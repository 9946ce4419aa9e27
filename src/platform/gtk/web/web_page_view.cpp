// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/gtk/web/web_page_view.h"

#include <string_view>

#include "platform/gtk/web/web_address.h"
#include "platform/gtk/web/web_settings.h"

namespace kivandra::gtk {
namespace {

/// Scheme and host of a web address with the slash behind them; the folder of a file.
std::string HomeOf(const std::string& address) {
  if (SchemeOf(address) == "file") return address.substr(0, address.rfind('/') + 1);
  const std::size_t slashes = address.find("://");
  if (slashes == std::string::npos) return {};
  const std::size_t end = address.find_first_of("/?#", slashes + 3);
  return address.substr(0, end) + "/";
}

/// Whether the address lies in its home. The engine takes an escaped slash in a file's address for a real
/// one, so that "..%2f" would lead out.
bool LiesIn(const std::string& home, const std::string& address) {
  if (home.empty() || !address.starts_with(home)) return false;
  return SchemeOf(address) != "file" ||
         (address.find("%2f") == std::string::npos && address.find("%2F") == std::string::npos);
}

/// The engine's spelling of an address or of a file's path, in which any sign is part of a name.
std::string SpellingOf(const std::string& address) {
  char* file =
      g_path_is_absolute(address.c_str()) ? g_filename_to_uri(address.c_str(), nullptr, nullptr) : nullptr;
  const std::string spelling = EngineSpelling(file != nullptr ? file : address);
  g_free(file);
  return spelling;
}

}  // namespace

WebPageView::WebPageView(WebEngine& engine, Gtk::Box& place) : WidgetControl(place), engine_(engine) {
  WebKitSettings* settings = MakeReaderSettings();
  view_ = WEBKIT_WEB_VIEW(g_object_ref_sink(g_object_new(
      WEBKIT_TYPE_WEB_VIEW, "network-session", engine.Session().Get(), "settings", settings, nullptr)));
  g_object_unref(settings);
  RefuseExtras(view_);
  drops_->Start(view_);
  g_signal_connect(view_, "decide-policy", G_CALLBACK(OnDecidePolicy), this);
  g_signal_connect(view_, "load-failed", G_CALLBACK(OnLoadFailed), this);
  gtk_widget_set_hexpand(GTK_WIDGET(view_), TRUE);
  gtk_widget_set_vexpand(GTK_WIDGET(view_), TRUE);
  gtk_box_append(place.gobj(), GTK_WIDGET(view_));
}

WebPageView::~WebPageView() {
  drops_->Cut();
  g_signal_handlers_disconnect_by_data(view_, this);
  g_object_unref(view_);
}

void WebPageView::Navigate(const std::string& address) {
  (void)Widget();
  const std::string spelling = SpellingOf(address);
  if (!ProgramMayLoad(spelling)) return;
  home_ = HomeOf(spelling);
  webkit_web_view_load_uri(view_, spelling.c_str());
}

void WebPageView::Stop() {
  (void)Widget();
  webkit_web_view_stop_loading(view_);
}

gboolean WebPageView::OnDecidePolicy(WebKitWebView* /*view*/, WebKitPolicyDecision* decision,
                                     WebKitPolicyDecisionType type, gpointer self) {
  bool stays = false;
  if (type == WEBKIT_POLICY_DECISION_TYPE_RESPONSE) {
    auto* response = WEBKIT_RESPONSE_POLICY_DECISION(decision);
    stays = webkit_response_policy_decision_is_mime_type_supported(response) != FALSE;
  } else if (type == WEBKIT_POLICY_DECISION_TYPE_NAVIGATION_ACTION) {
    WebKitNavigationAction* action =
        webkit_navigation_policy_decision_get_navigation_action(WEBKIT_NAVIGATION_POLICY_DECISION(decision));
    const std::string address = webkit_uri_request_get_uri(webkit_navigation_action_get_request(action));
    const std::string& home = static_cast<WebPageView*>(self)->home_;
    stays = IsBlankDocument(address) || LiesIn(home, address);
  }
  if (stays) {
    webkit_policy_decision_use(decision);
  } else {
    webkit_policy_decision_ignore(decision);
  }
  return TRUE;
}

gboolean WebPageView::OnLoadFailed(WebKitWebView* /*view*/, WebKitLoadEvent /*event*/,
                                   const char* /*address*/, GError* /*error*/, gpointer /*self*/) {
  return TRUE;  // a missing page shows nothing
}

}  // namespace kivandra::gtk
