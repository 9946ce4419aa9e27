// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <gdkmm/rectangle.h>

#include <vector>

namespace kivandra::gtk::mdi {

inline constexpr int kIconWidth = 200;
inline constexpr int kIconHeight = 34;  // a title of 32 with its line
inline constexpr int kIconRow = kIconHeight + 4;

/// Where the child with this number lies in a cascade over an area of the given size; the steps begin anew at
/// the top when a child would leave the area.
[[nodiscard]] Gdk::Rectangle CascadePlace(int width, int height, int number);
/// Places of `count` children that fill the area without gaps, the first at the top left. Up to three stand
/// in one row, or one column if `horizontal`; more stand in a grid.
[[nodiscard]] std::vector<Gdk::Rectangle> Tiles(int width, int height, int count, bool horizontal);
/// Place of a minimised child's title: along the foot from the left, full rows above each other.
[[nodiscard]] Gdk::Rectangle IconPlace(int width, int height, int slot);

}  // namespace kivandra::gtk::mdi
