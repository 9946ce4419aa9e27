// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/control.h"

namespace kivandra {

class Label : public virtual Control {
 public:
  static constexpr ControlKind kKind = ControlKind::Label;

  [[nodiscard]] virtual std::string Caption() const = 0;
  virtual void SetCaption(const std::string& caption) = 0;
};

}  // namespace kivandra
