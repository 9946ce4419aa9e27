// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gtkmm.h>

#include <string>
#include <vector>

namespace kivandra::testing {

/// The mouse and the keyboard of the virtual display, used on one window. Keys and clicks go the whole way
/// from the display server, so nothing that a real one would set off is left out.
class DesktopInput {
 public:
  /// Waits until the window that holds `widget` is on the screen and gives it the keyboard.
  explicit DesktopInput(GtkWidget* widget);

  /// Presses and releases the keys one after the other, each named as "alt+Left".
  void Press(const std::vector<std::string>& keys);
  /// Clicks at a place of the window, in pixels.
  void Click(int x, int y, int button = 1);
  void MoveTo(int x, int y);
  void ButtonDown();
  void ButtonUp();

 private:
  void Do(std::vector<std::string> command);

  std::string window_;
};

}  // namespace kivandra::testing
