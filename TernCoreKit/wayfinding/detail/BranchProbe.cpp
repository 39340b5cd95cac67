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

std::span<const Link> BranchProbe::linksOf(Position node) const {
  return node != noPosition ? graph_.graph.linksOf(node) : std::span<const Link>();
}

// 0 of a waypoint that nobody knows.
std::int64_t BranchProbe::mapOf(Position node) const {
  return node != noPosition ? graph_.mapId(node) : 0;
}

bool BranchProbe::isSideTrip(std::int64_t mapId, Position target) const {
  return mapId == destinationMap_ && mapOf(target) != mapId;
}

std::vector<std::size_t> BranchProbe::decisionsAlong(std::span<const Position> route) const {
  std::vector<std::size_t> decisions;
  for (std::size_t at = 0; at + 1 < route.size(); ++at) {
    const bool isArrival = at > 0 && mapOf(route[at]) != mapOf(route[at - 1]);
    if (!isArrival && isDecision(route, at)) decisions.push_back(at);
  }
  return decisions;
}

bool BranchProbe::isDecision(std::span<const Position> route, std::size_t at) const {
  if (route[at] == noPosition) return false;
  const std::int64_t mapId = mapOf(route[at]);
  const std::int64_t id = graph_.nodeId(route[at]);
  return std::ranges::any_of(linksOf(route[at]), [&](const Link& link) {
    const bool isOnRoute = (at > 0 && link.target == route[at - 1]) || link.target == route[at + 1];
    return !isOnRoute && !isSideTrip(mapId, link.target) && goesOn(link.target, id, 2);
  });
}

bool BranchProbe::goesOn(Position node, std::optional<std::int64_t> parentId, int level) const {
  const std::int64_t mapId = mapOf(node);
  for (const Link& link : linksOf(node)) {
    const std::int64_t id = link.target != noPosition ? graph_.nodeId(link.target) : 0;
    if (parentId && id == *parentId) continue;
    if (parentId && id == destinationId_) return true;
    if (isSideTrip(mapId, link.target)) continue;
    if (depth_ <= level || goesOn(link.target, graph_.nodeId(node), level + 1)) return true;
  }
  return false;
}

}  // namespace tern::detail
