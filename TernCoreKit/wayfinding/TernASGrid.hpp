#pragma once

#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <span>
#include <vector>

#include "TernCoreKit/platform/Export.hpp"
#include "TernCoreKit/wayfinding/TernASEdge.hpp"
#include "TernCoreKit/wayfinding/TernASNode.hpp"
#include "TernCoreKit/wayfinding/TernNeighbor.hpp"
#include "TernCoreKit/wayfinding/TernPoint.hpp"

namespace tern::inline v5 {

struct TernBuilding;
struct TernFloor;
struct TernMap;
struct TernPath;
struct TernPathType;
struct TernWaypoint;

namespace detail {
class GridNodes;
struct PlacedNode;
}  // namespace detail

/// The navigation graph of one venue, or of several joined ones: a node for every waypoint, an edge
/// for every path that touches it, and links to its neighbours.
///
/// Path type 1 is the only one that costs its length times its weight; any other costs its weight a
/// link. A change of height multiplies a link's cost by 1 + height / (vertical weight + 1), where a
/// level is `verticalScale` map units high. A level link is multiplied by what the neighbour's
/// floor's preference says. One-way paths are one-way only where they change height. What is
/// missing never fails: an unknown path type costs nothing, an unknown waypoint is a link that
/// leads nowhere.
///
/// All that the grid, its nodes, edges and links say is settled when it is built; records that
/// change later change nothing in it. Only blocks and the scores of the last search do.
///
/// Building takes time and memory linear in the waypoints and the ends of all paths. A path that
/// joins so many waypoints that its links alone would break that bound is logged and gets no links;
/// waypoints that repeat an id so often that their copies of its edges would are logged and get no
/// edges.
///
/// Ownership: shares the records and does not change them. Nodes handed out keep the graph alive.
/// Threads: any number may search one grid, look things up and set blocks at the same time. A
/// search sees the blocks as they are when it begins, each whole or not at all. `mutex` is there
/// for those who replace a grid. Fails: never.
///
///     auto grid = TernASGrid::initASGrid(waypoints, paths, pathTypes, maps, buildings, false);
///     grid->shouldBlockExitFromNode(*grid->getNodeById(12), true);
class TERN_API TernASGrid {
 public:
  /// Nodes as records.
  using Waypoints = std::vector<std::shared_ptr<TernWaypoint>>;
  /// Edges as records.
  using Paths = std::vector<std::shared_ptr<TernPath>>;
  /// Kinds of edge.
  using PathTypes = std::vector<std::shared_ptr<TernPathType>>;
  /// Where the nodes lie.
  using Maps = std::vector<std::shared_ptr<TernMap>>;
  /// Where the floors of the maps are found.
  using Buildings = std::vector<std::shared_ptr<TernBuilding>>;

  /// Builds the graph. For several venues costs are measured in metres of the spherical Mercator
  /// projection and a waypoint whose external id ends in ":" and a waypoint's id is joined to that
  /// one.
  static std::shared_ptr<TernASGrid> initASGrid(Waypoints waypointsIn, Paths pathsIn,
                                                PathTypes pathTypesIn, Maps mapFullsIn,
                                                Buildings buildings, bool isForMultiVenue);
  ~TernASGrid();
  TernASGrid(const TernASGrid&) = delete;
  TernASGrid& operator=(const TernASGrid&) = delete;

  /// Whether it was built for several venues.
  bool isMultiVenueLoaded() const;
  /// Height of one level, map units.
  static constexpr int verticalScale = 100;

  /// The waypoints that it was built of, without nulls.
  const Waypoints& waypoints() const;
  /// The paths that it was built of, without nulls.
  const Paths& paths() const;
  /// The path types that it was built of, without nulls.
  const PathTypes& pathTypes() const;
  /// The maps that it was built of, without nulls.
  const Maps& mapFulls() const;
  /// The buildings that it was built of, without nulls.
  const Buildings& buildings() const;
  /// Always empty: floors are found through the buildings.
  const std::vector<std::shared_ptr<TernFloor>>& floors() const { return floors_; }
  /// Always empty: edges are found through their nodes.
  const std::vector<TernASEdge>& edges() const { return edges_; }
  /// A new list of all nodes, in the order of `waypoints`.
  std::vector<TernASNode> nodes() const;
  /// How many nodes there are.
  std::size_t nodeCount() const;
  /// How many links all nodes have together.
  std::size_t linkCount() const;

  /// The first waypoint of that id in list order; null without one.
  std::shared_ptr<TernWaypoint> getWPById(std::int64_t id) const;
  /// Every path that names the waypoint, in list order.
  Paths getPathsWithWaypoint(std::int64_t id) const;
  /// The first path type of that id in list order; null without one.
  std::shared_ptr<TernPathType> getPathTypeById(std::int64_t id) const;
  /// The first floor that shows the map; null without one.
  std::shared_ptr<TernFloor> getFloorByMapId(std::int64_t mapId) const;
  /// The first node of that id; none without one.
  std::optional<TernASNode> getNodeById(std::int64_t id) const;
  /// The same as `getNodeById`.
  std::optional<TernASNode> getNeighborNodeObject(std::int64_t id) const { return getNodeById(id); }
  /// The nodes of the given waypoints, in the order of `waypoints`.
  std::vector<TernASNode> getNodesForIds(const Waypoints& items) const;

  /// The straight line between two points.
  static float heuristic(const TernPoint& a, const TernPoint& b);
  /// Height of a map, map units.
  float getMapZValue(std::int64_t mapId) const;
  /// What the preference of the map's floor makes of level links that lead there.
  int getFloorPreferenceMultiplier(std::int64_t mapId) const;

  /// The edges of a waypoint, made again of what the records said.
  std::vector<TernASEdge> generateEdges(std::int64_t waypointId) const;
  /// The edge that joins the exits of two venues, made again.
  TernASEdge generateVirtualEdges(std::int64_t a, std::int64_t b) const;
  /// The links that a waypoint has over the edges, made again of what the records said.
  std::vector<TernNeighbor> generateNeighbors(std::int64_t waypointId,
                                              const std::vector<TernASEdge>& edges) const;

  /// Forgets the last search; blocks stay.
  void reset();
  /// Closes, or opens, the way from a to b, but not that from b to a.
  void shouldBlockEdgeBetweenNode(const TernASNode& a, const TernASNode& b, bool block);
  /// The mark of the first edge of a that joins b.
  bool isEdgeBlockedBetweenNode(const TernASNode& a, const TernASNode& b) const;
  /// Closes, or opens, the ways into n from the nodes that n itself has links to.
  void shouldBlockEntryToNode(const TernASNode& n, bool block);
  /// Closes, or opens, every way out of n.
  void shouldBlockExitFromNode(const TernASNode& n, bool block);

  /// Held while the venue replaces this grid.
  std::recursive_mutex& mutex() { return mutex_; }

 private:
  friend class TernASAlternativePath;
  friend class TernASSearch;
  friend class TernWalks;
  TERN_INTERNAL explicit TernASGrid(std::shared_ptr<detail::GridNodes> nodes);
  TERN_INTERNAL std::vector<TernASNode> nodesAt(std::span<const detail::Position> positions) const;
  TERN_INTERNAL detail::PlacedNode placed(const TernASNode& n) const;

  const std::shared_ptr<detail::GridNodes> nodes_;
  const std::vector<std::shared_ptr<TernFloor>> floors_;
  const std::vector<TernASEdge> edges_;
  std::recursive_mutex mutex_;
};

}  // namespace tern
