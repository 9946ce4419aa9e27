// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string_view>
#include <vector>

#include "platform/rich_text_box.h"

namespace kivandra {

/// The addresses in a text: from "http://", "https://" or "ftp://" (in any case, not inside a word) up to the
/// next white space or the end, at least one character behind the slashes. In rising order. Linear time.
[[nodiscard]] std::vector<TextSpan> FindLinks(std::string_view text);

}  // namespace kivandra
