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
#include "TernCoreKit/platform/Mutex.hpp"
#include "TernCoreKit/service/coordinates/TernUtils.hpp"
#include "TernCoreKit/spatial/TernElement.hpp"
#include "TernCoreKit/spatial/TernNearestPoint.hpp"
#include "TernCoreKit/spatial/tree/KDTree.hpp"

namespace tern::inline v5 {

struct TernMap;
struct TernVenueData;

/// Where a search starts, and what it looks for.
///
/// Ownership: a value that shares its records. Threads: as a standard container. Fails: never.
struct TernUserNode : TernNearestPoint {
  /// What is wanted.
  std::vector<TernElement> elements;
};

namespace detail {

class NearestIndex;

// What a search needs and leaves: see the accessors of TernNearestElement.
struct NearestState {
  using Tree = KDTree<TernNearestPoint>;

  std::optional<Tree> tree;
  std::optional<Tree> treeDestination;
  std::optional<Tree> treeAmenity;
  std::optional<Tree> treePathType;
  std::optional<std::int64_t> currentFloorLevel;
  std::optional<TernUserNode> userNode;
  bool isUpperFloorValid = true;
  bool isLowerFloorValid = true;
  std::shared_ptr<TernMap> currentMap;
  std::optional<TernError> error;
  std::vector<std::shared_ptr<TernWaypoint>> arrayOfPathTypeTaken;
  std::int64_t accessible = 0;
};

}  // namespace detail

/// Restricts which waypoints a search may answer with.
class TERN_API TernNearestElementDelegate {
 public:
  virtual ~TernNearestElementDelegate() = default;
  /// Whether the search may answer with the waypoint. Called on the thread that searches.
  virtual bool isConditionPassedWithWaypoint(const std::shared_ptr<TernWaypoint>& waypoint) = 0;
};

/// What `getNearestElementFrom` found.
struct TernNearestResult {
  /// Never null.
  std::shared_ptr<TernWaypoint> waypoint;
  /// Map units: the straight lines from the start over the connectors to the waypoint.
  float totalDistance = 0;
};

/// Finds the nearest waypoint at which one of the wanted destinations, amenities or path types is
/// reached, on the map of the start or, by lifts and stairs, on another floor.
///
/// "Near" is measured in straight lines, in map units of each floor; a change of floor counts
/// nothing. Connectors are the path types placed on waypoints; one is taken only when the path
/// type's `accessibility` is at most `accessible`, and no try enters a level twice, so a search
/// ends whatever the data says. Of several floors of a level those of the start's own building are
/// tried first; a floor without a level lies at 0. Where no connector of the start's map leads to
/// the floor, a venue that routes (TernRouting) is asked for the way to whichever acceptable
/// waypoint of it is cheapest to reach.
///
/// Ownership: held by std::shared_ptr; holds the venue weakly, shares the records in its trees and
///   the delegate.
/// Threads: any number may search one object, while a hub adds a building to its venue, too: the
///   trees do not change after `initializeKDTree`, and each search is a question of its own until
///   it ends; then its fields become those of the object. The accessors show the search that ended
///   last, and the delegate is that of every search: whoever reads those or sets it while others
///   search takes an object of its own, with `another`. A search that meets a map that is not among
///   its trees waits for the venue's `recordsMutex`.
/// Fails: a search that finds nothing says why in `error`, which stays until the next failure or
///   `reset`; a target floor on which nothing is acceptable is no error.
///
///     auto nearest = venue->nearestElement()->another();
///     if (const auto found = nearest->getNearestElementFrom(here, 12, {cafe, bistro}, 100)) {
///       draw(found->waypoint, nearest->arrayOfPathTypeTaken());
///     }
class TERN_API TernNearestElement {
 public:
  /// The waypoints of one map for elements of one kind.
  using Tree = KDTree<TernNearestPoint>;
  /// By the decimal text of the map's id.
  using Trees = std::map<std::string, Tree>;
  /// What is wanted; the kind of the first counts.
  using Elements = std::vector<TernElement>;
  /// Waypoints of the venue.
  using Waypoints = std::vector<std::shared_ptr<TernWaypoint>>;
  /// The waypoint and the element, or the error.
  using Completion = std::function<void(std::shared_ptr<TernWaypoint>, std::optional<TernElement>,
                                        std::optional<TernError>)>;

  /// Without one every waypoint of a wanted element is acceptable.
  std::shared_ptr<TernNearestElementDelegate> delegate;

  /// Without trees and without a venue.
  TernNearestElement();

  /// The same as the constructor, to be shared.
  static std::shared_ptr<TernNearestElement> init();
  /// One that has searched nothing yet, over the same trees and the same venue, without a delegate.
  std::shared_ptr<TernNearestElement> another() const;
  /// Builds a tree of each kind for each of the venue's maps, from the locations and waypoints that
  /// its elements have now. It takes the venue's `recordsMutex` meanwhile.
  void initializeKDTree(const std::shared_ptr<TernVenueData>& venue);

  /// The nearest acceptable waypoint on the target map, reached through the first connector,
  /// nearest to the start, that leads there. The kind of the first element chooses what is
  /// searched. An accessibility of 1 and above admits connectors of up to 100, one below those of
  /// up to 0; a route takes links of at most the accessibility itself. A target that is the start's
  /// own map is searched at once.
  std::optional<TernNearestResult> getNearestElementFrom(const std::shared_ptr<TernWaypoint>& from,
                                                         std::int64_t toMapId,
                                                         const Elements& elements,
                                                         std::int64_t accessibility);
  /// The nearest acceptable waypoint to a point of the map, in map units, or else on the nearest
  /// floor above or below that has one, and last on one of the same level in another building. A
  /// route begins at the map's waypoint closest to the point and takes links of up to 100. The
  /// completion is called once, before the call returns, and may be empty; it may search.
  void searchNearestElement(const TernElement& element, TernCoordinate at,
                            const std::shared_ptr<TernMap>& map, const Completion& completion);

  /// Forgets the venue, the last search and its error; the trees stay.
  void reset();

  /// The trees of the destinations, by map.
  const Trees& treesDestination() const;
  /// The trees of the amenities, by map.
  const Trees& treesAmenity() const;
  /// The trees of the path types, by map.
  const Trees& treesPathType() const;
  /// The tree that the last search chose.
  const std::optional<Tree>& tree() const { return state_.tree; }
  /// The destinations of the map that the last search started on.
  const std::optional<Tree>& treeDestination() const { return state_.treeDestination; }
  /// The amenities of the map that the last search started on.
  const std::optional<Tree>& treeAmenity() const { return state_.treeAmenity; }
  /// The path types of the map that the last search started on.
  const std::optional<Tree>& treePathType() const { return state_.treePathType; }
  /// The level that the last search started on.
  const std::optional<std::int64_t>& currentFloorLevel() const { return state_.currentFloorLevel; }
  /// Where the last search started, and what it looked for.
  const std::optional<TernUserNode>& userNode() const { return state_.userNode; }
  /// False once the building has no further floor above.
  bool isUpperFloorValid() const { return state_.isUpperFloorValid; }
  /// False once the building has no further floor below.
  bool isLowerFloorValid() const { return state_.isLowerFloorValid; }
  /// Null when it is gone.
  std::shared_ptr<TernVenueData> activeVenue() const {
    const MutexLock lock(stateMutex_);
    return activeVenue_.lock();
  }
  /// The map that the last search started on.
  const std::shared_ptr<TernMap>& currentMap() const { return state_.currentMap; }
  /// The last failure.
  const std::optional<TernError>& error() const { return state_.error; }
  /// Puts an error in the place of the last failure; absent for none.
  void setError(std::optional<TernError> error) {
    const MutexLock lock(stateMutex_);
    state_.error = std::move(error);
  }
  /// The connectors that the last search took: where each is entered and where it is left, in
  /// order. Of a route these are the ends of each link from one map to another.
  const Waypoints& arrayOfPathTypeTaken() const { return state_.arrayOfPathTypeTaken; }
  /// The highest accessibility of a connector that the last search takes.
  std::int64_t accessible() const { return state_.accessible; }

  /// Held by a rebuild that replaces this object.
  std::recursive_mutex& mutex() const { return mutex_; }

 private:
  template <class Ask>
  auto ask(Ask ask);

  mutable std::recursive_mutex mutex_;
  mutable Mutex stateMutex_;
  std::weak_ptr<TernVenueData> activeVenue_ TERN_GUARDED_BY(stateMutex_);
  // Searches read and write these under stateMutex_. The accessors hand out references, so whoever
  // calls them sees to it that nobody searches.
  std::shared_ptr<const detail::NearestIndex> index_;  // never null
  detail::NearestState state_;
};

}  // namespace tern
