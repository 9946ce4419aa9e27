// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <string>
#include <vector>

namespace kivandra {

/// A menu entry that opens a fixed page in the active child.
struct MenuLink {
  std::string name;
  std::string address;
};

const std::vector<MenuLink>& MenuLinks();

}  // namespace kivandra
