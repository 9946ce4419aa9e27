// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/gtk/web/web_navigation.h"

#include <utility>

namespace kivandra::gtk {

HeldNavigation::HeldNavigation(std::string url, Answer answer)
    : url_(std::move(url)), answer_(std::move(answer)) {}

HeldNavigation::~HeldNavigation() { Settle(false); }

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
