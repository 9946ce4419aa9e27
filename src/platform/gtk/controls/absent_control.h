// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/control.h"
#include "platform/platform_error.h"

namespace kivandra::gtk {

/// The operations of a control that has no widget (a timer, a skin): a switch, and no geometry.
class AbsentControl : public virtual Control {
 public:
  [[nodiscard]] bool Enabled() const override { return Alive(), enabled_; }
  void SetEnabled(bool enabled) override { Alive(), enabled_ = enabled; }
  [[nodiscard]] bool Visible() const override { return Alive(), false; }
  void SetVisible(bool) override { Alive(); }
  void SetFocus() override { Alive(); }
  [[nodiscard]] Twips Left() const override { return Alive(), 0; }
  [[nodiscard]] Twips Top() const override { return Alive(), 0; }
  [[nodiscard]] Twips Width() const override { return Alive(), 0; }
  [[nodiscard]] Twips Height() const override { return Alive(), 0; }
  void Move(Twips, Twips, Twips, Twips) override { Alive(); }

  /// The form is unloaded: every operation throws from here on.
  virtual void LetGo() { gone_ = true; }

 protected:
  [[nodiscard]] bool Gone() const { return gone_; }
  void Alive() const {
    if (gone_) {
      throw PlatformError(kObjectNotSet, "the control's window is gone");
    }
  }

 private:
  bool enabled_ = true;
  bool gone_ = false;
};

}  // namespace kivandra::gtk
