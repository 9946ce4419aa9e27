// SPDX-License-Identifier: GPL-3.0-or-later
#include "fakes/fake_keyboard_hook.h"

#include <utility>

namespace kivandra::fakes {

FakeKeyboardHook::FakeKeyboardHook(Journal& journal) : journal_(journal) {}

FakeKeyboardHook::~FakeKeyboardHook() = default;

std::uint32_t FakeKeyboardHook::Install(Procedure procedure) {
  journal_.Note("Install hook");
  if (broken) {
    return 0;
  }
  procedure_ = std::move(procedure);
  return ++handle_;
}

void FakeKeyboardHook::Remove(std::uint32_t handle) {
  journal_.Note("Remove hook " + std::to_string(handle));
  if (handle != 0) {
    procedure_ = nullptr;
  }
}

bool FakeKeyboardHook::Installed() const { return static_cast<bool>(procedure_); }

bool FakeKeyboardHook::Press(int key, int shift, bool up, int code) {
  const Procedure held = procedure_;  // the hook may be taken away inside
  return held && held(code, key, up, shift);
}

}  // namespace kivandra::fakes
