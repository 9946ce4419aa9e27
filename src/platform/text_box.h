// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/control.h"

namespace kivandra {

/// A single-line text field; whether it masks its input is design-time data.
class TextBox : public virtual Control {
 public:
  static constexpr ControlKind kKind = ControlKind::TextBox;

  [[nodiscard]] virtual std::string Text() const = 0;
  virtual void SetText(const std::string& text) = 0;
  virtual void OnKeyDown(KeyHandler handler) = 0;
};

}  // namespace kivandra
