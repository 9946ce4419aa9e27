// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/unicode.h"

namespace kivandra {

namespace {

constexpr unsigned char kContinuationLow = 0x80;
constexpr unsigned char kContinuationHigh = 0xBF;
constexpr unsigned kContinuationBits = 6;
constexpr unsigned char kContinuationMask = 0x3F;

}  // namespace

char32_t DecodeUtf8(std::string_view text, std::size_t& at) {
  const auto byteAt = [&](std::size_t index) { return static_cast<unsigned char>(text[index]); };
  const unsigned char lead = byteAt(at++);
  if (lead < kContinuationLow) {
    return lead;
  }

  // The lead byte fixes the length and, so that overlong forms, surrogates and values above U+10FFFF are no
  // sequences at all, the range of the second byte.
  std::size_t more = 0;
  char32_t c = 0;
  unsigned char low = kContinuationLow;
  unsigned char high = kContinuationHigh;
  if (lead >= 0xC2 && lead <= 0xDF) {
    more = 1;
    c = lead & 0x1FU;
  } else if (lead >= 0xE0 && lead <= 0xEF) {
    more = 2;
    c = lead & 0x0FU;
    low = lead == 0xE0 ? 0xA0 : low;
    high = lead == 0xED ? 0x9F : high;
  } else if (lead >= 0xF0 && lead <= 0xF4) {
    more = 3;
    c = lead & 0x07U;
    low = lead == 0xF0 ? 0x90 : low;
    high = lead == 0xF4 ? 0x8F : high;
  } else {
    return kReplacementCharacter;
  }
  if (more > text.size() - at) {
    return kReplacementCharacter;
  }
  for (std::size_t i = 0; i < more; ++i) {
    const unsigned char next = byteAt(at + i);
    if (next < low || next > high) {
      return kReplacementCharacter;
    }
    c = (c << kContinuationBits) | (next & kContinuationMask);
    low = kContinuationLow;
    high = kContinuationHigh;
  }
  at += more;
  return c;
}

}  // namespace kivandra
