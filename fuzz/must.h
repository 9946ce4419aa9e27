// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdio>
#include <cstdlib>
#include <string_view>

#include "support/unicode.h"

namespace kivandra::fuzz {

/// Ends the fuzzer, which keeps what it was given, unless `holds`.
inline void Must(bool holds, const char* what) {
  if (!holds) {
    std::fprintf(stderr, "does not hold: %s\n", what);
    std::abort();
  }
}

/// Whether a text is UTF-8 throughout.
inline bool IsSound(std::string_view text) {
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t before = at;
    if (DecodeUtf8(text, at) == kReplacementCharacter && at - before != 3) {
      return false;
    }
  }
  return true;
}

}  // namespace kivandra::fuzz
