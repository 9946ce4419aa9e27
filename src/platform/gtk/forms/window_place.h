// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gtkmm.h>

namespace kivandra::gtk {

/// Moves a shown window's left top corner there, in pixels of the screen. The X window system lets a program
/// do that; a desktop of another kind places windows itself, and nothing happens.
void PlaceWindow(Gtk::Window& window, int left, int top);

}  // namespace kivandra::gtk
