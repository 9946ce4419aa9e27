// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gtkmm.h>

#include <set>

namespace kivandra::gtk {

/// The access keys of the menu bars below a widget, as key values of small letters.
[[nodiscard]] std::set<unsigned> MenuLetters(Gtk::Widget& widget);

}  // namespace kivandra::gtk
