// Venues to measure on: floors of corridors round blocks of shops, with rooms of one or two doors,
// joined by lifts and stairs.
//
// About 1.3 paths a waypoint. The same options give the same documents.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "TernCoreKit/platform/Value.hpp"

namespace tern::bench {

// Whether ids, and the waypoints and paths of each floor's document, stand in the order in which
// one would walk or in none.
enum class IdOrder { walking, random };

struct IndoorVenue {
  // As a service sends them.
  Value venue;
  Value building;
  // In the order in which one would walk, whatever the ids are.
  std::vector<std::int64_t> waypointIds;
};

IndoorVenue makeIndoorVenue(std::size_t waypoints, IdOrder order);

}  // namespace tern::bench
