// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/gtk/web/web_navigation.h"

#include <utility>

#include "platform/gtk/web/web_address.h"

namespace kivandra::gtk {

HeldNavigation::HeldNavigation(std::string url, Answer answer, Leader leader)
    : url_(std::move(url)), answer_(std::move(answer)), leader_(leader) {}

HeldNavigation::~HeldNavigation() { Settle(false); }

void HeldNavigation::Allow() { Settle(leader_ == Leader::Program || PageMayLoad(url_)); }

void HeldNavigation::AllowFile() { Settle(leader_ == Leader::Program || ProgramMayLoad(url_)); }

void HeldNavigation::Drop() {
  if (!Pending()) return;
  const auto tell = std::exchange(onDropped_, nullptr);
  Settle(false);
  if (tell) tell();
}

void HeldNavigation::Settle(bool allowed) {
  const auto answer = std::exchange(answer_, nullptr);
  onDropped_ = nullptr;  // what the judge captured there, perhaps this very object, is let go of
  if (answer) answer(allowed);
}

}  // namespace kivandra::gtk
