// Finds the nearest waypoint at which one of the wanted destinations, amenities or path types is
// reached, on the map of the start or, by lifts and stairs, on another floor.
//
// "Near" is measured in straight lines, in map units of each floor; a change of floor counts
// nothing. Connectors are the path types placed on waypoints; one is taken only when the path
// type's `accessibility` is at most `accessible`, and no try enters a floor twice, so a search ends
// whatever the data says.
//
// Ownership: held by std::shared_ptr; holds the venue weakly, shares the records in its trees and
//   the delegate.
// Threads: one search at a time. The trees do not change after `initializeKDTree`.
// Fails: a search that finds nothing says why in `error`, which stays until the next failure or
//   `reset`; a target floor on which nothing is acceptable is no error.
//
//   auto nearest = TernNearestElement::init();
//   nearest->initializeKDTree(venue);
//   if (const auto found = nearest->getNearestElementFrom(here, 12, {cafe, bistro}, 100)) {
//     draw(found->waypoint, nearest->arrayOfPathTypeTaken());
//   }
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "TernCoreKit/model/records/TernError.hpp"
#include "TernCoreKit/platform/Export.hpp"
#include "TernCoreKit/service/coordinates/TernUtils.hpp"
#include "TernCoreKit/spatial/TernElement.hpp"
#include "TernCoreKit/spatial/TernNearestPoint.hpp"
#include "TernCoreKit/spatial/tree/KDTree.hpp"

namespace tern {

struct TernFloor;
struct TernMap;
struct TernVenueData;
struct TernWaypoint;

// Restricts which waypoints a search may answer with.
class TERN_API TernNearestElementDelegate {
 public:
  virtual ~TernNearestElementDelegate() = default;
  virtual bool isConditionPassedWithWaypoint(const std::shared_ptr<TernWaypoint>& waypoint) = 0;
};

struct TernNearestResult {
  std::shared_ptr<TernWaypoint> waypoint;
  // Map units: the straight lines from the start over the connectors to the waypoint.
  float totalDistance = 0;
};

class TERN_API TernNearestElement {
 public:
  using Tree = KDTree<TernNearestPoint>;
  // By the decimal text of the map's id.
  using Trees = std::map<std::string, Tree>;
  using Elements = std::vector<TernElement>;
  using Waypoints = std::vector<std::shared_ptr<TernWaypoint>>;
  // The waypoint and the element, or the error.
  using Completion = std::function<void(std::shared_ptr<TernWaypoint>, std::optional<TernElement>,
                                        std::optional<TernError>)>;

  // Without one every waypoint of a wanted element is acceptable.
  std::shared_ptr<TernNearestElementDelegate> delegate;

  static std::shared_ptr<TernNearestElement> init();
  // Builds a tree of each kind for each of the venue's maps, from the locations and waypoints that
  // its elements have now.
  void initializeKDTree(const std::shared_ptr<TernVenueData>& venue);

  // The nearest acceptable waypoint on the target map, reached through the first connector, nearest
  // to the start, that leads there. The kind of the first element chooses what is searched. An
  // accessibility of 1 and above admits connectors of up to 100, one below those of up to 0. A
  // target that is the start's own map is searched at once.
  std::optional<TernNearestResult> getNearestElementFrom(const std::shared_ptr<TernWaypoint>& from,
                                                         std::int64_t toMapId,
                                                         const Elements& elements,
                                                         std::int64_t accessibility);
  // The nearest acceptable waypoint to a point of the map, in map units, or else on the nearest
  // floor above or below that has one. The completion is called once, before the call returns, and
  // may be empty.
  void searchNearestElement(const TernElement& element, TernCoordinate at,
                            const std::shared_ptr<TernMap>& map, const Completion& completion);

  // Forgets the venue, the last search and its error; the trees stay.
  void reset();

  const Trees& treesDestination() const { return treesDestination_; }
  const Trees& treesAmenity() const { return treesAmenity_; }
  const Trees& treesPathType() const { return treesPathType_; }
  // Of the current search: the tree chosen, and those of the start's map.
  const std::optional<Tree>& tree() const { return tree_; }
  const std::optional<Tree>& treeDestination() const { return treeDestination_; }
  const std::optional<Tree>& treeAmenity() const { return treeAmenity_; }
  const std::optional<Tree>& treePathType() const { return treePathType_; }
  const std::optional<std::int64_t>& currentFloorLevel() const { return currentFloorLevel_; }
  const std::optional<TernNearestPoint>& userNode() const { return userNode_; }
  // False once the building has no further floor that way.
  bool isUpperFloorValid() const { return isUpperFloorValid_; }
  bool isLowerFloorValid() const { return isLowerFloorValid_; }
  std::shared_ptr<TernVenueData> activeVenue() const { return activeVenue_.lock(); }
  const std::shared_ptr<TernMap>& currentMap() const { return currentMap_; }
  const std::optional<TernError>& error() const { return error_; }
  void setError(std::optional<TernError> error) { error_ = std::move(error); }
  // The connectors that the last search took: where each is entered and where it is left, in order.
  const Waypoints& arrayOfPathTypeTaken() const { return arrayOfPathTypeTaken_; }
  // The highest accessibility of a connector that the current search takes.
  std::int64_t accessible() const { return accessible_; }

  // Held by a rebuild that replaces this object.
  std::recursive_mutex& mutex() const { return mutex_; }

 private:
  template <class Collection>
  void plant(Trees& trees, const Collection* collection) const;
  const Trees& treesOf(TernElement::Kind kind) const;

  // Each leaves an error when the search cannot start.
  bool canSearchFor(const Elements& elements);
  bool standsOn(std::shared_ptr<TernMap> map);
  void startAt(TernNearestPoint point, const Elements& elements, std::int64_t level);
  void fail(TernErrorType type, const char* message);

  bool isAcceptable(const TernNearestPoint& candidate, const TernNearestPoint& query) const;
  std::shared_ptr<TernWaypoint> nearestAcceptable(const TernNearestPoint& query) const;
  std::shared_ptr<TernWaypoint> searchFrom(const Elements& elements, TernCoordinate at,
                                           const std::shared_ptr<TernMap>& map);
  std::shared_ptr<TernWaypoint> walkFloors();
  std::shared_ptr<TernWaypoint> searchLevel(std::int64_t level, bool& isFloorValid);

  std::shared_ptr<TernWaypoint> reach(const TernVenueData& venue, const TernFloor& target);
  std::optional<TernNearestPoint> follow(const TernVenueData& venue, TernNearestPoint connector,
                                         const TernFloor& target);
  std::optional<TernNearestPoint> step(const TernNearestPoint& connector, const TernMap& from,
                                       const TernFloor& to);
  bool mayTake(const TernNearestPoint& connector) const;
  float lengthOfChain(const TernWaypoint* from, const TernWaypoint* found) const;

  Trees treesDestination_;
  Trees treesAmenity_;
  Trees treesPathType_;
  std::optional<Tree> tree_;
  std::optional<Tree> treeDestination_;
  std::optional<Tree> treeAmenity_;
  std::optional<Tree> treePathType_;
  std::optional<std::int64_t> currentFloorLevel_;
  std::optional<TernNearestPoint> userNode_;
  // Ids of the wanted elements, sorted; none stands for an absent one.
  std::vector<std::optional<std::int64_t>> wantedIds_;
  TernElement::Kind wantedKind_ = TernElement::Kind::other;
  bool isUpperFloorValid_ = true;
  bool isLowerFloorValid_ = true;
  std::weak_ptr<TernVenueData> activeVenue_;
  std::shared_ptr<TernMap> currentMap_;
  std::optional<TernError> error_;
  Waypoints arrayOfPathTypeTaken_;
  std::int64_t accessible_ = 0;
  mutable std::recursive_mutex mutex_;
};

}  // namespace tern
