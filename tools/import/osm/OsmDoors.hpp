// The doors of a building, where they lie in outlines of areas or on ways, and the entrances among
// them.
//
// Ownership: plain values. Threads: a free function.
// Fails: never; a door that is on no outline is told of in the draft.
#pragma once

#include <cstddef>
#include <set>
#include <string>

#include "tools/import/osm/OsmFrame.hpp"
#include "tools/import/osm/OsmOutlines.hpp"
#include "tools/import/osm/OsmPlaces.hpp"
#include "tools/import/osm/OsmPlans.hpp"
#include "tools/import/osm/OsmWalks.hpp"
#include "tools/import/ways/SiteWays.hpp"

namespace tern::imports {

struct OsmDoors {
  // Of the doors of the site.
  std::set<std::string> entrances;
  // Doors without a level that are of no area.
  std::size_t others = 0;
};

// `openings` are where ways that are drawn go through walls. Entrances with a name are places.
// Those that are closed to the public, or lead to what is, are drawn and join nothing.
OsmDoors readOsmDoors(const OsmFrame& frame, const OsmPlans& plans, const OsmOutlines& outlines,
                      const std::set<OsmStop>& openings, Site& site, OsmPlaces& places);

}  // namespace tern::imports
