// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <string_view>

namespace kivandra::linux_impl {

/// The charset parameter of a `Content-Type`, without quotes; empty if there is none.
[[nodiscard]] std::string CharsetParameter(std::string_view contentType);

/// The charset labels that a page's own text declares; empty where there is none.
struct HeadCharsets {
  std::string xmlDeclaration;
  std::string meta;
};

/// Looks for them as the engine does: in the first 1024 bytes wherever they stand, and further on as long as
/// the page's head lasts; never inside comments, scripts, styles and titles.
[[nodiscard]] HeadCharsets CharsetsInHead(std::string_view bytes);

}  // namespace kivandra::linux_impl
