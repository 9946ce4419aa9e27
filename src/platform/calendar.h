// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/control.h"

namespace kivandra {

/// A calendar that shows a month and has one day chosen. Days and months count from 1.
class Calendar : public virtual Control {
 public:
  static constexpr ControlKind kKind = ControlKind::Calendar;

  [[nodiscard]] virtual int Day() const = 0;
  [[nodiscard]] virtual int Month() const = 0;
  [[nodiscard]] virtual int Year() const = 0;
  /// Chooses today, without an event.
  virtual void Today() = 0;
  /// A person has chosen a day by mouse or Enter; also the one that was chosen already.
  virtual void OnClick(std::function<void()> handler) = 0;
};

}  // namespace kivandra
