// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <functional>

namespace kivandra {

/// The system's hook for the keys of this program, ahead of every window and of the page.
class KeyboardHook {
 public:
  virtual ~KeyboardHook() = default;

  /// Gets every key press, repeat and release while a window of the program has the focus. `code` is 0 for a
  /// key that is to be handled, anything else for one that is only looked at. `key` is a code of winuser.h
  /// (KeyCode), never 0: a key that has no such code is not told. `shift` is the state of the modifiers at
  /// that moment: 1 Shift, 2 Ctrl, 4 Alt. True eats the key; false lets it go on to where the system would
  /// bring it. Events may run inside, so the hook may be called again before it returns.
  using Procedure = std::function<bool(int code, int key, bool up, int shift)>;

  /// Installs the one hook; its handle, or 0 if that fails.
  [[nodiscard]] virtual std::uint32_t Install(Procedure procedure) = 0;
  /// Takes the hook away; allowed inside its own procedure. 0 does nothing.
  virtual void Remove(std::uint32_t handle) = 0;
};

}  // namespace kivandra
