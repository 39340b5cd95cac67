// One run of the ordering of destinations: scores the levels, has each destination settled on a
// waypoint, and puts levels and waypoints in order.
//
// Ownership: borrows everything that it is made of. Threads: one. Fails: where memory runs out, by
// throwing, or by `hasRunOut` where the search or the solver has caught it.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include "TernCoreKit/optimisation/detail/TourTables.hpp"
#include "TernCoreKit/spatial/TernNearestElement.hpp"
#include "TernCoreKit/wayfinding/TernRouting.hpp"

namespace tern::inline v5::detail {

// To whichever waypoint is cheapest to reach.
TernRoute routeWithinArray(const TernRouting& venue, const TernWaypoint& from, const Waypoints& to,
                           std::int64_t accessibility);

class OrderingRun {
 public:
  // Venue and search may be null: then there are no routes, or nothing is reachable. The tables
  // must have a start and destinations.
  OrderingRun(const TernRouting* venue, TernNearestElement* search, TourTables& tables)
      : venue_(venue), search_(search), tables_(tables) {}

  void createPriorityLevelScore();
  void getOptimalOrderOfDestinations();
  void getShortestDistanceandTour(std::int64_t mapId, std::shared_ptr<TernWaypoint> start);
  Destinations getDestinationOrderFor(const Waypoints& order) const;
  std::vector<TernRoute> generatePathPerFloorFor(const Waypoints& order);

  // Whether something is missing for want of memory.
  bool hasRunOut() const { return hasRunOut_; }

 private:
  // The level to go on with, and where on it; the waypoint is null when the search found none.
  struct NextLevel {
    std::int64_t mapId;
    std::shared_ptr<TernWaypoint> waypoint;
  };

  std::optional<TernNearestResult> findNearest(const std::shared_ptr<TernWaypoint>& from,
                                               std::int64_t mapId,
                                               const TernNearestElement::Elements& elements);
  std::optional<NextLevel> chooseNextLevel();
  TernNearestElement::Elements targetsOf(const TernTourLevel& level) const;
  void settleByArrival(const NextLevel& arrival);
  Waypoints chainFrom(std::shared_ptr<TernWaypoint> start, Waypoints stops);

  const TernRouting* const venue_;
  TernNearestElement* const search_;
  TourTables& tables_;
  bool hasRunOut_ = false;
};

// The waypoints of the chain in the order that the solver has found; as they are where it has found
// none.
Waypoints inOrder(const Waypoints& chain, const TernTSP::Result& result);

}  // namespace tern::detail
