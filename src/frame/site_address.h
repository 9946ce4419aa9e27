// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <string_view>

namespace kivandra {

/// What a search inside a site takes for the site of `url`: everything up to and with the first ".com"; else
/// up to the first ".net" and one character more; else up to the first ".org" and one character more. Letters
/// count as they are written. kept on purpose: the one character more; and an address with none of the three
/// keeps its first four characters.
[[nodiscard]] std::string SiteAddress(std::string_view url);

}  // namespace kivandra
