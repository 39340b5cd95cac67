// What is drawn of a building's ways: those that people walk, on levels and outdoors, and lifts
// that are nodes. They become nodes and links of the draft; where one ends amid an area, the ways
// that are made there shall lead to it.
//
// Ownership: plain values. Threads: free functions.
// Fails: never; what leads nowhere is told of in the draft.
#pragma once

#include <cstddef>
#include <map>
#include <set>
#include <utility>
#include <vector>

#include "tools/import/osm/OsmFrame.hpp"
#include "tools/import/osm/OsmPlans.hpp"
#include "tools/import/osm/OsmWalks.hpp"
#include "tools/import/ways/FloorAreas.hpp"
#include "tools/import/ways/SiteWays.hpp"

namespace tern::imports {

struct DrawnWays {
  // Where they go through walls.
  std::set<OsmStop> openings;
  // Stands of the site, and the nodes that are drawn there.
  std::vector<std::pair<std::size_t, std::size_t>> joints;
  // Walks without a level that do not lead to the building.
  std::size_t others = 0;
};

DrawnWays readDrawnWays(const OsmFrame& frame, const OsmPlans& plans, const OsmOutlines& outlines,
                        const FloorAreas& byPlace, Site& site);

// Of the nodes that were made for stands: those that are one with the drawn ones, which lie in the
// same place. The others are linked to them.
std::map<std::size_t, std::size_t> joinDrawnWays(const DrawnWays& drawn, const MadeWays& made,
                                                 Draft& draft);

}  // namespace tern::imports
