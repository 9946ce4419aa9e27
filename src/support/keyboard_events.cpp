// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/keyboard_events.h"

#include <algorithm>

#include "support/raised.h"

namespace kivandra {

using mKeyboardHooks::KeyboardEventObject;
using mKeyboardHooks::KeyboardEventObjects;
using mKeyboardHooks::KeyboardHookHandle;
using mKeyboardHooks::KeyboardHookUsers;

KeyboardEvents::KeyboardEvents(KeyboardHook& hook) : hook_(hook) {
  // 1. Into the collection.
  static std::uint64_t lastNumber = 0;
  KeyboardEventObjects.push_back({++lastNumber, this});
  // 2. Both must be 0: a hook that could not be installed is tried again only once every object has ended.
  if (KeyboardHookHandle == 0 && KeyboardHookUsers == 0) {
    KeyboardHookHandle = hook_.Install(mKeyboardHooks::HookProcedure);
  }
  // 3.
  ++KeyboardHookUsers;
}

KeyboardEvents::~KeyboardEvents() {
  std::erase_if(KeyboardEventObjects,
                [this](const KeyboardEventObject& each) { return each.object == this; });
  if (KeyboardHookUsers > 0) {
    --KeyboardHookUsers;
  }
  if (KeyboardHookUsers == 0) {
    hook_.Remove(KeyboardHookHandle);
    KeyboardHookHandle = 0;
  }
}

namespace mKeyboardHooks {
namespace {

/// Raises an event on every object in the order of making; objects that a handler makes come last.
void Raise(KeyboardHandler KeyboardEvents::*event, std::int16_t& keyCode, std::int16_t& shift) {
  const auto isBehind = [](std::uint64_t number, const KeyboardEventObject& each) {
    return number < each.number;
  };
  std::uint64_t last = 0;
  for (;;) {
    const auto next =
        std::upper_bound(KeyboardEventObjects.begin(), KeyboardEventObjects.end(), last, isBehind);
    if (next == KeyboardEventObjects.end()) {
      return;
    }
    last = next->number;
    // A copy: the handler may end its own object.
    if (const KeyboardHandler handler = next->object->*event) {
      handler(keyCode, shift);
    }
  }
}

}  // namespace

bool HookProcedure(int code, int key, bool up, int shift) {
  // 1. A handler runs events: the key goes straight on, and the guard stays as it is.
  if (KeyboardHookBusy) {
    return false;
  }
  // 2.
  const Raised busy(KeyboardHookBusy);
  // 3. Only code 0 is a key to handle.
  if (code != 0) {
    return false;
  }
  // 4. Both are 16 bits wide.
  auto KeyCode = static_cast<std::int16_t>(key);
  auto Shift = static_cast<std::int16_t>(shift);
  // 5. Down or repeated, or up.
  Raise(up ? &KeyboardEvents::KeyUp : &KeyboardEvents::KeyDown, KeyCode, Shift);
  // 6., 7. A code that a handler has set to 0 is eaten, any other goes on.
  return KeyCode == 0;
}

}  // namespace mKeyboardHooks
}  // namespace kivandra
