// What of an OpenStreetMap file is about the inside of a building, sorted by what becomes of it.
//
// Ownership: borrows the data. Threads: a free function.
// Fails: never; what is about the inside and cannot be taken is told of.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "tools/import/draft/Oddities.hpp"
#include "tools/import/osm/OsmCodes.hpp"
#include "tools/import/osm/OsmData.hpp"
#include "tools/import/osm/OsmRings.hpp"

namespace tern::imports {

struct OsmOutline {
  std::string record;
  const OsmTags* tags = nullptr;
  std::vector<OsmRing> outer;
  std::vector<OsmRing> inner;
  std::vector<double> levels;
};

struct OsmLine {
  const OsmWay* way = nullptr;
  std::vector<double> levels;
};

struct OsmPoint {
  const OsmNode* node = nullptr;
  std::vector<double> levels;
};

struct OsmSelection {
  // Rooms, corridors and the like, each on a level at least.
  std::vector<OsmOutline> areas;
  std::vector<OsmOutline> columns;
  // Of whole levels; of buildings and their parts.
  std::vector<OsmOutline> levels;
  std::vector<OsmOutline> buildings;
  // Squares and the like outdoors, which may be beside the building.
  std::vector<OsmOutline> grounds;
  std::vector<OsmLine> walls;
  // Those without a level are outdoors.
  std::vector<OsmLine> walks;
  // Those without a level lie on that of what they are part of.
  std::vector<OsmPoint> doors;
  std::vector<OsmPoint> lifts;
  std::vector<OsmPoint> places;
  // Records with tags that say nothing of indoors.
  std::size_t others = 0;
};

// A record counts on each of its floors, and so do its corners.
inline constexpr std::size_t mostOsmThings = 50'000;
inline constexpr std::size_t mostOsmCorners = 1'000'000;
bool isTooMuch(const OsmSelection& found);

OsmSelection selectOsm(const OsmData& data, Oddities& oddities);

}  // namespace tern::imports
