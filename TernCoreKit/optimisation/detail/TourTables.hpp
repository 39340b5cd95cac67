// What the ordering of destinations knows while it works: of each level (the map of a floor) what
// is to be visited there, of each destination where.
//
// Ownership: shares the records. Threads: one. Fails: never; what is not there is null.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <unordered_map>
#include <vector>

#include "TernCoreKit/model/records/TernDestination.hpp"
#include "TernCoreKit/model/records/TernWaypoint.hpp"
#include "TernCoreKit/optimisation/TernTSP.hpp"
#include "TernCoreKit/optimisation/TernTourState.hpp"
#include "TernCoreKit/optimisation/detail/LegCache.hpp"

namespace tern::inline v5::detail {

using Destinations = std::vector<std::shared_ptr<TernDestination>>;
using Waypoints = std::vector<std::shared_ptr<TernWaypoint>>;

class TourTables {
 public:
  // Map id to level, in the order in which levels are gone through.
  std::map<std::int64_t, TernTourLevel> levelComputedDataDict;
  // By destination id.
  std::map<std::int64_t, TernTourDestination> intermediateStateOfDestination;
  std::shared_ptr<TernWaypoint> startWayPoint;
  Waypoints finalOrderOfWaypoints;
  // The waypoints at which a search may end; none means any.
  Waypoints searchElementConditionWaypoints;
  LegCache dictOfTernPathPerFloor;
  std::int64_t accessible = 100;
  TernTSP::Matrix costToPathGraph;
  // Node id to the length of the way there along the chain, from its head.
  std::map<std::int64_t, float> intermediateDistanceFromStartNode;

  const Destinations& destinations() const { return destinations_; }
  // The waypoints of a destination count that it has when it first comes in: a load may give it
  // others meanwhile. REQUIRES, for one that comes in: nobody changes it.
  void arrange(Destinations destinations);
  const Waypoints& waypointsOf(const TernDestination& destination) const;
  // Null without one.
  std::shared_ptr<TernWaypoint> waypointOf(const TernDestination& destination,
                                           std::int64_t id) const;

  std::shared_ptr<TernDestination> getDesinationById(std::int64_t id) const;
  // The first destination that has a waypoint of that id.
  std::shared_ptr<TernDestination> getbyWayPointId(std::int64_t id) const;
  bool isOwned(const TernWaypoint& waypoint, const TernDestination& by) const;

  std::int64_t getScore(std::int64_t mapId) const;
  bool isReachable(std::int64_t mapId) const;
  bool isAllVisited() const;

 private:
  Destinations destinations_;
  std::unordered_map<const TernDestination*, Waypoints> waypoints_;
  // Waypoint id to position in the list.
  std::unordered_map<std::int64_t, std::size_t> owners_;
};

// The waypoint of that id; null without one.
std::shared_ptr<TernWaypoint> waypointAmong(const Waypoints& waypoints, std::int64_t id);

}  // namespace tern::detail
