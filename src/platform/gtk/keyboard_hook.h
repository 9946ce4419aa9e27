// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gtkmm.h>

#include <cstdint>
#include <deque>
#include <functional>
#include <map>

#include "platform/keyboard_hook.h"

namespace kivandra::gtk {

/// The one hook for keys: it listens on every window of the program before the window's own parts do, so that
/// a page with the focus can't swallow a key.
class GtkKeyboardHook : public KeyboardHook {
 public:
  GtkKeyboardHook() = default;
  GtkKeyboardHook(const GtkKeyboardHook&) = delete;
  GtkKeyboardHook& operator=(const GtkKeyboardHook&) = delete;
  ~GtkKeyboardHook() override;

  [[nodiscard]] std::uint32_t Install(Procedure procedure) override;
  void Remove(std::uint32_t handle) override;

 private:
  /// What tells one press from another. A page gives back the keys that it has no use for, and the toolkit
  /// then tells the very same event a second time; a busy page does so when later keys have been told
  /// already.
  struct Press {
    guint32 time = 0;
    guint keyval = 0;
    bool up = false;
    friend bool operator==(const Press&, const Press&) = default;
  };

  void Watch(GtkWindow* window);
  void WatchNewWindows();
  bool Tell(GtkEventControllerKey* controller, guint keyval, GdkModifierType state, bool up);

  static gboolean OnPressed(GtkEventControllerKey* controller, guint keyval, guint keycode,
                            GdkModifierType state, gpointer self);
  static void OnReleased(GtkEventControllerKey* controller, guint keyval, guint keycode,
                         GdkModifierType state, gpointer self);
  static void OnWindowGone(gpointer self, GObject* window);

  Procedure procedure_;
  std::map<GtkWindow*, GtkEventController*> watched_;
  gulong windowsChanged_ = 0;
  std::deque<Press> told_;  // the latest ones, oldest first
};

}  // namespace kivandra::gtk
