// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <vector>

namespace kivandra::gtk {

/// One key of a text that is sent as if it were typed.
struct SentKey {
  std::string key;  ///< a character, or a name in capitals as in "DOWN"
  bool control = false;
  bool alt = false;
  bool shift = false;
  friend bool operator==(const SentKey&, const SentKey&) = default;
};

/// Reads the notation of sent keys: a character stands for its key, "{DOWN}" for a key with a name, "{f}" for
/// a character; "^", "%" and "+" hold Ctrl, Alt and Shift for the next key or for a group "(...)". What is
/// left open at the end is passed over.
[[nodiscard]] std::vector<SentKey> ReadSentKeys(const std::string& text);

}  // namespace kivandra::gtk
