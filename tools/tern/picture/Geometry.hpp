// Points and boxes of pictures: x to the right, y downward. Whoever holds one says in which units.
//
// Threads: plain values.
// Fails: never.
#pragma once

#include <algorithm>

namespace tern::picture {

struct Point {
  double x = 0;
  double y = 0;
};

struct Size {
  double width = 0;
  double height = 0;
};

struct Box {
  double left = 0;
  double top = 0;
  double right = 0;
  double bottom = 0;

  double width() const { return right - left; }
  double height() const { return bottom - top; }
  Point centre() const { return {(left + right) / 2, (top + bottom) / 2}; }
  Box grownBy(double margin) const {
    return {left - margin, top - margin, right + margin, bottom + margin};
  }
  bool contains(Point point) const {
    return point.x >= left && point.x <= right && point.y >= top && point.y <= bottom;
  }
  Box with(Point point) const {
    return {std::min(left, point.x), std::min(top, point.y), std::max(right, point.x),
            std::max(bottom, point.y)};
  }
  double overlap(const Box& other) const {
    const double across = std::min(right, other.right) - std::max(left, other.left);
    const double down = std::min(bottom, other.bottom) - std::max(top, other.top);
    return across > 0 && down > 0 ? across * down : 0;
  }
};

}  // namespace tern::picture
