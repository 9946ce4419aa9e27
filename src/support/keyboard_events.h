// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <functional>
#include <vector>

#include "platform/keyboard_hook.h"

namespace kivandra {

/// Gets a key's code and the modifiers (1 Shift, 2 Ctrl, 4 Alt). Both go from one handler to the next, so a
/// later one sees what an earlier one has changed; a code that ends as 0 takes the key away from the system.
using KeyboardHandler = std::function<void(std::int16_t& KeyCode, std::int16_t& Shift)>;

/// A window's share in the one keyboard hook: it hears every key of the program, also those pressed over a
/// page, for as long as it lives. The first object installs the hook and the end of the last takes it away.
/// If the hook can't be installed no event comes, and nothing is reported.
class KeyboardEvents {
 public:
  explicit KeyboardEvents(KeyboardHook& hook);
  ~KeyboardEvents();
  KeyboardEvents(const KeyboardEvents&) = delete;
  KeyboardEvents& operator=(const KeyboardEvents&) = delete;

  // The two events. A handler may run events, end this object or any other, and create new ones.
  KeyboardHandler KeyDown;
  KeyboardHandler KeyUp;

 private:
  KeyboardHook& hook_;
};

/// The dispatcher that all KeyboardEvents objects share. Values of the whole process.
namespace mKeyboardHooks {

/// A live object. Numbers only go up, so a walk finds its way on whatever a handler ends or makes.
struct KeyboardEventObject {
  std::uint64_t number;
  KeyboardEvents* object;
};

/// The installed hook, 0 when none.
inline std::uint32_t KeyboardHookHandle = 0;
/// Live KeyboardEvents objects.
inline std::int32_t KeyboardHookUsers = 0;
/// Every live object in the order of making; it keeps none of them alive.
inline std::vector<KeyboardEventObject> KeyboardEventObjects;
/// The hook procedure runs: a key that comes while a handler runs events goes straight on.
inline bool KeyboardHookBusy = false;

/// What the hook calls for each key; true eats it.
bool HookProcedure(int code, int key, bool up, int shift);

}  // namespace mKeyboardHooks
}  // namespace kivandra
