// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gtkmm.h>

#include <functional>
#include <string>

namespace kivandra::gtk {

/// A window button of a title bar (class kv-winbtn): one symbol, a name for assistive tools, and no focus by
/// mouse.
[[nodiscard]] Gtk::Button* NewWindowButton(const char* symbol, const char* name);
/// Gives a window button another symbol and name.
void DressWindowButton(Gtk::Button& button, const char* symbol, const char* name);

/// The program's own title bar of a top window: mark, caption, window buttons. The window owns it.
class TitleBar {
 public:
  /// `onClose` is called for the close button. A window that can't be resized has no other button.
  TitleBar(Gtk::Window& window, std::function<void()> onClose);

  void SetCaption(const std::string& caption);

 private:
  Gtk::Label* title_;
};

}  // namespace kivandra::gtk
