// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <string_view>

namespace kivandra::linux_impl {

/// Undoes percent-encoding, once. A broken escape stands for itself.
[[nodiscard]] std::string PercentDecode(std::string_view text);

/// Encodes every byte but letters, digits and "-._~" of ASCII.
[[nodiscard]] std::string PercentEncode(std::string_view text);

}  // namespace kivandra::linux_impl
