// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gtkmm.h>

namespace kivandra::gtk {

/// Gives the frame its first size: 1024 x 740 on a small screen, most of a larger one, never more than fits.
void GiveFrameSize(Gtk::Window& window);

}  // namespace kivandra::gtk
