// Areas as no architect draws them, to try ways in: rooms put together at random, with holes,
// pillars, walls of no width to speak of, and necks from a millimetre to a metre and a half.
//
// Ownership: plain values. Threads: free functions. Fails: never.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "tools/import/draft/Draft.hpp"

namespace tern::imports {

struct MadeArea {
  Polygon area;
  // On the edge.
  std::vector<Point> doors;
  // Within.
  std::vector<Point> places;
};

// Made of at most so many rooms along each side. The same arguments give the same area.
MadeArea madeArea(std::uint64_t seed, int rooms, std::size_t places);

}  // namespace tern::imports
