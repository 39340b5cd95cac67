// What of the outdoors belongs to a building: squares and footways beside it, at the height of the
// ground.
//
// Ownership: borrows what it is asked about. Threads: free functions. Fails: never.
#pragma once

#include <span>
#include <vector>

#include "tools/import/osm/OsmArea.hpp"
#include "tools/import/osm/OsmNodes.hpp"
#include "tools/import/osm/OsmSelection.hpp"

namespace tern::imports {

// Squares are beside the building when they are within 100 m of its areas; what else a mall or a
// campus lies on is when two entrances lie on its outline.
std::vector<const OsmOutline*> groundsBeside(const OsmSelection& found, const OsmNodes& nodes,
                                             std::span<const OsmArea> areas);

// Those without a level that are within 100 m of the areas and lead, one after the other, to a door
// or to a way on a level.
std::vector<const OsmLine*> walksBeside(const OsmSelection& found, const OsmNodes& nodes,
                                        std::span<const OsmArea> areas);

}  // namespace tern::imports
