// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gtkmm.h>

namespace kivandra::gtk {

/// What has the keyboard of a window, menus left aside: while a menu is open, that is what had it before.
class FieldFocus {
 public:
  /// `menus` is the widget that holds the menus, inside its window.
  explicit FieldFocus(Gtk::Widget& menus);
  ~FieldFocus();
  FieldFocus(const FieldFocus&) = delete;
  FieldFocus& operator=(const FieldFocus&) = delete;

  /// Whether a menu has the keyboard.
  [[nodiscard]] bool InMenus() const;
  /// The text field of our own that has the keyboard, or null: a page's fields are not ours.
  [[nodiscard]] GtkWidget* Field() const;
  /// A menu opens: what has the keyboard now is what gets it back. The toolkit itself moves the keyboard to
  /// some tool or other when a menu closes, and that must not count.
  void Hold() { held_ = true; }
  /// Gives the keyboard back to what had it before a menu was opened.
  void Restore();

 private:
  void Remember(GtkWidget* focus);
  static void OnFocusChanged(FieldFocus* self);

  GtkWidget* menus_;
  GtkWidget* window_ = nullptr;   // weak
  GtkWidget* outside_ = nullptr;  // weak
  gulong changed_ = 0;
  bool held_ = false;
};

}  // namespace kivandra::gtk
