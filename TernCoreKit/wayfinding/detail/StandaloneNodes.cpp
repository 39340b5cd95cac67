#include "TernCoreKit/wayfinding/detail/StandaloneNodes.hpp"

#include <algorithm>

namespace tern::inline v5::detail {

std::vector<Distance> StandaloneNodes::distances(std::span<const Position> positions) const {
  std::vector<Distance> distances;
  for (const Position position : positions) distances.push_back(nodes_[position].distance);
  return distances;
}

void StandaloneNodes::clearProgress(Position position) {
  nodes_[position].progress = {};
  nodes_[position].distance.reset();
}

std::vector<bool> StandaloneNodes::blockedEdges(Position position) const {
  std::vector<bool> blocked;
  for (const TernASEdge& edge : nodes_[position].edges) blocked.push_back(edge.blocked);
  return blocked;
}

std::vector<std::int64_t> StandaloneNodes::neighborIds(Position position) const {
  std::vector<std::int64_t> ids;
  for (const TernNeighbor& neighbor : nodes_[position].neighbors) {
    ids.push_back(neighbor.neighborId.integer());
  }
  return ids;
}

void StandaloneNodes::blockEdges(Position position, std::optional<std::int64_t> joining,
                                 bool block) {
  for (TernASEdge& edge : nodes_[position].edges) {
    if (!joining || edge.joins(*joining)) edge.blocked = block;
  }
}

bool StandaloneNodes::isEdgeBlocked(Position position, std::int64_t joining) const {
  const auto& edges = nodes_[position].edges;
  const auto first =
      std::ranges::find_if(edges, [&](const TernASEdge& edge) { return edge.joins(joining); });
  return first != edges.end() && first->blocked;
}

}  // namespace tern::detail
