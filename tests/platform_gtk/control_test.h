// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform_gtk/hands.h"
#include "platform_gtk/window_test.h"

namespace kivandra::gtk {

/// Controls of one window under a real mouse and keyboard.
class ControlTest : public WindowTest {
 protected:
  ControlTest();
  ~ControlTest() override;

  /// Loads the form and shows it.
  void Show(const std::string& name);
  static Gtk::Widget& WidgetOf(Control& control);
  static Gtk::Window& WindowOf(Gtk::Widget& widget);
  Hands& HandsOn(Gtk::Widget& widget);
  /// Waits until a widget has its place.
  void Laid(Gtk::Widget& widget);
  void Click(Gtk::Widget& widget, int button = 1);
  void Press(Gtk::Widget& widget, const std::vector<std::string>& keys);
  static bool HasName(Gtk::Widget& widget);
  static bool IsNamed(Gtk::Widget& widget, const char* name);

  std::shared_ptr<Form> form;
  std::unique_ptr<Hands> hands;
};

}  // namespace kivandra::gtk
