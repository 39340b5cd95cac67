// A place that was found by its name, in words.
//
// Threads: as readers of the venue. Fails: never; what has no name is called by its id.
#pragma once

#include <string>

#include "TernCoreKit/guidance/TernPlaces.hpp"
#include "TernCoreKit/model/collections/TernVenueData.hpp"

namespace tern::command {

// "Coral Books (destination 7) on Ground Floor (waypoints 3, 9), First Floor (waypoint 12)"
std::string placeText(const TernVenueData& venue, const TernPlace& place);

}  // namespace tern::command
