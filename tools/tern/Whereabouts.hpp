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

// What a waypoint is called: the names of its destinations, else of its amenities, else "near Coral
// Books" by what is near, else "waypoint 12 on First Floor"; "waypoint 12" when no map has it.
std::string placeName(const TernVenueData& venue, std::int64_t waypointId);
// "Toilets (waypoint 12)" and "near Coral Books (waypoint 13) on First Floor"
std::string placeNameWithId(const TernVenueData& venue, std::int64_t waypointId);

// "Toilets (waypoint 12) on First Floor"
std::string placeOnFloor(const TernVenueData& venue, const TernWaypoint& waypoint);
// ", 23 m away", or ", right there", as the crow flies from a point of the waypoint's map.
std::string awayText(const TernVenueData& venue, const TernWaypoint& waypoint, const Value& point);

// Names what the request asks from and to, each a waypoint or a list of them, that the graph does
// not have, as missing from that place; empty when it has all.
std::string unknownWaypoints(const Value& request, const TernASGrid& grid,
                             const std::string& place);

}  // namespace tern::command
