// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/linux/percent_encoding.h"

namespace kivandra::linux_impl {
namespace {

int HexDigit(char c) {
  if (c >= '0' && c <= '9') {
    return c - '0';
  }
  const char lower = static_cast<char>(c | 0x20);
  return lower >= 'a' && lower <= 'f' ? lower - 'a' + 10 : -1;
}

bool IsUnreserved(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') ||
         std::string_view("-._~").find(c) != std::string_view::npos;
}

}  // namespace

std::string PercentDecode(std::string_view text) {
  std::string decoded;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const bool escape = text[i] == '%' && i + 2 < text.size();
    const int high = escape ? HexDigit(text[i + 1]) : -1;
    const int low = escape ? HexDigit(text[i + 2]) : -1;
    if (high >= 0 && low >= 0) {
      decoded += static_cast<char>(high * 16 + low);
      i += 2;
    } else {
      decoded += text[i];
    }
  }
  return decoded;
}

std::string PercentEncode(std::string_view text) {
  constexpr std::string_view kHex = "0123456789ABCDEF";
  std::string encoded;
  for (const char c : text) {
    if (IsUnreserved(c)) {
      encoded += c;
    } else {
      const auto byte = static_cast<unsigned char>(c);
      encoded += '%';
      encoded += kHex[byte >> 4U];
      encoded += kHex[byte & 15U];
    }
  }
  return encoded;
}

}  // namespace kivandra::linux_impl
