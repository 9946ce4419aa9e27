// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <utility>

#include "fakes/journal.h"
#include "platform/keyboard_hook.h"

namespace kivandra::fakes {

/// A keyboard that the test presses.
class FakeKeyboardHook : public KeyboardHook {
 public:
  explicit FakeKeyboardHook(Journal& journal) : journal_(journal) {}

  [[nodiscard]] std::uint32_t Install(Procedure procedure) override {
    journal_.Note("Install hook");
    if (broken) {
      return 0;
    }
    procedure_ = std::move(procedure);
    return ++handle_;
  }
  void Remove(std::uint32_t handle) override {
    journal_.Note("Remove hook " + std::to_string(handle));
    if (handle != 0) {
      procedure_ = nullptr;
    }
  }

  [[nodiscard]] bool Installed() const { return static_cast<bool>(procedure_); }
  /// A key goes down (or up); true if the hook eats it.
  bool Press(int key, int shift = 0, bool up = false, int code = 0) {
    const Procedure held = procedure_;  // the hook may be taken away inside
    return held && held(code, key, up, shift);
  }

  bool broken = false;

 private:
  Journal& journal_;
  Procedure procedure_;
  std::uint32_t handle_ = 0;
};

}  // namespace kivandra::fakes
