// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/control.h"

namespace kivandra {

/// A timer of a form. Interval and first state are design-time data. While enabled it ticks again and again,
/// from the event loop; setting an enabled timer enabled again changes nothing. Its geometry, focus and
/// visibility mean nothing. It ends with its form.
class Timer : public virtual Control {
 public:
  static constexpr ControlKind kKind = ControlKind::Timer;

  /// Milliseconds between ticks.
  [[nodiscard]] virtual int Interval() const = 0;
  virtual void OnTimer(std::function<void()> handler) = 0;
};

}  // namespace kivandra
