// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform_gtk/hands.h"

#include <gtest/gtest.h>

#include <stdexcept>

// Its macros break other headers, so it comes last.
#include <gdk/x11/gdkx.h>

namespace kivandra::gtk {
namespace {

constexpr int kPatience = 10000;  // milliseconds

bool Wait(const std::function<bool()>& done) {
  bool late = false;
  auto timer = Glib::signal_timeout().connect([&late] { return late = true, false; }, kPatience);
  while (!done() && !late) {
    g_main_context_iteration(nullptr, TRUE);
  }
  timer.disconnect();
  return done();
}

}  // namespace

Hands::Hands(Gtk::Window& window) : window_(window) {
  EXPECT_TRUE(Wait([&] { return window.get_mapped(); }));
  number_ = std::to_string(gdk_x11_surface_get_xid(gtk_native_get_surface(GTK_NATIVE(window.gobj()))));
  Do({"windowfocus", "--sync", number_});
  EXPECT_TRUE(Wait([&] { return window.is_active(); })) << "the window does not get the keyboard";
}

void Hands::Press(const std::vector<std::string>& keys) {
  std::vector<std::string> command{"key"};
  command.insert(command.end(), keys.begin(), keys.end());
  Do(std::move(command));
}

void Hands::MoveTo(Gtk::Widget& widget) {
  EXPECT_TRUE(Wait([&] { return widget.get_width() > 0; })) << "the widget has no place yet";
  MoveTo(widget, widget.get_width() / 2.0, widget.get_height() / 2.0);
}

void Hands::MoveTo(Gtk::Widget& widget, double x, double y) {
  widget.translate_coordinates(window_, x, y, x, y);
  double left = 0;
  double top = 0;
  gtk_native_get_surface_transform(GTK_NATIVE(window_.gobj()), &left, &top);
  Do({"mousemove", "--window", number_, std::to_string(static_cast<int>(x + left)),
      std::to_string(static_cast<int>(y + top))});
}

void Hands::Click(Gtk::Widget& widget, int button) {
  MoveTo(widget);
  Do({"click", std::to_string(button)});
}

void Hands::Click(Gtk::Widget& widget, double x, double y, int button) {
  MoveTo(widget, x, y);
  Do({"click", std::to_string(button)});
}

void Hands::ButtonDown() { Do({"mousedown", "1"}); }

void Hands::ButtonUp() { Do({"mouseup", "1"}); }

void Hands::Do(std::vector<std::string> command) {
  std::vector<const char*> words{"xdotool"};
  for (const std::string& word : command) {
    words.push_back(word.c_str());
  }
  words.push_back(nullptr);
  struct Ending {
    bool done = false;
    bool well = false;
  } ending;
  GSubprocess* process = g_subprocess_newv(words.data(), G_SUBPROCESS_FLAGS_NONE, nullptr);
  if (process == nullptr) {
    throw std::runtime_error("xdotool does not start");
  }
  // The program goes on meanwhile, as it does under a real hand.
  g_subprocess_wait_check_async(
      process, nullptr,
      [](GObject* source, GAsyncResult* result, gpointer data) {
        auto* end = static_cast<Ending*>(data);
        end->well = g_subprocess_wait_check_finish(G_SUBPROCESS(source), result, nullptr) != FALSE;
        end->done = true;
      },
      &ending);
  EXPECT_TRUE(Wait([&] { return ending.done; }));
  g_object_unref(process);
  if (!ending.well) {
    throw std::runtime_error("xdotool " + command.front() + " failed");
  }
}

std::vector<Gtk::Widget*> WidgetsBelow(Gtk::Widget& root, const std::function<bool(Gtk::Widget&)>& wanted) {
  std::vector<Gtk::Widget*> found;
  for (Gtk::Widget* child = root.get_first_child(); child != nullptr; child = child->get_next_sibling()) {
    if (wanted(*child)) {
      found.push_back(child);
    }
    const auto below = WidgetsBelow(*child, wanted);
    found.insert(found.end(), below.begin(), below.end());
  }
  return found;
}

PlaceOnScreen PlaceOf(Gtk::Window& window) {
  GdkSurface* surface = gtk_native_get_surface(GTK_NATIVE(window.gobj()));
  Display* display = gdk_x11_display_get_xdisplay(gdk_surface_get_display(surface));
  ::Window root = DefaultRootWindow(display);
  ::Window unused = 0;
  ::Window* all = nullptr;
  unsigned count = 0;
  PlaceOnScreen place;
  XTranslateCoordinates(display, gdk_x11_surface_get_xid(surface), root, 0, 0, &place.left, &place.top,
                        &unused);
  XQueryTree(display, root, &unused, &unused, &all, &count);
  for (unsigned each = 0; each < count; ++each) {
    if (all[each] == gdk_x11_surface_get_xid(surface)) {
      place.height = static_cast<int>(each);
    }
  }
  XFree(all);
  return place;
}

}  // namespace kivandra::gtk
