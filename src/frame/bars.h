// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <vector>

#include "platform/bar_control.h"

namespace kivandra {

/// The bands of `BonusBar` in their stored order.
const std::vector<BandData>& BonusBarData();

}  // namespace kivandra
