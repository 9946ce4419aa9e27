// SPDX-License-Identifier: GPL-3.0-or-later
// What the engine asks before it goes on: a page, a new window, an answer that has come.
#include "platform/gtk/web/web_address.h"
#include "platform/gtk/web/web_browser_view.h"
#include "platform/gtk/web/web_text.h"

namespace kivandra::gtk {
namespace {

/// Whether the answer may be shown: one part, no attachment, of a type that the engine shows by itself.
bool MayShow(WebKitResponsePolicyDecision* decision) {
  WebKitURIResponse* response = webkit_response_policy_decision_get_response(decision);
  const std::string type = Text(webkit_uri_response_get_mime_type(response));
  // Its later parts would replace the page without a question.
  if (g_ascii_strcasecmp(type.c_str(), "multipart/x-mixed-replace") == 0) return false;
  if (webkit_response_policy_decision_is_mime_type_supported(decision) == FALSE) return false;
  SoupMessageHeaders* headers = webkit_uri_response_get_http_headers(response);
  char* disposition = nullptr;
  if (headers == nullptr ||
      soup_message_headers_get_content_disposition(headers, &disposition, nullptr) == FALSE) {
    return true;
  }
  const bool attachment = g_ascii_strcasecmp(disposition, "attachment") == 0;
  g_free(disposition);
  return !attachment;
}

}  // namespace

void BrowserView::Raise(const std::shared_ptr<Navigation>& navigation) {
  // Without a receiver nobody judges, and an unanswered question is refused.
  Tell([&](WebBrowserEvents& events) { events.BeforeNavigate2(navigation); });
}

gboolean BrowserView::OnDecidePolicy(WebKitPolicyDecision* decision, WebKitPolicyDecisionType type) {
  switch (type) {
    case WEBKIT_POLICY_DECISION_TYPE_NAVIGATION_ACTION: {
      const std::optional<NavigationDesk::AllowedLoad> awaited = desk_.AwaitedLoad();
      desk_.DecideNavigation(decision, webkit_navigation_policy_decision_get_navigation_action(
                                           WEBKIT_NAVIGATION_POLICY_DECISION(decision)));
      if (awaited && !desk_.AwaitedLoad()) decided_ = awaited;
      return TRUE;
    }
    case WEBKIT_POLICY_DECISION_TYPE_NEW_WINDOW_ACTION: {
      WebKitNavigationAction* action = webkit_navigation_policy_decision_get_navigation_action(
          WEBKIT_NAVIGATION_POLICY_DECISION(decision));
      if (PageMayLoad(AddressOf(action))) {
        webkit_policy_decision_use(decision);  // the window is asked for next, its address is judged there
      } else {
        desk_.DecideNavigation(decision, action);  // never loads, but the judge may have words about it
      }
      return TRUE;
    }
    case WEBKIT_POLICY_DECISION_TYPE_RESPONSE:
      break;
  }
  auto* response = WEBKIT_RESPONSE_POLICY_DECISION(decision);
  if (MayShow(response)) {
    webkit_policy_decision_use(decision);
    return TRUE;
  }
  webkit_policy_decision_ignore(decision);
  const std::string address =
      Text(webkit_uri_response_get_uri(webkit_response_policy_decision_get_response(response)));
  if (webkit_response_policy_decision_is_main_frame_main_resource(response) != FALSE && !Overtaken(address)) {
    ownPage_ = true;
    Later([this, address] {
      if (!Overtaken(address)) ShowTrouble(WebPages::Trouble::NotShown, address);
    });
  }
  return TRUE;
}

}  // namespace kivandra::gtk
