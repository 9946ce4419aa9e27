// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/control.h"

namespace kivandra {

class Form;

// Messages of the area; the numbers are those of winuser.h.
inline constexpr unsigned WM_MDITILE = 550;
inline constexpr unsigned WM_MDICASCADE = 551;
inline constexpr unsigned WM_MDIICONARRANGE = 552;

/// The area of the frame in which the child windows lie.
class MdiClient : public virtual Control {
 public:
  static constexpr ControlKind kKind = ControlKind::MdiClient;

  /// The child in front, or null if there is none. A hidden child is never active, a minimised one can be.
  [[nodiscard]] virtual Form* ActiveForm() const = 0;
  /// WM_MDITILE (wParam 0 vertical, 1 horizontal), WM_MDICASCADE, WM_MDIICONARRANGE. Minimised children keep
  /// out of tiling and cascading.
  virtual void SendMessageA(unsigned message, unsigned wParam, long lParam) = 0;
};

}  // namespace kivandra
