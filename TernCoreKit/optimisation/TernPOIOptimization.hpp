#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "TernCoreKit/optimisation/TernTSP.hpp"
#include "TernCoreKit/optimisation/TernTourState.hpp"
#include "TernCoreKit/platform/Export.hpp"
#include "TernCoreKit/spatial/TernNearestElement.hpp"
#include "TernCoreKit/wayfinding/TernRouting.hpp"

namespace tern::inline v5 {

namespace detail {
class TourTables;
}  // namespace detail

struct TernDestination;
struct TernLocation;

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
/// time, also while a hub adds a building to it. A run takes the venue's `recordsMutex` for a
/// moment as it begins.
/// Fails: never; what cannot be reached is not in the answer, and a tour for which there is no
/// memory has no stops, which is logged.
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

  /// The venue; null when it is gone.
  std::shared_ptr<const TernRouting> activeVenue() const { return activeVenue_.lock(); }
  /// What is searched for the nearest stop; null when it is gone.
  std::shared_ptr<TernNearestElement> searchElement() const { return searchElement_.lock(); }
  /// Where the last run started; null without a run.
  const std::shared_ptr<TernWaypoint>& startWayPoint() const;
  /// Makes it where the steps start.
  void setStartWayPoint(std::shared_ptr<TernWaypoint> waypoint);
  /// The destinations of the last run in working order.
  const Destinations& destinations() const;
  /// Makes them those that the steps work on, each with the waypoints that it has now.
  void setDestinations(const Destinations& destinations);
  /// The accessibility level of every route.
  std::int64_t accessible() const;
  /// Makes it that of the steps.
  void setAccessible(std::int64_t accessible);
  /// What is known of each level, by the id of its map.
  const std::map<std::int64_t, TernTourLevel>& levelComputedDataDict() const;
  /// What is known of each destination, by its id.
  const std::map<std::int64_t, TernTourDestination>& intermediateStateOfDestination() const;
  /// The stops of the last run in visiting order, the start first.
  const Waypoints& finalOrderOfWaypoints() const;
  /// The waypoints at which the search may end; none means any.
  const Waypoints& searchElementConditionWaypoints() const;
  /// Makes them those at which the search may end.
  void setSearchElementConditionWaypoints(Waypoints waypoints);
  /// Routes by the ids of the waypoints that they join, in decimal, one after the other.
  const std::map<std::string, TernRoute>& dictOfTernPathPerFloor() const;
  /// Lengths between the stops of the level that was ordered last; -1 for what is not known.
  const TernTSP::Matrix& costToPathGraph() const;
  /// Length of the way along the last chain to each of its nodes, by the node's id.
  const std::map<std::int64_t, float>& intermediateDistanceFromStartNode() const;

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

  /// The steps of a run follow, over what the object holds; each goes on from the one before it,
  /// and does nothing without a start. This forgets the last run and admits routes of every level.
  void resetValues();
  /// Scores the levels on which the destinations are placed, and asks whether each can be reached.
  void createPriorityLevelScore();
  /// Settles each destination on a waypoint.
  void selectWaypointsOfDestinations();
  /// Brings the destinations into the order in which they are settled: those of greater score
  /// first.
  void rearrangeDestinations();
  /// Settles a destination as far as the scores do; on request it leaves the scores of the other
  /// levels. The location that was chosen; null without one and for what the start serves.
  std::shared_ptr<TernLocation> finalizeWaypointFor(const TernDestination& destination,
                                                    bool shouldAdjustScore);
  /// Settles a destination again, after scores have changed.
  void updateDecidedLocationForNewScore(const TernDestination& destination);
  /// Takes the destination out of the scores of the levels that are not among these maps.
  void adjustTheScore(const TernDestination& destination,
                      const std::vector<std::int64_t>& selectedLocation);
  /// Orders one level after the other.
  void getOptimalOrderOfDestinations();
  /// Puts the stops of one level in order, from `startPoint` on, and adds them to the final order.
  void getShortestDistanceandTour(std::int64_t mapId,
                                  const std::shared_ptr<TernWaypoint>& startPoint);
  /// Measures how far it is along a chain of waypoints to each node of its routes.
  void createPathandDoCorrectionInOrder(const Waypoints& chain);
  /// Fills the cells of the matrix over the chain that are not known yet; those of one row by the
  /// lengths along the chain too.
  void createGraph(const Waypoints& chain, std::size_t forIndex);
  /// The chain in the order of the shortest tour through the matrix; as it is where there is none.
  static Waypoints getOptimalPathWithTSPAlgo(const Waypoints& chain, const TernTSP::Matrix& graph);
  /// The destinations that own the waypoints, in their order.
  Destinations getDestinationOrderFor(const Waypoints& order) const;
  /// A route between each waypoint and the next.
  Legs generatePathPerFloorFor(const Waypoints& order);

  /// The route to whichever waypoint is cheapest to reach; empty without one.
  TernRoute wayfindWithinArray(const TernWaypoint& from, const Waypoints& to,
                               std::int64_t accessibility) const;

 private:
  TernPOIOptimization(std::weak_ptr<const TernRouting> activeVenue,
                      std::weak_ptr<TernNearestElement> nearestElement);

  // Gives the step what it works with; does nothing without a start. False when something is
  // missing for want of memory.
  template <class Step>
  bool run(Step step);

  const std::weak_ptr<const TernRouting> activeVenue_;
  const std::weak_ptr<TernNearestElement> searchElement_;
  std::unique_ptr<detail::TourTables> tables_;
};

}  // namespace tern
