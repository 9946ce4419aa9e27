// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/gtk/forms/frame_size.h"

#include <algorithm>

namespace kivandra::gtk {

void GiveFrameSize(Gtk::Window& window) {
  int width = 1024;
  int height = 740;
  const auto monitors = window.get_display()->get_monitors();
  if (monitors->get_n_items() > 0) {
    const auto monitor = std::dynamic_pointer_cast<Gdk::Monitor>(monitors->get_object(0));
    Gdk::Rectangle screen;
    monitor->get_geometry(screen);
    width = std::min(screen.get_width(), std::clamp(screen.get_width() * 92 / 100, width, 1440));
    height = std::min(screen.get_height(), std::clamp(screen.get_height() * 90 / 100, height, 940));
  }
  window.set_default_size(width, height);
}

}  // namespace kivandra::gtk
