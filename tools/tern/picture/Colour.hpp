// Colours as drawings write them, and how well one is seen on another.
//
// Threads: plain values and free functions. Fails: never; what is no colour is none.
//
//   const auto wall = readPaint("#8793a0");
//   if (wall && contrast(wall->colour, floor) < 3) ...
#pragma once

#include <optional>
#include <string_view>

namespace tern::picture {

// Its parts as sRGB has them, from 0 to 1.
struct Colour {
  double red = 0;
  double green = 0;
  double blue = 0;
};

inline constexpr Colour white{1, 1, 1};

struct Paint {
  Colour colour;
  double opacity = 1;
};

// "#123", "#112233", "rgb(1, 2, 3)" and the names of CSS, in any case; none for "none", for a
// gradient and for what is no colour.
std::optional<Paint> readPaint(std::string_view text);

// How light it is to the eye: black is 0 and white 1. The second goes with the parts as they are.
double luminance(const Colour& colour);
double luma(const Colour& colour);

// From 1 for colours of one luminance to 21 for black and white.
double contrast(const Colour& a, const Colour& b);

// `a` where the part is 0, `b` where it is 1.
Colour mixed(const Colour& a, const Colour& b, double part);

}  // namespace tern::picture
