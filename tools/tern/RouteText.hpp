// Answered routes in words, for a person to read.
//
// Threads: as readers of the venue. Fails: never; what has no name is called by its id.
#pragma once

#include <cstdint>
#include <string>

#include "TernCoreKit/model/collections/TernVenueData.hpp"
#include "TernCoreKit/platform/Value.hpp"
#include "tools/tern/picture/Itinerary.hpp"

namespace tern::command {

// Where a request asks to; of a place with several waypoints the first.
std::int64_t goalOf(const Value& request);

// Whether the request begins where it ends, so that nobody has to walk.
bool isNoWay(const Value& request);

// The level that an answer goes by: everyone's when the request names none.
std::int64_t levelOf(const Value& request);

// "No route from ... to ...", with a line break, for a request that names both.
std::string noRouteText(const TernVenueData& venue, const Value& request);

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
std::string routeText(const TernVenueData& venue, const Value& segments);

}  // namespace tern::command
