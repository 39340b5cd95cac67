// The ways that people walk within one area, between its doors and the places in it.
//
//   const AreaWays ways = waysIn(hall, doors, places);
//   ways.nodes[ways.ofDoor[0]];  // a step inside of the first door
//
// The ways keep half a person's width from the walls where there is room, lead straight from inner
// corner to inner corner, and no walk along them is longer by more than two parts in a hundred than
// it had to be. Were there more ways than ten for each corner of the area, that is up to five in a
// hundred; and more only beyond ten ways for each corner, door and place. Where more than a
// thousand corners, doors and places lie in one area, it may be one in a hundred more: there one
// looks only at the nearest in each direction, so that time does not grow without bounds.
//
// Ownership: plain values. Threads: a free function.
// Fails: never: parts of an area that do not hang together have no ways between them.
#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "tools/import/ways/Sight.hpp"

namespace tern::imports {

struct AreaWays {
  std::vector<Point> nodes;
  std::vector<StraightWay> ways;
  // Nodes, in the order of what was given; one node may stand for several.
  std::vector<std::size_t> ofDoor;
  std::vector<std::size_t> ofPlace;
};

// Of an area in one piece, repaired. Doors lie on its edge, places in it or near it.
AreaWays waysIn(const Polygon& area, std::span<const Point> doors, std::span<const Point> places);

}  // namespace tern::imports
