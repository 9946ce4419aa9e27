// SPDX-License-Identifier: GPL-3.0-or-later
// The session lock: a parent lets a blocked address through until the program ends.
#include <optional>
#include <utility>

#include "browser/frm_browser.h"
#include "core/core_values.h"
#include "filter/filter_values.h"
#include "support/attempt.h"

namespace kivandra {

namespace {

/// Says for which address the question stands, until the end of the scope.
class StandingQuestion {
 public:
  explicit StandingQuestion(std::string address) : before_(std::exchange(AskedURL, std::move(address))) {}
  ~StandingQuestion() { AskedURL = std::move(before_); }
  StandingQuestion(const StandingQuestion&) = delete;
  StandingQuestion& operator=(const StandingQuestion&) = delete;

 private:
  std::optional<std::string> before_;
};

}  // namespace

void frmBrowser::Padlock() {
  const auto self = shared_from_this();
  // The address that the parent reads is the one that is granted. Events run while the question stands, and
  // another page may be blocked meanwhile; its address may be so short that it stands in every other.
  const std::string address = BlockedURL;
  const StandingQuestion question(address);
  // 1. Yes and No, the stop picture, and No as the default: 276.
  auto answer = MsgBoxResult::No;
  attempt([&] {
    answer = services_.boxes.MsgBox("Allow " + address + " for this session?",
                                    kMsgYesNo + kMsgCritical + kMsgDefaultButton2, "Session Lock");
  });
  // 2.
  if (answer != MsgBoxResult::Yes) {
    return;
  }
  // 3. The window for the password makes the grant.
  attempt([&] { services_.showPasswordModal(); });
  // 4.
  if (!SessionAllowGranted) {
    return;
  }
  // 5. The gate judges this navigation too, and passes it by the grant.
  attempt([&] { brwWebBrowser_.Navigate(address); });
  // 6.
  attempt([&] { form_->SetWindowState(WindowState::Maximized); });
  // 7.
  SessionAllowGranted = false;
}

}  // namespace kivandra
