// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/gtk/mdi/mdi_layout.h"

#include <algorithm>
#include <cmath>

namespace kivandra::gtk::mdi {
namespace {

constexpr int kStepRight = 32;
constexpr int kStepDown = 36;
constexpr int kEdge = 12;
constexpr int kGap = 4;
constexpr int kLeastWidth = 320;
constexpr int kLeastHeight = 240;

}  // namespace

Gdk::Rectangle CascadePlace(int width, int height, int number) {
  const int childWidth = std::max(kLeastWidth, width * 3 / 4);
  const int childHeight = std::max(kLeastHeight, height * 3 / 4);
  const int steps = std::max(
      1, 1 + std::min((width - childWidth - kEdge) / kStepRight, (height - childHeight - kEdge) / kStepDown));
  const int step = number % steps;
  return {kEdge + step * kStepRight, kEdge + step * kStepDown, childWidth, childHeight};
}

std::vector<Gdk::Rectangle> Tiles(int width, int height, int count, bool horizontal) {
  std::vector<Gdk::Rectangle> places;
  if (count <= 0) {
    return places;
  }
  // `lines` rows (columns if horizontal); the last ones take one child more if the numbers don't divide.
  const int lines = count < 4 ? 1 : static_cast<int>(std::sqrt(count));
  const int across = horizontal ? width : height;
  const int along = horizontal ? height : width;
  for (int line = 0; line < lines; ++line) {
    const int inLine = count / lines + (line >= lines - count % lines ? 1 : 0);
    const int from = across * line / lines;
    const int to = across * (line + 1) / lines;
    for (int i = 0; i < inLine; ++i) {
      const int begin = along * i / inLine;
      const int end = along * (i + 1) / inLine;
      places.push_back(horizontal ? Gdk::Rectangle(from, begin, to - from, end - begin)
                                  : Gdk::Rectangle(begin, from, end - begin, to - from));
    }
  }
  return places;
}

Gdk::Rectangle IconPlace(int width, int height, int slot) {
  const int perRow = std::max(1, (width - kGap) / (kIconWidth + kGap));
  const int row = slot / perRow;
  return {kGap + slot % perRow * (kIconWidth + kGap), height - (row + 1) * kIconRow, kIconWidth, kIconHeight};
}

}  // namespace kivandra::gtk::mdi
