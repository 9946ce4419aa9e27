// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gtkmm.h>

#include <functional>

#include "platform/gtk/controls/tree_nodes.h"

namespace kivandra::gtk {

/// The icon of the picture that the logic names; null if there is none of that name.
[[nodiscard]] const char* TreeIcon(const std::string& image);

/// What one row of a tree shows: arrow, picture, text. The toolkit makes a row for every place in sight and
/// gives it one node after the other.
class TreeRow : public Gtk::Box {
 public:
  /// The row was clicked, the arrow apart; for the second click of a double click `times` is 2.
  std::function<void(TreeRow&, int times)> clicked;
  /// The arrow of a node with children was clicked.
  std::function<void(TreeRow&)> arrowClicked;

  TreeRow();
  /// The node that it shows; 0 for none.
  [[nodiscard]] int Node() const { return node_; }
  void Show(int number, const TreeNodes& nodes);
  void Forget() { node_ = 0; }

 private:
  void WatchMouse();
  void Tell(const TreeNodes::Node& node, const Glib::ustring& text);

  int node_ = 0;
  Gtk::Image* arrow_;
  Gtk::Image* picture_;
  Gtk::Label* text_;
};

}  // namespace kivandra::gtk
