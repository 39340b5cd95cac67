// Where a node reference reads and writes: the nodes of a grid, those of a route, or copies that
// stand alone.
//
// Ownership: shared by the references to its nodes. Threads: each source says.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <utility>
#include <vector>

#include "TernCoreKit/wayfinding/TernASEdge.hpp"
#include "TernCoreKit/wayfinding/TernNeighbor.hpp"
#include "TernCoreKit/wayfinding/detail/Index.hpp"

namespace tern::inline v5::detail {

// What a node is, whatever is searched.
struct NodeFacts {
  std::int64_t nodeId = 0;
  double x = 0;  // map units, as the waypoint has them
  double y = 0;
  float z = 0;  // map units
  std::int64_t mapId = 0;
};

// What a search knows of a node.
struct NodeProgress {
  bool visited = false;
  bool closed = false;
  float score = 0;
  Position parent = noPosition;
  std::int64_t usedEdgeTypeId = -1;
};

// Length of the way to a node, map units; none where no search came.
using Distance = std::optional<float>;

class NodeSource;

// A node of a source.
struct NodePlace {
  std::shared_ptr<const NodeSource> source;
  Position position;
};

class NodeSource {
 public:
  NodeSource() = default;
  virtual ~NodeSource() = default;
  NodeSource(const NodeSource&) = delete;
  NodeSource& operator=(const NodeSource&) = delete;

  // REQUIRES, of each: the position is one of this source.
  virtual NodeFacts facts(Position position) const = 0;
  virtual NodeProgress progress(Position position) const = 0;
  // Of each of the nodes; soonest for those that follow each other on their way.
  virtual std::vector<Distance> distances(std::span<const Position> positions) const = 0;
  // The node and all its predecessors, the first of the route last.
  virtual std::vector<Position> chainTo(Position position) const = 0;
  virtual void clearProgress(Position position) = 0;
  virtual std::vector<TernASEdge> edges(Position position) const = 0;
  // The mark of each edge; none at all when no edge is blocked.
  virtual std::vector<bool> blockedEdges(Position position) const = 0;
  virtual std::vector<TernNeighbor> neighbors(Position position) const = 0;
  // Ids of the nodes that the node has links to.
  virtual std::vector<std::int64_t> neighborIds(Position position) const = 0;

  // Marks the node's edges that join the given node; all of its edges without one.
  virtual void blockEdges(Position position, std::optional<std::int64_t> joining, bool block) = 0;
  // The mark of the first edge that joins the given node.
  virtual bool isEdgeBlocked(Position position, std::int64_t joining) const = 0;

  // Where a copy reads what never changes, which its own copies then read there too; none when the
  // node is no copy.
  virtual std::optional<NodePlace> copiedFrom(Position) const { return std::nullopt; }

  // The node itself, which several sources may show.
  virtual std::pair<const NodeSource*, Position> original(Position position) const {
    return {this, position};
  }
};

}  // namespace tern::detail
