// Which venue and floor something is on, and how far it is from there, in words.
//
// Threads: as readers of the venue. Fails: never.
#pragma once

#include <memory>
#include <string>

#include "TernCoreKit/model/venue/TernActiveVenue.hpp"

namespace tern::command {

// Such as "venue 1".
std::string venueTitle(const TernActiveVenue& venue);
// The name of the map's floor, "map 3" without one.
std::string floorName(const TernActiveVenue& venue, const std::shared_ptr<TernMap>& map);
// In map units.
double straightDistance(const TernWaypoint& waypoint, TernCoordinate point);
// In metres where the map's scale is known.
std::string lengthText(const TernMap& map, double mapUnits);

}  // namespace tern::command
