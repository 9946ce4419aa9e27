// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/control.h"

namespace kivandra {

/// The skin of one window.
class SkinForm : public virtual Control {
 public:
  static constexpr ControlKind kKind = ControlKind::SkinForm;

  /// The skin control's property with dispatch number 14. Nothing reads it.
  virtual void SetProperty14(int value) = 0;
  /// Loads a skin file (full path) for this window. A file that can't be read or is no skin throws
  /// PlatformError and leaves the window in the dress that it wears.
  virtual void SetSkinFile(const std::string& path) = 0;
  /// Dresses a control of the window.
  virtual void ApplyTo(Control& control) = 0;
};

}  // namespace kivandra
