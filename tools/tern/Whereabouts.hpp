// What is where, and what is not there, in words.
//
// Threads: as readers of the venue. Fails: never; what has no name is called by its id.
#pragma once

#include <cstdint>
#include <string>

#include "TernCoreKit/model/venue/TernActiveVenue.hpp"
#include "TernCoreKit/platform/Value.hpp"
#include "TernCoreKit/wayfinding/TernASGrid.hpp"

namespace tern::command {

// Such as "venue 1".
std::string venueTitle(const TernActiveVenue& venue);

// What is at a waypoint: the names of its destinations, else of its amenities, "waypoint 12"
// without any.
std::string placeName(const TernVenueData& venue, std::int64_t waypointId);
// The same with the id behind the names.
std::string placeNameWithId(const TernVenueData& venue, std::int64_t waypointId);

// "Toilets (waypoint 12) on First Floor"
std::string placeOnFloor(const TernVenueData& venue, const TernWaypoint& waypoint);
// ", 23 m away", or ", right there", as the crow flies from a point of the waypoint's map.
std::string awayText(const TernVenueData& venue, const TernWaypoint& waypoint, const Value& point);

// Names what the request asks from and to that the graph does not have, as missing from that place;
// empty when it has both.
std::string unknownWaypoints(const Value& request, const TernASGrid& grid,
                             const std::string& place);

}  // namespace tern::command
