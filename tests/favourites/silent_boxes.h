// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/message_box.h"

namespace kivandra::fakes {

/// Answers every box with its consent, for sweeps in which any failing step may bring one; what the boxes say
/// is tested apart.
class SilentBoxes : public MessageBoxes {
 public:
  MsgBoxResult MsgBox(const std::string&, int style, const std::string&) override {
    return (style & kMsgYesNo) != 0 ? MsgBoxResult::Yes : MsgBoxResult::Ok;
  }
};

}  // namespace kivandra::fakes
