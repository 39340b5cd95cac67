// The walls and doors that a floor's drawing shows, where it says which of its lines they are:
// paths of the class "walls" and of the class "doors".
//
// Only what can be read for sure counts: lines of M, L, H, V and Z, in either case, in a drawing
// whose frame begins at 0 0 and that moves nothing, but for one group around all of it that scales.
//
// Ownership: a plain value. Threads: free functions. Fails: never; other drawings have no lines.
#pragma once

#include <string_view>
#include <vector>

#include "tools/check/Network.hpp"

namespace tern::check {

struct Segment {
  Point from;
  Point to;
};

// In map units.
struct WallLines {
  std::vector<Segment> walls;
  std::vector<Segment> doors;
};

WallLines wallLinesOf(std::string_view svg);

}  // namespace tern::check
