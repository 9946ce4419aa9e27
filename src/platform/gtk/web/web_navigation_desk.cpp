// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/gtk/web/web_navigation_desk.h"

#include <algorithm>
#include <utility>

#include "platform/gtk/web/web_address.h"
#include "platform/gtk/web/web_text.h"

namespace kivandra::gtk {
namespace {

std::string ReferrerOf(WebKitNavigationAction* action) {
  SoupMessageHeaders* headers =
      webkit_uri_request_get_http_headers(webkit_navigation_action_get_request(action));
  const char* referrer = headers != nullptr ? soup_message_headers_get_one(headers, "Referer") : nullptr;
  return referrer != nullptr ? referrer : "";
}

bool FitsKind(WebKitNavigationType type, NavigationDesk::LoadKind kind) {
  switch (kind) {
    case NavigationDesk::LoadKind::Address:
      return type == WEBKIT_NAVIGATION_TYPE_OTHER || type == WEBKIT_NAVIGATION_TYPE_RELOAD;
    case NavigationDesk::LoadKind::History:
      return type == WEBKIT_NAVIGATION_TYPE_BACK_FORWARD;
    case NavigationDesk::LoadKind::Reload:
      return type == WEBKIT_NAVIGATION_TYPE_RELOAD || type == WEBKIT_NAVIGATION_TYPE_FORM_RESUBMITTED ||
             type == WEBKIT_NAVIGATION_TYPE_OTHER;
  }
  return false;
}

}  // namespace

void NavigationDesk::AskForLoad(const std::string& judgedUrl, const std::string& engineUrl, LoadKind kind,
                                std::function<void()> load) {
  Drop(fromProgram_);
  const auto navigation = std::make_shared<HeldNavigation>(
      judgedUrl, [this, engineUrl, kind, load = std::move(load)](bool allowed) {
        if (!allowed || !ProgramMayLoad(engineUrl)) return;
        DropEngineQuestions();
        allowed_ = AllowedLoad{engineUrl, kind};
        load();
      });
  Remember(fromProgram_, navigation);
  judge_.raise(navigation);
}

void NavigationDesk::AskForArrival(const std::string& url, std::function<void(bool allowed)> answer) {
  const auto navigation = std::make_shared<HeldNavigation>(url, std::move(answer));
  Remember(fromEngine_, navigation);
  judge_.raise(navigation);
}

void NavigationDesk::DecideNavigation(WebKitPolicyDecision* decision, WebKitNavigationAction* action) {
  const std::string url = AddressOf(action);
  if (TakeAllowedLoad(url, action) || IsBlankDocument(url)) {
    webkit_policy_decision_use(decision);
    return;
  }
  const std::string referrer = ReferrerOf(action);
  g_object_ref(decision);
  // The answer must not touch this desk: the question may outlive the window.
  auto announce = judge_.announceReferrer;
  const auto answer = [decision, url, announce](bool allowed) {
    announce(url, {});
    if (allowed) {
      webkit_policy_decision_use(decision);
    } else {
      webkit_policy_decision_ignore(decision);
    }
    g_object_unref(decision);
  };
  const auto navigation = std::make_shared<HeldNavigation>(url, answer, HeldNavigation::Leader::Page);
  announce(url, referrer);
  Remember(fromEngine_, navigation);
  judge_.raise(navigation);
}

void NavigationDesk::DropAll() {
  Drop(fromProgram_);
  Drop(fromEngine_);
  allowed_.reset();
}

bool NavigationDesk::Judging() const {
  const auto pending = [](const std::weak_ptr<HeldNavigation>& held) {
    const auto navigation = held.lock();
    return navigation && navigation->Pending();
  };
  return std::any_of(fromEngine_.begin(), fromEngine_.end(), pending) ||
         std::any_of(fromProgram_.begin(), fromProgram_.end(), pending);
}

void NavigationDesk::Drop(Held& held) {
  for (const auto& weak : std::exchange(held, {})) {
    if (const auto navigation = weak.lock()) navigation->Drop();
  }
}

void NavigationDesk::Remember(Held& held, const std::shared_ptr<HeldNavigation>& navigation) {
  std::erase_if(held, [](const std::weak_ptr<HeldNavigation>& old) { return old.expired(); });
  held.push_back(navigation);
}

bool NavigationDesk::TakeAllowedLoad(const std::string& url, WebKitNavigationAction* action) {
  const bool fits = allowed_ && allowed_->url == url && !webkit_navigation_action_is_redirect(action) &&
                    FitsKind(webkit_navigation_action_get_navigation_type(action), allowed_->kind);
  if (fits) allowed_.reset();
  return fits;
}

}  // namespace kivandra::gtk
