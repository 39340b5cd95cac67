// What is to be seen from where: the straight ways between the stops and the inner corners of a
// space that stay in it.
//
// A shortest way touches the walls only at inner corners, and bends round them. So of the ways from
// a corner only those matter that go past it without leading into its wall.
//
// Ownership: plain values. Threads: a free function. Fails: never.
#pragma once

#include <cstddef>
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
  // From the shortest to the longest.
  std::vector<StraightWay> ways;
};

// From each of more nodes than `seenFromAll` only the nearest in each direction are looked at, and
// what it takes for all to hang together. Then walks may get a little longer than they had to be.
// REQUIRES: the stops lie in the space and differ.
Sight sightIn(const Shapes& space, std::span<const Point> stops, std::size_t seenFromAll = 1000);

}  // namespace tern::imports
