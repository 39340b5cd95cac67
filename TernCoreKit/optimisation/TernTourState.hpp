#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include "TernCoreKit/model/records/TernWaypoint.hpp"
#include "TernCoreKit/platform/Export.hpp"

namespace tern::inline v5 {

/// What the ordering of destinations knows of a level: the map of a floor.
///
/// Ownership: shares the waypoints. Threads: as a standard container. Fails: never.
struct TERN_API TernTourLevel {
  /// How many requested locations, later destinations, count it.
  std::int64_t score = 0;
  /// Whether its waypoints have been put in order, or it has been dropped; absent of a level that
  /// came in only when a destination was settled on it. Such a level is visited when the search
  /// chooses it, but nothing waits for it.
  std::optional<bool> isVisited;
  /// Whether the search has found the first destination placed on it.
  bool isReachable = false;
  /// Waypoints that will be visited. A list that has been emptied is told from one that never was.
  std::optional<std::vector<std::shared_ptr<TernWaypoint>>> decidedWaypoints;
  /// Candidates of destinations that are not settled on one waypoint.
  std::vector<std::shared_ptr<TernWaypoint>> TBDwaypoints;

  /// Whether a waypoint of it will be visited.
  bool hasDecided() const { return decidedWaypoints && !decidedWaypoints->empty(); }
  /// Adds a waypoint that will be visited.
  void decide(std::shared_ptr<TernWaypoint> waypoint);
};

/// What the ordering of destinations knows of one of them.
///
/// Ownership: a value. Threads: as a standard container. Fails: never.
struct TernTourDestination {
  /// Whether one of its locations lies on a reachable level.
  bool isReachable = false;
  /// The level that it is settled on.
  std::optional<std::int64_t> decidedMapid;
  /// Or else the levels that are in question.
  std::vector<std::int64_t> TBDMapids;
};

}  // namespace tern
