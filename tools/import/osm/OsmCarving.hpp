// Areas as they are drawn, made to areas that one walks in: what is open is one, and rooms, stairs
// and columns that are drawn over it are cut out of it, and small rooms out of larger ones.
//
// Ownership: plain values. Threads: a free function.
// Fails: never; what nothing is left of is told of.
#pragma once

#include <map>
#include <span>
#include <vector>

#include "tools/import/osm/OsmArea.hpp"
#include "tools/import/ways/AreaUse.hpp"
#include "tools/import/ways/SiteWays.hpp"

namespace tern::imports {

struct CarvedAreas {
  // Each in one piece.
  std::vector<SiteArea> areas;
  std::vector<AreaUse> uses;
  // By what was carved: its areas; none where it is open.
  std::vector<std::vector<std::size_t>> of;
};

struct OsmObstacles {
  // By floor.
  std::map<std::size_t, Shapes> on;
  // Buildings, on the ground outdoors alone.
  Shapes buildings;
};

CarvedAreas carved(std::span<const OsmArea> drawn, const OsmObstacles& obstacles,
                   Oddities& oddities);

}  // namespace tern::imports
