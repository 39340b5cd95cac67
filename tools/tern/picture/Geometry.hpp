// Points, boxes and sizes of pictures. Whoever holds one says in which units.
//
// Threads: plain values.
// Fails: never.
#pragma once

#include "tools/drawing/Geometry.hpp"

namespace tern::picture {

using Point = drawing::PointOf<double>;
using Box = drawing::BoxOf<double>;

struct Size {
  double width = 0;
  double height = 0;
};

}  // namespace tern::picture
