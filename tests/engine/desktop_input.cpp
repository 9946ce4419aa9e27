// SPDX-License-Identifier: GPL-3.0-or-later
#include "engine/desktop_input.h"

#include <stdexcept>

#include "engine/engine_test.h"

// Its macros break other headers, so it comes last.
#include <gdk/x11/gdkx.h>

namespace kivandra::testing {
namespace {

struct Ending {
  bool done = false;
  bool well = false;
};

void OnEnded(GObject* source, GAsyncResult* result, gpointer data) {
  auto* ending = static_cast<Ending*>(data);
  ending->well = g_subprocess_wait_check_finish(G_SUBPROCESS(source), result, nullptr) != FALSE;
  ending->done = true;
}

}  // namespace

DesktopInput::DesktopInput(GtkWidget* widget) {
  if (!WaitUntil([&] { return gtk_widget_get_mapped(widget) != FALSE; })) {
    throw std::runtime_error("the window does not come");
  }
  GdkSurface* surface = gtk_native_get_surface(gtk_widget_get_native(widget));
  window_ = std::to_string(gdk_x11_surface_get_xid(surface));
  Do({"windowraise", window_, "windowfocus", "--sync", window_});
  auto* top = GTK_WINDOW(gtk_widget_get_root(widget));
  if (!WaitUntil([&] { return gtk_window_is_active(top) != FALSE; })) {
    throw std::runtime_error("the window does not get the keyboard");
  }
}

void DesktopInput::Press(const std::vector<std::string>& keys) {
  std::vector<std::string> command{"key"};
  command.insert(command.end(), keys.begin(), keys.end());
  Do(std::move(command));
}

void DesktopInput::Click(int x, int y, int button) {
  MoveTo(x, y);
  Do({"click", std::to_string(button)});
}

void DesktopInput::MoveTo(int x, int y) {
  Do({"mousemove", "--window", window_, std::to_string(x), std::to_string(y)});
}

void DesktopInput::ButtonDown() { Do({"mousedown", "1"}); }
void DesktopInput::ButtonUp() { Do({"mouseup", "1"}); }

void DesktopInput::Do(std::vector<std::string> command) {
  std::vector<const char*> words{"xdotool"};
  for (const std::string& word : command) words.push_back(word.c_str());
  words.push_back(nullptr);
  GError* error = nullptr;
  GSubprocess* process = g_subprocess_newv(words.data(), G_SUBPROCESS_FLAGS_NONE, &error);
  if (process == nullptr) {
    const std::string why = error->message;
    g_error_free(error);
    throw std::runtime_error(why);
  }
  // The program goes on meanwhile, as it does under a real hand.
  Ending ending;
  g_subprocess_wait_check_async(process, nullptr, OnEnded, &ending);
  while (!ending.done) g_main_context_iteration(nullptr, TRUE);
  g_object_unref(process);
  if (!ending.well) throw std::runtime_error("xdotool " + command.front() + " failed");
}

}  // namespace kivandra::testing
