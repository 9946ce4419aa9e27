// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/variant.h"

#include <algorithm>
#include <array>
#include <charconv>

namespace kivandra {

namespace {

struct ToText {
  std::string operator()(Empty) const { return {}; }
  std::string operator()(bool value) const { return value ? "True" : "False"; }
  std::string operator()(std::int16_t value) const { return std::to_string(value); }
  std::string operator()(std::int32_t value) const { return std::to_string(value); }
  std::string operator()(std::uint8_t value) const { return std::to_string(value); }
  std::string operator()(const std::string& value) const { return value; }

  std::string operator()(double value) const {
    std::array<char, 32> text{};
    constexpr int kDigits = 15;
    const auto end =
        std::to_chars(text.data(), text.data() + text.size(), value, std::chars_format::general, kDigits).ptr;
    std::replace(text.data(), end, 'e', 'E');
    return {text.data(), end};
  }

  std::string operator()(const std::vector<std::uint8_t>& value) const {
    constexpr const char* kDigits = "0123456789ABCDEF";
    std::string text;
    for (const std::uint8_t byte : value) {
      text += kDigits[byte >> 4U];
      text += kDigits[byte & 0x0FU];
    }
    return text;
  }
};

}  // namespace

std::string TextOf(const Variant& value) { return std::visit(ToText{}, value); }

}  // namespace kivandra
