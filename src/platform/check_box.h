// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/control.h"

namespace kivandra {

class CheckBox : public virtual Control {
 public:
  static constexpr ControlKind kKind = ControlKind::CheckBox;

  /// 1 ticked, 0 clear.
  [[nodiscard]] virtual int Value() const = 0;
  /// Any other value than 0 ticks the box. A change raises OnClick at once, inside the call.
  virtual void SetValue(int value) = 0;
  /// The state has changed, by a person or by SetValue.
  virtual void OnClick(std::function<void()> handler) = 0;
};

}  // namespace kivandra
