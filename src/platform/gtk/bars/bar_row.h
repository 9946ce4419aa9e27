// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gtkmm.h>

#include <functional>
#include <vector>

namespace kivandra::gtk {

/// One bar of the frame: tools in a row, each as wide as it wants, but for the stretchy ones. It fills any
/// width: the spacer takes what is over; where room is scarce the banner shrinks, and goes when it gets too
/// small to read. A bar that is too narrow even so ends at the right edge, and moves to show the tool that
/// has the keyboard.
class BarRow : public Gtk::Widget {
 public:
  enum class Role {
    Fixed,    ///< natural width
    Filler,   ///< 12 pixels and all that is over
    Stretch,  ///< all that is over, 120 pixels at least
    Banner,   ///< 887 x 89; from 320 x 68 on if there is not as much
  };

  BarRow();
  ~BarRow() override;

  /// Puts a tool at the end; the row owns it if it is managed.
  void Append(Gtk::Widget& tool, Role role);
  void SetRole(Gtk::Widget& tool, Role role);
  /// Called when the row gets too narrow for its words, and when they fit again.
  void OnCompact(std::function<void(bool)> handler) { compact_ = std::move(handler); }

 private:
  struct Item {
    Gtk::Widget* widget;
    Role role;
  };
  struct Span {
    int x = 0;
    int width = 0;  // 0: not drawn
  };

  Gtk::SizeRequestMode get_request_mode_vfunc() const override;
  void measure_vfunc(Gtk::Orientation orientation, int forSize, int& minimum, int& natural,
                     int& minimumBaseline, int& naturalBaseline) const override;
  void size_allocate_vfunc(int width, int height, int baseline) override;
  void WatchFocus();
  void ShowFocused(Gtk::Window& window);
  [[nodiscard]] std::vector<Span> Spread(int width) const;
  [[nodiscard]] int HeightOf(const Item& item, int width) const;
  void WatchWords(int stretched);

  std::vector<Item> items_;
  std::function<void(bool)> compact_;
  bool isCompact_ = false;
  int wordsWidth_ = 0;  // what the words took when they were dropped
  int offset_ = 0;      // pixels that are hidden to the left
  sigc::connection idle_;
  sigc::connection focus_;
};

}  // namespace kivandra::gtk
