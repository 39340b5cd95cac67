// What the ordering of destinations knows while it works: of each level (the map of a floor) what
// is to be visited there, of each destination where.
//
// Ownership: shares the records. Threads: one. Fails: never; what is not there is null.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <unordered_map>
#include <vector>

#include "TernCoreKit/model/records/TernDestination.hpp"
#include "TernCoreKit/model/records/TernWaypoint.hpp"

namespace tern::inline v5::detail {

using Destinations = std::vector<std::shared_ptr<TernDestination>>;
using Waypoints = std::vector<std::shared_ptr<TernWaypoint>>;

struct LevelRecord {
  // How many requested locations, later destinations, count it.
  std::int64_t score = 0;
  // Its waypoints have been put in order, or it has been dropped.
  bool isVisited = true;
  bool isReachable = false;
  // Waypoints that will be visited. A list that has been emptied is told from one that never was.
  std::optional<Waypoints> decidedWaypoints;
  // Candidates of destinations that are not settled on one waypoint.
  Waypoints tbdWaypoints;

  bool hasDecided() const { return decidedWaypoints && !decidedWaypoints->empty(); }
  void decide(std::shared_ptr<TernWaypoint> waypoint);
};

struct DestinationRecord {
  bool isReachable = false;
  // The level it is settled on.
  std::optional<std::int64_t> decidedMapid;
  // Or else the levels that are in question.
  std::vector<std::int64_t> tbdMapids;
};

class TourTables {
 public:
  // Map id to level, in the order in which levels are gone through.
  std::map<std::int64_t, LevelRecord> levelComputedDataDict;
  // By destination id.
  std::unordered_map<std::int64_t, DestinationRecord> intermediateStateOfDestination;
  std::shared_ptr<TernWaypoint> startWayPoint;
  Waypoints finalOrderOfWaypoints;

  const Destinations& destinations() const { return destinations_; }
  void arrange(Destinations destinations);

  std::shared_ptr<TernDestination> getDesinationById(std::int64_t id) const;
  // The first destination that has a waypoint of that id.
  std::shared_ptr<TernDestination> getbyWayPointId(std::int64_t id) const;
  bool isOwned(const TernWaypoint& waypoint, const TernDestination& by) const;

  std::int64_t getScore(std::int64_t mapId) const;
  bool isReachable(std::int64_t mapId) const;
  bool isAllVisited() const;

 private:
  Destinations destinations_;
  // Waypoint id to position in the list.
  std::unordered_map<std::int64_t, std::size_t> owners_;
};

std::shared_ptr<TernWaypoint> waypointOf(const TernDestination& destination, std::int64_t id);

}  // namespace tern::detail
