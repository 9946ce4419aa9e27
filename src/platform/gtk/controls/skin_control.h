// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gtkmm.h>

#include <memory>

#include "platform/gtk/controls/absent_control.h"
#include "platform/skin_form.h"

namespace kivandra::gtk {

class SkinSheet;

/// Registers `KvSkinForm`, a plain object of form files: the place of a window's skin.
void RegisterSkinType();
[[nodiscard]] bool IsSkin(GObject* object);

/// The skin of one window. Controls of a window wear its dress by lying in it, so dressing one needs no work.
class SkinControl : public AbsentControl, public SkinForm {
 public:
  /// `window` is the widget that bears the dress; `structure` the text of the sheet of shapes.
  SkinControl(Gtk::Widget& window, const std::string& structure);

  void SetProperty14(int value) override;
  void SetSkinFile(const std::string& path) override;
  void ApplyTo(Control& control) override;

 private:
  Gtk::Widget& window_;
  const std::string& structure_;
  std::shared_ptr<SkinSheet> sheet_;
};

}  // namespace kivandra::gtk
