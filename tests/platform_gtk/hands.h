// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gtkmm.h>

#include <functional>
#include <string>
#include <vector>

namespace kivandra::gtk {

/// The keyboard and the mouse of the virtual display, used on one window: every press comes the whole way
/// from the display server.
class Hands {
 public:
  /// Waits until the window is on the screen and gives it the keyboard. Fails the test if that takes ten
  /// seconds.
  explicit Hands(Gtk::Window& window);

  /// Presses and releases the keys one after the other, each named as "alt+f".
  void Press(const std::vector<std::string>& keys);
  /// Moves the pointer to the middle of a widget of the window, once it has its place.
  void MoveTo(Gtk::Widget& widget);
  /// Clicks in the middle of a widget of the window.
  void Click(Gtk::Widget& widget, int button = 1);
  /// The same for a place inside a widget, in pixels.
  void MoveTo(Gtk::Widget& widget, double x, double y);
  void Click(Gtk::Widget& widget, double x, double y, int button = 1);
  void ButtonDown();
  void ButtonUp();

 private:
  void Do(std::vector<std::string> command);

  Gtk::Window& window_;
  std::string number_;
};

/// Where a shown window stands on the virtual display: its left top corner in pixels, and its height in the
/// pile of windows, the lowest 0.
struct PlaceOnScreen {
  int left = 0;
  int top = 0;
  int height = -1;
};
[[nodiscard]] PlaceOnScreen PlaceOf(Gtk::Window& window);

/// Every widget below `root`, popovers included, for which `wanted` holds.
[[nodiscard]] std::vector<Gtk::Widget*> WidgetsBelow(Gtk::Widget& root,
                                                     const std::function<bool(Gtk::Widget&)>& wanted);

}  // namespace kivandra::gtk
