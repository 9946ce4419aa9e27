// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/control.h"

namespace kivandra {

class Button : public virtual Control {
 public:
  static constexpr ControlKind kKind = ControlKind::Button;

  /// The words on it, "&" marking the access key.
  [[nodiscard]] virtual std::string Caption() const = 0;
  virtual void SetCaption(const std::string& caption) = 0;
  /// Pressed by mouse, keyboard or access key.
  virtual void OnClick(std::function<void()> handler) = 0;
};

}  // namespace kivandra
