#include "TernCoreKit/wayfinding/detail/BranchProbe.hpp"

#include <algorithm>

namespace tern::inline v5::detail {

BranchProbe::BranchProbe(const GridGraph& graph, const std::optional<TernASNode>& destination,
                         int depth)
    : graph_(graph), depth_(depth) {
  if (!destination) return;
  destinationId_ = destination->nodeId();
  destinationMap_ = destination->mapId();
}

bool BranchProbe::isSideTrip(std::int64_t mapId, Position target) const {
  // 0 of a waypoint that nobody knows.
  const std::int64_t targetMap = target != noPosition ? graph_.mapId(target) : 0;
  return mapId == destinationMap_ && targetMap != mapId;
}

std::vector<std::size_t> BranchProbe::decisionsAlong(std::span<const PlacedNode> route) const {
  std::vector<std::size_t> decisions;
  for (std::size_t at = 0; at + 1 < route.size(); ++at) {
    const bool isArrival = at > 0 && route[at].mapId != route[at - 1].mapId;
    if (!isArrival && isDecision(route, at)) decisions.push_back(at);
  }
  return decisions;
}

bool BranchProbe::isDecision(std::span<const PlacedNode> route, std::size_t at) const {
  const PlacedNode& node = route[at];
  return std::ranges::any_of(node.neighbours, [&](const PlacedNode::Neighbour& next) {
    const bool isOnRoute =
        (at > 0 && next.nodeId == route[at - 1].nodeId) || next.nodeId == route[at + 1].nodeId;
    return !isOnRoute && !isSideTrip(node.mapId, next.position) &&
           goesOn(next.position, node.nodeId, 2);
  });
}

bool BranchProbe::goesOn(const PlacedNode& node, std::optional<std::int64_t> parentId,
                         int level) const {
  return std::ranges::any_of(node.neighbours, [&](const PlacedNode::Neighbour& next) {
    return leadsOn(node.nodeId, node.mapId, next, parentId, level);
  });
}

bool BranchProbe::goesOn(Position node, std::int64_t parentId, int level) const {
  if (node == noPosition) return false;
  return std::ranges::any_of(graph_.graph.linksOf(node), [&](const Link& link) {
    const std::int64_t id = link.target != noPosition ? graph_.nodeId(link.target) : 0;
    return leadsOn(graph_.nodeId(node), graph_.mapId(node), {id, link.target}, parentId, level);
  });
}

bool BranchProbe::leadsOn(std::int64_t nodeId, std::int64_t mapId,
                          const PlacedNode::Neighbour& next, std::optional<std::int64_t> parentId,
                          int level) const {
  if (parentId && next.nodeId == *parentId) return false;
  if (parentId && next.nodeId == destinationId_) return true;
  if (isSideTrip(mapId, next.position)) return false;
  return depth_ <= level || goesOn(next.position, nodeId, level + 1);
}

}  // namespace tern::detail
