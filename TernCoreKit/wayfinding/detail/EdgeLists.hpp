// Which paths touch which waypoint, and how many of them may become links.
//
// Threads: any; values in, values out. Fails: never; what is left out is logged.
#pragma once

#include <span>
#include <vector>

#include "TernCoreKit/wayfinding/detail/Index.hpp"
#include "TernCoreKit/wayfinding/detail/VenueFacts.hpp"

namespace tern::inline v5::detail {

// A path of n waypoints makes n * (n - 1) links, and every further waypoint of the same id makes
// its own: what keeps all of them linear in what was given.
struct LinkBounds {
  std::vector<PathIndex> unlinked;  // paths that get no links; ascending
  // Waypoints that have the edges of an earlier one of their id; ascending.
  std::vector<WaypointIndex> repeats;

  bool isLinked(PathIndex path) const;
};

LinkBounds boundLinks(const VenueFacts& facts, const TernASGrid::Paths& records);

// The paths that touch each waypoint, one waypoint's behind the other's.
struct EdgeLists {
  Indexed<WaypointIndex, EdgeIndex> first;  // one more than there are waypoints
  Indexed<EdgeIndex, PathIndex> paths;

  EdgeIndex endOf(WaypointIndex waypoint) const {
    return first[WaypointIndex{numberOf(waypoint) + 1}];
  }
  std::span<const PathIndex> of(WaypointIndex waypoint) const {
    const std::uint32_t begin = numberOf(first[waypoint]);
    return {paths.data() + begin, numberOf(endOf(waypoint)) - begin};
  }
};

EdgeLists listEdges(const VenueFacts& facts, const LinkBounds& bounds);

}  // namespace tern::detail
