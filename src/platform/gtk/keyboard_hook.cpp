// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/gtk/keyboard_hook.h"

#include <algorithm>
#include <utility>

#include "platform/gtk/controls/key_codes.h"
#include "platform/gtk/guard.h"

namespace kivandra::gtk {

namespace {

constexpr std::uint32_t kHandle = 1;

int ShiftMask(GdkModifierType state) {
  return ((state & GDK_SHIFT_MASK) != 0 ? 1 : 0) | ((state & GDK_CONTROL_MASK) != 0 ? 2 : 0) |
         ((state & GDK_ALT_MASK) != 0 ? 4 : 0);
}

/// More keys than a person presses while a page is busy.
constexpr std::size_t kRemembered = 256;

}  // namespace

GtkKeyboardHook::~GtkKeyboardHook() { Remove(kHandle); }

std::uint32_t GtkKeyboardHook::Install(Procedure procedure) {
  if (procedure_) {
    return 0;
  }
  procedure_ = std::move(procedure);
  windowsChanged_ = g_signal_connect_swapped(
      gtk_window_get_toplevels(), "items-changed",
      G_CALLBACK(+[](GtkKeyboardHook* self) { Guarded([self] { self->WatchNewWindows(); }); }), this);
  WatchNewWindows();
  return kHandle;
}

void GtkKeyboardHook::Remove(std::uint32_t handle) {
  if (handle == 0 || !procedure_) {
    return;
  }
  procedure_ = nullptr;
  g_signal_handler_disconnect(gtk_window_get_toplevels(), windowsChanged_);
  for (const auto& [window, controller] : watched_) {
    g_object_weak_unref(G_OBJECT(window), &OnWindowGone, this);
    gtk_widget_remove_controller(GTK_WIDGET(window), controller);
  }
  watched_.clear();
}

void GtkKeyboardHook::WatchNewWindows() {
  GListModel* windows = gtk_window_get_toplevels();
  for (guint index = 0; index < g_list_model_get_n_items(windows); ++index) {
    auto* window = GTK_WINDOW(g_list_model_get_item(windows, index));
    if (watched_.count(window) == 0) {
      Watch(window);
    }
    g_object_unref(window);
  }
}

void GtkKeyboardHook::Watch(GtkWindow* window) {
  GtkEventController* keys = gtk_event_controller_key_new();
  gtk_event_controller_set_propagation_phase(keys, GTK_PHASE_CAPTURE);
  g_signal_connect(keys, "key-pressed", G_CALLBACK(&OnPressed), this);
  g_signal_connect(keys, "key-released", G_CALLBACK(&OnReleased), this);
  gtk_widget_add_controller(GTK_WIDGET(window), keys);
  g_object_weak_ref(G_OBJECT(window), &OnWindowGone, this);
  watched_.emplace(window, keys);
}

void GtkKeyboardHook::OnWindowGone(gpointer self, GObject* window) {
  // Only the address of the object that is gone is used.
  static_cast<GtkKeyboardHook*>(self)->watched_.erase(reinterpret_cast<GtkWindow*>(window));
}

bool GtkKeyboardHook::Tell(GtkEventControllerKey* controller, guint keyval, GdkModifierType state, bool up) {
  const Press press{gtk_event_controller_get_current_event_time(GTK_EVENT_CONTROLLER(controller)), keyval,
                    up};
  if (press.time != GDK_CURRENT_TIME) {
    if (std::find(told_.begin(), told_.end(), press) != told_.end()) {
      return false;
    }
    told_.push_back(press);
    if (told_.size() > kRemembered) {
      told_.pop_front();
    }
  }
  const int key = KeyCodeOf(keyval);
  const Procedure procedure = procedure_;
  return key != 0 && procedure && procedure(0, key, up, ShiftMask(state));
}

gboolean GtkKeyboardHook::OnPressed(GtkEventControllerKey* controller, guint keyval, guint /*keycode*/,
                                    GdkModifierType state, gpointer self) {
  return Guarded([&] {
    return static_cast<GtkKeyboardHook*>(self)->Tell(controller, keyval, state, false) ? TRUE : FALSE;
  });
}

void GtkKeyboardHook::OnReleased(GtkEventControllerKey* controller, guint keyval, guint /*keycode*/,
                                 GdkModifierType state, gpointer self) {
  Guarded([&] { static_cast<GtkKeyboardHook*>(self)->Tell(controller, keyval, state, true); });
}

}  // namespace kivandra::gtk
