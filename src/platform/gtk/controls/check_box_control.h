// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <vector>

#include "platform/check_box.h"
#include "platform/gtk/controls/widget_control.h"

namespace kivandra::gtk {

/// Over a `GtkCheckButton` without words. The labels whose `mnemonic-widget` it is stand beside it: they give
/// it its name for assistive tools, and a click on one is a click on the box.
class CheckBoxControl : public WidgetControl, public CheckBox {
 public:
  explicit CheckBoxControl(Gtk::CheckButton& box);

  [[nodiscard]] int Value() const override;
  void SetValue(int value) override;
  void OnClick(std::function<void()> handler) override;
  void LetGo() override;

 private:
  [[nodiscard]] Gtk::CheckButton& Box() const;
  void TakeLabels(Gtk::CheckButton& box);

  std::function<void()> click_;
};

}  // namespace kivandra::gtk
