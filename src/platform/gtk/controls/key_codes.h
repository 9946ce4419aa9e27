// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gtkmm.h>

#include "platform/control.h"

namespace kivandra::gtk {

/// The key code (winuser.h) of a toolkit key, or 0 for a key that handlers do not know.
[[nodiscard]] int KeyCodeOf(unsigned keyval);

/// Offers every key that goes into an entry to `handler` first. Keys that an input method is busy with are
/// left to it.
class EntryKeys {
 public:
  explicit EntryKeys(Gtk::Widget& entry);

  void SetHandler(KeyHandler handler);

 private:
  KeyHandler handler_;
  bool composing_ = false;
};

}  // namespace kivandra::gtk
