// Points and boxes of the drawings: whole pixels, x to the right, y downward, in the one frame that
// all maps of a venue share. Threads: plain values.
#pragma once

#include <compare>

namespace tern::generate {

// Every drawing has this scale, so a metre is twenty pixels.
inline constexpr int mmPerPixel = 50;
inline constexpr int metrePx = 1000 / mmPerPixel;

struct Point {
  int x = 0;
  int y = 0;

  friend auto operator<=>(const Point&, const Point&) = default;
};

struct Box {
  int left = 0;
  int top = 0;
  int right = 0;
  int bottom = 0;

  int width() const { return right - left; }
  int height() const { return bottom - top; }
  Point centre() const { return {(left + right) / 2, (top + bottom) / 2}; }
  Box grownBy(int margin) const {
    return {left - margin, top - margin, right + margin, bottom + margin};
  }
};

}  // namespace tern::generate
