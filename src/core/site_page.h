// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <string_view>

#include "hosts.h"

namespace kivandra {

/// Address of a site's page; the path begins with a slash or is empty.
inline std::string PageOf(std::string_view host, std::string_view path) {
  return "http://" + std::string(host) + std::string(path);
}

/// Address of a page of the product's own site.
inline std::string SitePage(std::string_view path) { return PageOf(hosts::kProductSite, path); }

}  // namespace kivandra
