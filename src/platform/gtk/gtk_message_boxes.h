// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/message_box.h"

namespace kivandra::gtk {

class FormLoader;

/// Boxes in the program's plain dress, over the active window.
class GtkMessageBoxes : public MessageBoxes {
 public:
  explicit GtkMessageBoxes(const FormLoader& forms) : forms_(forms) {}

  MsgBoxResult MsgBox(const std::string& text, int style, const std::string& title) override;

 private:
  const FormLoader& forms_;
};

}  // namespace kivandra::gtk
