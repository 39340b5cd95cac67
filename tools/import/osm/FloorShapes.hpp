// The outlines of a building's floors.
//
// Threads: a free function. Fails: never.
#pragma once

#include <span>

#include "tools/import/osm/OsmArea.hpp"
#include "tools/import/osm/OsmFrame.hpp"

namespace tern::imports {

// As stated, else what lies on a floor and the buildings round that together.
void drawOsmFloors(const OsmFrame& frame, std::span<const OsmArea> areas);

}  // namespace tern::imports
