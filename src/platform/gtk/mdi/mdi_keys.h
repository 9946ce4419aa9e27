// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gtkmm.h>

namespace kivandra::gtk {

class MdiArea;

/// Gives the frame the usual keys for its child windows: Ctrl+F4 close, Ctrl+F5 restore, Ctrl+F6 and Ctrl+Tab
/// next (with Shift: the one before), Ctrl+F7 move and Ctrl+F8 size (arrows by 10 pixels, with Ctrl by 1;
/// Enter keeps, Escape takes back), Ctrl+F9 minimise, Ctrl+F10 maximise. Ctrl+Tab goes to a page that uses
/// it.
void AddMdiKeys(Gtk::Window& frame, MdiArea& area);

}  // namespace kivandra::gtk
