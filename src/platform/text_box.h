// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/control.h"

namespace kivandra {

/// A colour by what it is for, as the skin in force has it.
enum class SystemColor {
  Window,    ///< the ground of a field that can be written in
  Disabled,  ///< the ground of one that can't
};

/// A single-line text field; whether it masks its input is design-time data.
class TextBox : public virtual Control {
 public:
  static constexpr ControlKind kKind = ControlKind::TextBox;

  [[nodiscard]] virtual std::string Text() const = 0;
  virtual void SetText(const std::string& text) = 0;
  virtual void SetBackColor(SystemColor color) = 0;
  virtual void OnKeyDown(KeyHandler handler) = 0;
};

}  // namespace kivandra
