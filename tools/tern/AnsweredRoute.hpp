// Reads a route back from an answer.
//
// Ownership: shares the venue's path types. Threads: as readers of the venue. Fails: never; what
// the answer does not say is 0, and a number that it could not say is not finite.
#pragma once

#include <cstdint>

#include "TernCoreKit/model/collections/TernVenueData.hpp"
#include "TernCoreKit/platform/Value.hpp"
#include "TernCoreKit/wayfinding/TernPathPerFloor.hpp"

namespace tern::command {

// The route as it was found, but without its waypoints as nodes of a graph: their ids are for the
// two below.
TernRoute routeOf(const TernVenueData& venue, const Value& segments);

// The waypoints where it begins and ends. REQUIRES: a segment.
std::int64_t startOf(const Value& segments);
std::int64_t endOf(const Value& segments);

}  // namespace tern::command
