#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

#include "TernCoreKit/platform/Export.hpp"
#include "TernCoreKit/spatial/TernNearestElement.hpp"
#include "TernCoreKit/wayfinding/TernRouting.hpp"

namespace tern::inline v5 {

namespace detail {
class TourTables;
}  // namespace detail

struct TernDestination;

/// Plans a visit to several destinations: which waypoint of each to go to, in which order the
/// levels (the floors' maps) are visited, and in which order the waypoints on each.
///
/// First each level is scored by how many of the destinations it holds; then each destination is
/// settled on one waypoint; then, from the start's level on, the stops of a level are put in order
/// and the next level is the one whose nearest stop lies nearest to the last, by the straight-line
/// measure of TernNearestElement. The stops of a level are ordered exactly, by lengths measured
/// along a chain from each to the nearest of the rest; a level of more than `TernTSP::mostStops`
/// stops, the one it starts at included, keeps that chain as its order.
///
/// A destination that no connector leads to is left out. A level to which the search finds no way
/// counts as nearest and starts at its first stop; one at a distance that is no finite number is
/// never chosen, and when none can be chosen the rest are dropped.
///
/// Ownership: holds the venue and the search weakly; shares records. It must be held by a
/// std::shared_ptr. It asks `another` of the search and is the delegate of that one only.
/// Threads: one run at a time on one object; any number of objects may run over one venue at a
/// time. Fails: never; what cannot be reached is not in the answer, and a tour for which there is
/// no memory has no stops, which is logged.
///
///     auto tour = TernPOIOptimization::initWithActiveVenue(venue, venue->nearestElement());
///     tour->wayfindToMultipleDestinations({cafe, bakery}, here, 100,
///                                         [](auto legs, auto order) { ... });
class TERN_API TernPOIOptimization : public TernNearestElementDelegate,
                                     public std::enable_shared_from_this<TernPOIOptimization> {
 public:
  /// Places to visit.
  using Destinations = std::vector<std::shared_ptr<TernDestination>>;
  /// Stops.
  using Waypoints = std::vector<std::shared_ptr<TernWaypoint>>;
  /// A route for each stop from the one before it, empty without one.
  using Legs = std::vector<TernRoute>;
  /// Takes the routes and the destinations in visiting order, one for each of its stops.
  using Completion = std::function<void(Legs, Destinations)>;

  /// Plans in that venue, by that search; both may be gone, and then nothing is reached.
  static std::shared_ptr<TernPOIOptimization> initWithActiveVenue(
      std::weak_ptr<const TernRouting> activeVenue,
      std::weak_ptr<TernNearestElement> nearestElement);
  ~TernPOIOptimization() override;

  /// Of a destination that is listed twice the first counts. The completion is called once, before
  /// the call returns, and may be empty. The routes are copies that later searches do not change.
  void wayfindToMultipleDestinations(const Destinations& destinations,
                                     const std::shared_ptr<TernWaypoint>& fromStartPoint,
                                     std::int64_t accessibility, const Completion& completion);

  /// Whether the search may end there: at any waypoint unless the run has named some.
  bool isConditionPassedWithWaypoint(const std::shared_ptr<TernWaypoint>& waypoint) override;

  /// The destination of that id in the last run; null without one.
  std::shared_ptr<TernDestination> getDesinationById(std::int64_t id) const;
  /// The first destination of the last run that has a waypoint of that id; null without one.
  std::shared_ptr<TernDestination> getbyWayPointId(std::int64_t id) const;
  /// The waypoint of that id among the destination's; null without one.
  static std::shared_ptr<TernWaypoint> getWayPointById(std::int64_t id,
                                                       const TernDestination& forDestination);
  /// How many destinations of the last run count the map's level; 0 without a run.
  std::int64_t getScore(std::int64_t mapId) const;
  /// Whether the last run's search found the first destination placed on the map's level.
  bool isReachable(std::int64_t mapId) const;
  /// Whether the last run has settled every level.
  bool isAllVisited() const;
  /// The stops of the last run in visiting order, the start first.
  const Waypoints& finalOrderOfWaypoints() const;

  /// The route to whichever waypoint is cheapest to reach; empty without one.
  TernRoute wayfindWithinArray(const TernWaypoint& from, const Waypoints& to,
                               std::int64_t accessibility) const;

 private:
  TernPOIOptimization(std::weak_ptr<const TernRouting> activeVenue,
                      std::weak_ptr<TernNearestElement> nearestElement);

  // False when something is missing for want of memory.
  TERN_INTERNAL bool planTour(const Destinations& destinations,
                              const std::shared_ptr<TernWaypoint>& fromStartPoint,
                              std::int64_t accessibility, Legs& legs, Destinations& order);
  TERN_INTERNAL void forgetTour();

  const std::weak_ptr<const TernRouting> activeVenue_;
  const std::weak_ptr<TernNearestElement> searchElement_;
  Waypoints searchElementConditionWaypoints_;
  std::unique_ptr<detail::TourTables> tables_;
};

}  // namespace tern
