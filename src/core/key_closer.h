// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/registry_calls.h"
#include "support/attempt.h"

namespace kivandra {

/// Closes an open key at the end of its block.
class KeyCloser {
 public:
  KeyCloser(RegistryCalls& calls, HKEY key) : calls_(calls), key_(key) {}
  ~KeyCloser() {
    attempt([this] { calls_.RegCloseKey(key_); });
  }
  KeyCloser(const KeyCloser&) = delete;
  KeyCloser& operator=(const KeyCloser&) = delete;

 private:
  RegistryCalls& calls_;
  HKEY key_;
};

}  // namespace kivandra
