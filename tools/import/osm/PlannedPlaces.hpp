// Finds the places of a building: areas and nodes that somebody may want to go to.
//
// Threads: a free function. Fails: never; what is far from the site is told of in the draft.
#pragma once

#include "tools/import/osm/OsmFrame.hpp"
#include "tools/import/osm/OsmPlaces.hpp"
#include "tools/import/osm/OsmPlans.hpp"
#include "tools/import/ways/FloorAreas.hpp"

namespace tern::imports {

void planOsmPlaces(const OsmFrame& frame, const OsmPlans& plans, const FloorAreas& byPlace,
                   OsmPlaces& places);

}  // namespace tern::imports
