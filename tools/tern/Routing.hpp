// Routes between waypoints that are named by their ids. An id that the venue does not have is no
// error: in a list it is passed over, elsewhere there is nothing to be found.
//
// Threads: one call at a time, as they search the venue's graph. Fails: never.
#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string>

#include "TernCoreKit/wayfinding/TernPathPerFloor.hpp"

namespace tern {
class TernASGrid;
struct TernActiveVenue;
struct TernWaypoint;
}  // namespace tern

namespace tern::command {

// Names the waypoints that the graph does not have, as missing from that place; empty when it has
// them.
std::string unknownWaypoints(const TernASGrid& grid, std::int64_t from, std::int64_t to,
                             const std::string& place);

// Empty when there is no route. A link may be taken when its path type's accessibility is at most
// the level, which may be negative.
TernRoute findRoute(TernActiveVenue& venue, std::int64_t from, std::int64_t to, std::int64_t level);

// To whichever waypoint is cheapest to reach.
TernRoute findRouteToAny(TernActiveVenue& venue, std::int64_t from,
                         std::span<const std::int64_t> to, std::int64_t level);

// The candidate with the shortest route to the waypoint, or null.
std::shared_ptr<TernWaypoint> findClosestByRoute(TernActiveVenue& venue,
                                                 std::span<const std::int64_t> candidates,
                                                 std::int64_t to, std::int64_t level);

}  // namespace tern::command
