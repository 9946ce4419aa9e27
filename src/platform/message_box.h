// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

namespace kivandra {

// Style values add up: buttons, picture, default button. The numbers are those of winuser.h.
inline constexpr int kMsgOkOnly = 0;
inline constexpr int kMsgYesNo = 4;
inline constexpr int kMsgCritical = 16;
inline constexpr int kMsgQuestion = 32;
inline constexpr int kMsgExclamation = 48;
inline constexpr int kMsgInformation = 64;
inline constexpr int kMsgDefaultButton2 = 256;

enum class MsgBoxResult { Ok = 1, Cancel = 2, Yes = 6, No = 7 };

class MessageBoxes {
 public:
  virtual ~MessageBoxes() = default;

  /// Shows a box and runs events until it is answered; closing it counts as Ok, in a Yes/No box as No. An
  /// empty title means that the box has no title of its own and bears the program's name.
  virtual MsgBoxResult MsgBox(const std::string& text, int style = kMsgOkOnly,
                              const std::string& title = {}) = 0;
};

}  // namespace kivandra
