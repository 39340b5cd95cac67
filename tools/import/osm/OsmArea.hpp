// A room, a corridor or the like on one floor.
//
// Ownership: borrows the tags. Threads: plain values. Fails: never.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "tools/import/osm/OsmCodes.hpp"
#include "tools/import/osm/OsmData.hpp"
#include "tools/import/osm/OsmRings.hpp"
#include "tools/import/ways/Shapes.hpp"

namespace tern::imports {

struct OsmArea {
  // The record, and the record on this floor where it lies on several.
  std::string record;
  std::string id;
  const OsmTags* tags = nullptr;
  OsmAreaMeaning meaning;
  std::size_t floor = 0;
  Shapes shapes;
  std::vector<OsmRing> rings;
};

}  // namespace tern::imports
