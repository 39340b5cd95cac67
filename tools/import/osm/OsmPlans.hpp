// The plans of a building's floors: rooms, corridors, what is open outdoors beside it, and what of
// them is left to walk in between walls and columns. They are drawn into the draft.
//
// Ownership: plain values that borrow the selection. Threads: a free function.
// Fails: never; what cannot be drawn is told of in the draft.
#pragma once

#include <cstddef>
#include <vector>

#include "tools/import/osm/OsmArea.hpp"
#include "tools/import/osm/OsmCarving.hpp"
#include "tools/import/osm/OsmFrame.hpp"

namespace tern::imports {

struct OsmPlans {
  // As they are drawn.
  std::vector<OsmArea> areas;
  CarvedAreas carved;
  // Those that are closed to the public, which are not walked.
  std::vector<SiteArea> barred;
  // Those without a cabin that is drawn.
  std::vector<OsmPoint> lifts;
  // Of what is open outdoors, how much is not beside the building.
  std::size_t others = 0;
};

OsmPlans readOsmPlans(const OsmFrame& frame);

}  // namespace tern::imports
