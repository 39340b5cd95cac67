// Finds out where a real side branch leaves a route: one that goes on for some links, or that comes
// to the destination.
//
// There is no memory of what has been visited; the depth alone ends the walk. Blocks, costs and
// accessibility do not count.
//
// Ownership: borrows the graph. Threads: as readers of the graph. Fails: never.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "TernCoreKit/wayfinding/TernASNode.hpp"
#include "TernCoreKit/wayfinding/detail/GridGraph.hpp"
#include "TernCoreKit/wayfinding/detail/PlacedNode.hpp"

namespace tern::inline v5::detail {

class BranchProbe {
 public:
  BranchProbe(const GridGraph& graph, const std::optional<TernASNode>& destination, int depth);

  // The numbers on the route of the nodes that a branch leaves.
  std::vector<std::size_t> decisionsAlong(std::span<const PlacedNode> route) const;
  // Whether a branch that comes to `node`, from a parent of that id, goes on from there.
  bool goesOn(const PlacedNode& node, std::optional<std::int64_t> parentId, int level) const;

 private:
  bool goesOn(Position node, std::int64_t parentId, int level) const;
  // Whether the branch goes on by way of that neighbour.
  bool leadsOn(std::int64_t nodeId, std::int64_t mapId, const PlacedNode::Neighbour& next,
               std::optional<std::int64_t> parentId, int level) const;
  bool isDecision(std::span<const PlacedNode> route, std::size_t at) const;
  // Whether a link leads off the destination's floor.
  bool isSideTrip(std::int64_t mapId, Position target) const;

  const GridGraph& graph_;
  const int depth_;
  // 0 without a destination.
  std::int64_t destinationId_ = 0;
  std::int64_t destinationMap_ = 0;
};

}  // namespace tern::detail
