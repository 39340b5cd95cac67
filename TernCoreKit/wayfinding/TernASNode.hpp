#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include "TernCoreKit/platform/Export.hpp"
#include "TernCoreKit/wayfinding/TernASEdge.hpp"
#include "TernCoreKit/wayfinding/TernNeighbor.hpp"

namespace tern::inline v5 {

namespace detail {
class NodeSource;
class RouteMaker;
enum class Position : std::uint32_t;
}  // namespace detail

/// One waypoint in the graph, with what a search knows of it.
///
/// A TernASNode refers to a node; copying one refers to the same node. The nodes of a grid show
/// what the last search on it has written, through every reference, until the next search is over.
/// The nodes of a route of its own (see TernASSearch) show what the route's search has written, and
/// are the grid's in all else. `copyWithZone` gives a node that nothing changes.
///
/// Ownership: shares the graph that the node is part of, which lives as long as a reference to it.
/// Threads: any number may read nodes, block edges and search at once; while others search the
/// grid, the last search that its nodes show may be anybody's. `reset` of a node that is not the
/// grid's, and blocks of a copy, are for one thread at a time. Fails: never; what a record leaves
/// absent reads as 0.
///
///     for (const TernASNode& node : route.front().points) draw(node.x(), node.y());
class TERN_API TernASNode {
 public:
  /// A node of its own, outside any grid. `x` and `y` in map units, `z` a height in map units.
  static TernASNode initASNode(std::int64_t nodeId, double x, double y, float z, std::int64_t mapId,
                               std::vector<TernASEdge> edges, std::vector<TernNeighbor> neighbors);

  /// The waypoint's id.
  std::int64_t nodeId() const;
  /// As the waypoint has it, in map units; longitude in degrees in a grid of several venues.
  double x() const;
  /// As the waypoint has it, in map units; latitude in degrees in a grid of several venues.
  double y() const;
  /// Height of the waypoint's floor, map units.
  float z() const;
  /// Id of the waypoint's map.
  std::int64_t mapId() const;

  /// Pictures of the node's edges, in their order, as the grid was built; the blocks are those of
  /// the moment.
  std::vector<TernASEdge> edges() const;
  /// Pictures of the node's links, in their order, as the grid was built.
  std::vector<TernNeighbor> neighbors() const;

  /// Whether the search has given the node a score.
  bool visited() const;
  /// Whether the search has expanded the node.
  bool closed() const;
  /// The total score.
  float f() const;
  /// The score of the path up to here.
  float g() const;
  /// The estimate of the rest; always 0.
  float h() const;
  /// Length of the route from the search's start, map units; none at the start and where the search
  /// did not come.
  std::optional<float> distance() const;
  /// The node before this one on the best route found so far.
  std::optional<TernASNode> parent() const;
  /// The path type by which the search came here; -1 where it did not.
  std::int64_t usedEdgeTypeId() const;

  /// Forgets what the last search knows of the node.
  void reset();

  /// A copy with copies of all its predecessors.
  TernASNode copyWithZone() const;
  /// Copies of the given nodes that have no predecessors.
  static std::vector<TernASNode> copiesWithoutParents(const std::vector<TernASNode>& nodes);

  /// Whether both refer to the same node; of a route's node that is the grid's.
  friend TERN_API bool operator==(const TernASNode& a, const TernASNode& b);

 private:
  friend class TernASGrid;
  friend class TernASSearch;
  friend class detail::RouteMaker;
  TernASNode(std::shared_ptr<detail::NodeSource> source, detail::Position position)
      : source_(std::move(source)), position_(position) {}

  std::shared_ptr<detail::NodeSource> source_;
  detail::Position position_;
};

}  // namespace tern
