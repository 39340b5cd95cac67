// A route in words, for a person to read.
//
// Threads: as readers of the venue. Fails: never; what has no name is called by its id.
#pragma once

#include <cstdint>
#include <string>

#include "TernCoreKit/model/collections/TernVenueData.hpp"
#include "TernCoreKit/wayfinding/TernPathPerFloor.hpp"
#include "tools/tern/picture/Itinerary.hpp"

namespace tern::command {

// What is at a waypoint: the names of its destinations and amenities, "waypoint 12" without one.
std::string placeName(const TernVenueData& venue, std::int64_t waypointId);
// The same with the id behind the names.
std::string placeNameWithId(const TernVenueData& venue, std::int64_t waypointId);

// "No route from ... to ...", with a line break.
std::string noRouteText(const TernVenueData& venue, std::int64_t from, std::int64_t to);

// A line for each floor that is visited and for what leads on from there, indented.
std::string stagesText(const picture::Itinerary& itinerary);

//   From Juniper Bakery (waypoint 12)
//     Ground floor: walk 62 m
//     Lift up to First floor
//     First floor: walk 81 m
//   To Shoe World (waypoint 40)
//   143 m in all
//
// REQUIRES: a segment.
std::string routeText(const TernVenueData& venue, const TernRoute& route);

}  // namespace tern::command
