// SPDX-License-Identifier: GPL-3.0-or-later
// The session lock: a parent lets a blocked address through until the program ends.
#include "browser/frm_browser.h"
#include "core/core_values.h"
#include "filter/filter_values.h"
#include "support/attempt.h"

namespace kivandra {

void frmBrowser::Padlock() {
  const auto self = shared_from_this();
  // 1. Yes and No, the stop picture, and No as the default: 276.
  auto answer = MsgBoxResult::No;
  attempt([&] {
    answer = services_.boxes.MsgBox("Allow " + BlockedURL + " for this session?",
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
  attempt([&] { brwWebBrowser_.Navigate(BlockedURL); });
  // 6.
  attempt([&] { form_->SetWindowState(WindowState::Maximized); });
  // 7.
  SessionAllowGranted = false;
}

}  // namespace kivandra
