// What is to be seen from where: the straight ways between the stops and the inner corners of a
// space that stay in it.
//
// A shortest way touches the walls only at inner corners, and bends round them. So of the ways from
// a corner only those matter that go past it without leading into its wall.
//
// Ownership: plain values. Threads: a free function. Fails: never.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "tools/import/ways/Shapes.hpp"

namespace tern::imports {

struct StraightWay {
  std::uint32_t from = 0;
  std::uint32_t to = 0;
  double metres = 0;
};

struct Sight {
  // Those of the stops in their order, then the corners.
  std::vector<Point> nodes;
  std::vector<StraightWay> ways;
};

// REQUIRES: the stops lie in the space and differ.
Sight sightIn(const Shapes& space, std::span<const Point> stops);

}  // namespace tern::imports
