// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>

#include "fakes/journal.h"
#include "platform/keyboard_hook.h"

namespace kivandra::fakes {

/// A keyboard that the test presses.
class FakeKeyboardHook : public KeyboardHook {
 public:
  explicit FakeKeyboardHook(Journal& journal);
  ~FakeKeyboardHook() override;

  [[nodiscard]] std::uint32_t Install(Procedure procedure) override;
  void Remove(std::uint32_t handle) override;

  [[nodiscard]] bool Installed() const;
  /// A key goes down (or up); true if the hook eats it.
  bool Press(int key, int shift = 0, bool up = false, int code = 0);

  bool broken = false;

 private:
  Journal& journal_;
  Procedure procedure_;
  std::uint32_t handle_ = 0;
};

}  // namespace kivandra::fakes
