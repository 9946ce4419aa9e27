// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <cstdint>
#include <string>
#include <variant>
#include <vector>

namespace kivandra {

/// No value; counts as the empty text.
using Empty = std::monostate;

/// A value of one of the kinds that the registry object takes and gives.
using Variant = std::variant<Empty, bool, std::int16_t, std::int32_t, double, std::uint8_t, std::string,
                             std::vector<std::uint8_t>>;

/// The value as text: nothing for Empty, "True" and "False", numbers in decimals with a point (a double with
/// at most 15 digits), bytes as pairs of hexadecimal digits.
std::string TextOf(const Variant& value);

}  // namespace kivandra
