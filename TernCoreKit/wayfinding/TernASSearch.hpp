#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "TernCoreKit/platform/Export.hpp"
#include "TernCoreKit/wayfinding/TernASNode.hpp"
#include "TernCoreKit/wayfinding/TernPathPerFloor.hpp"

namespace tern::inline v5 {

class TernASGrid;
class TernMapCollection;
struct TernWaypoint;

namespace detail {
struct RouteRequest;
}  // namespace detail

/// Finds the cheapest route through a grid to a waypoint, or to whichever of several waypoints is
/// cheapest to reach.
///
/// Best first by accumulated cost. A link may be taken when its path type's accessibility is at
/// most the given level and it is not blocked. Of routes of equal cost the one found first stays.
/// Closed nodes are not opened again, so links of negative cost do not make a search run on.
///
/// Ownership: shares the grid and the maps.
/// Threads: any number of searches on one grid at once; one object is for one thread at a time, but
/// `route`, `routeToAny` and `routeToOneOf` of one are for any. The points of what `search` and
/// `searchInArray` find are the grid's own nodes, whose scores and parents the next search
/// overwrites, whoever makes it; the points of what those three find keep those of their own
/// search. Fails: no route is none; an absent grid and a route of one node are logged too.
///
///     TernASSearch search;
///     search.grid = venue.globalASGrid();
///     search.maps = venue.maps;
///     if (const auto route = search.search(12, 40, 100)) draw(*route);
class TERN_API TernASSearch {
 public:
  /// The graph to search.
  std::shared_ptr<TernASGrid> grid;
  /// The venue's maps, for their scales.
  std::shared_ptr<TernMapCollection> maps;
  /// A label for the host; the search does not read it.
  std::string TAG;

  /// The route from one waypoint to the other.
  std::optional<TernRoute> search(std::int64_t startId, std::int64_t endId,
                                  std::int64_t accessLevel);
  /// The route to the first of the given waypoints that the search reaches. A waypoint whose id is
  /// 0 always counts as one of them.
  std::optional<TernRoute> searchInArray(
      std::int64_t startId, const std::vector<std::shared_ptr<TernWaypoint>>& endWaypoints,
      std::int64_t accessLevel);
  /// The same route, of nodes that keep what its own search has found.
  std::optional<TernRoute> route(std::int64_t startId, std::int64_t endId,
                                 std::int64_t accessLevel) const;
  /// The same for the first of several waypoints, as `searchInArray`.
  std::optional<TernRoute> routeToAny(
      std::int64_t startId, const std::vector<std::shared_ptr<TernWaypoint>>& endWaypoints,
      std::int64_t accessLevel) const;
  /// The same, but nothing else counts as a goal: neither a waypoint whose id is 0 nor, in the
  /// place of one that the grid does not know, anything.
  std::optional<TernRoute> routeToOneOf(
      std::int64_t startId, const std::vector<std::shared_ptr<TernWaypoint>>& endWaypoints,
      std::int64_t accessLevel) const;
  /// The route that the last search's parent links give, cut where the map changes; it begins with
  /// `start`, also where the links begin with another node.
  std::optional<TernRoute> pathTo(const std::optional<TernASNode>& end,
                                  const std::optional<TernASNode>& start) const;
  /// Map units times the map's millimetres a unit; 0 for an unknown map.
  float convertIntoMMDistance(float distance, std::int64_t mapId) const;

  /// Which of two nodes leaves the open list first: -1 the first, whose score is less, 1 the
  /// second, 0 neither.
  static int compare(const TernASNode& a, const TernASNode& b);
  /// What the last search on the grid left on its open list, in the order of the heap.
  std::vector<TernASNode> openStartHeap() const;

 private:
  // Whose nodes a route's points are.
  enum class Nodes { ofGrid, ofRoute };

  TERN_INTERNAL std::optional<TernRoute> find(const detail::RouteRequest& request,
                                              Nodes nodes) const;
};

}  // namespace tern
