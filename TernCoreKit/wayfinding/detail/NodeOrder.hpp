// In which order the nodes are laid out: those that a search meets together are to lie together,
// whatever the order in which waypoints were given.
//
// Threads: any; values in, values out. Fails: never.
#pragma once

#include "TernCoreKit/wayfinding/detail/EdgeLists.hpp"
#include "TernCoreKit/wayfinding/detail/Index.hpp"
#include "TernCoreKit/wayfinding/detail/VenueFacts.hpp"

namespace tern::inline v5::detail {

struct NodeOrder {
  // Each the other way round; both empty where the nodes stand in the order of the waypoints.
  Indexed<WaypointIndex, Position> positions;
  Indexed<Position, WaypointIndex> waypoints;

  Position positionOf(WaypointIndex waypoint) const {
    return positions.empty() ? Position{numberOf(waypoint)} : positions[waypoint];
  }
  WaypointIndex waypointAt(Position position) const {
    return waypoints.empty() ? WaypointIndex{numberOf(position)} : waypoints[position];
  }
};

NodeOrder orderNodes(const VenueFacts& facts, const EdgeLists& edges);

}  // namespace tern::detail
