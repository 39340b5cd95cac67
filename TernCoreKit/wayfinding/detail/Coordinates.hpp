// Reads where a waypoint lies.
#pragma once

#include <cstddef>

#include "TernCoreKit/model/records/TernWaypoint.hpp"

namespace tern::detail {

// The number at that place of the waypoint's coordinates, as stored; absent when it has none.
inline const Value& coordinate(const TernWaypoint& waypoint, std::size_t axis) {
  static const Value absent;
  const auto coordinates = waypoint.coordinates.items();
  return axis < coordinates.size() ? coordinates[axis] : absent;
}

}  // namespace tern::detail
