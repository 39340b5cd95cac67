// What the ordering of a tour left out although a route still reaches it.
//
// The ordering decides from floor to floor and by straight lines, and drops what it cannot place;
// routes know better. A destination counts as visited when one of its waypoints is the start or
// ends a leg; behind an empty leg nobody stands anywhere else.
//
// Ownership: plain values that share records. Threads: any. Fails: never.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "TernCoreKit/model/venue/TernActiveVenue.hpp"

namespace tern::inline v5::detail {

using TourStops = std::vector<std::shared_ptr<TernDestination>>;

struct Tour {
  std::vector<TernRoute> legs;
  TourStops destinations;
};

// Appends from the last waypoint the route that is cheapest to reach of all waypoints of what has
// not been visited, and what is visited by it, again and again until no route leads on.
void appendTheRest(const TernActiveVenue& venue, const TernWaypoint& start, const TourStops& wanted,
                   std::int64_t level, Tour& tour);

}  // namespace tern::detail
