// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/gtk/forms/window_place.h"

#ifdef GDK_WINDOWING_X11
#include <gdk/x11/gdkx.h>

#include <cmath>
#endif

namespace kivandra::gtk {

#ifdef GDK_WINDOWING_X11

void PlaceWindow(Gtk::Window& window, int left, int top) {
  GtkNative* native = GTK_NATIVE(window.gobj());
  GdkSurface* surface = gtk_native_get_surface(native);
  if (surface == nullptr || !GDK_IS_X11_SURFACE(surface)) {
    return;
  }
  GdkDisplay* display = gdk_surface_get_display(surface);
  // The shadow around a window belongs to it, but is not what a person sees as its edge.
  double beside = 0;
  double above = 0;
  if (gdk_display_is_composited(display)) {
    gtk_native_get_surface_transform(native, &beside, &above);
  }
  const int scale = gdk_surface_get_scale_factor(surface);
  XMoveWindow(gdk_x11_display_get_xdisplay(display), gdk_x11_surface_get_xid(surface),
              (left - static_cast<int>(std::lround(beside))) * scale,
              (top - static_cast<int>(std::lround(above))) * scale);
}

#else

void PlaceWindow(Gtk::Window& /*window*/, int /*left*/, int /*top*/) {}

#endif

}  // namespace kivandra::gtk
