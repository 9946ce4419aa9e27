// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/control.h"

namespace kivandra {

/// A plain box that holds other controls or a picture.
class PictureBox : public virtual Control {
 public:
  static constexpr ControlKind kKind = ControlKind::PictureBox;
};

}  // namespace kivandra
