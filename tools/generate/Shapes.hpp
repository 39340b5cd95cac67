// Points and boxes of the drawings: whole pixels in the one frame that all maps of a venue share.
// Threads: plain values.
#pragma once

#include "tools/drawing/Geometry.hpp"

namespace tern::generate {

// Every drawing has this scale, so a metre is twenty pixels.
inline constexpr int mmPerPixel = 50;
inline constexpr int metrePx = 1000 / mmPerPixel;

using Point = drawing::PointOf<int>;
using Box = drawing::BoxOf<int>;

}  // namespace tern::generate
