// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <vector>

#include "platform/menu_bar.h"

namespace kivandra {

/// The menus of the frame, top to bottom.
const std::vector<MenuData>& MenuTree();

}  // namespace kivandra
