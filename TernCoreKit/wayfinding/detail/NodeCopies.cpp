#include "TernCoreKit/wayfinding/detail/NodeCopies.hpp"

#include <algorithm>
#include <utility>

namespace tern::detail {

void NodeCopies::add(std::shared_ptr<const NodeSource> source, Position position) {
  Copy copy{.source = nullptr,
            .original = position,
            .facts = source->facts(position),
            .height = source->height(position),
            .progress = source->progress(position),
            .blocked = source->blockedEdges(position)};
  copy.progress.parent = noPosition;
  copy.source = std::move(source);
  nodes_.push_back(std::move(copy));
}

std::vector<Position> NodeCopies::chainTo(Position position) const {
  std::vector<Position> chain;
  for (Position at = position; at != noPosition; at = nodes_[at].progress.parent) {
    chain.push_back(at);
  }
  return chain;
}

std::vector<TernASEdge> NodeCopies::edges(Position position) const {
  const Copy& copy = nodes_[position];
  std::vector<TernASEdge> edges = copy.source->edges(copy.original);
  for (std::size_t i = 0; i < edges.size(); ++i) {
    edges[i].blocked = i < copy.blocked.size() && copy.blocked[i];
  }
  return edges;
}

std::vector<TernNeighbor> NodeCopies::neighbors(Position position) const {
  return nodes_[position].source->neighbors(nodes_[position].original);
}

std::vector<std::int64_t> NodeCopies::neighborIds(Position position) const {
  return nodes_[position].source->neighborIds(nodes_[position].original);
}

void NodeCopies::blockEdges(Position position, std::optional<std::int64_t> joining, bool block) {
  const std::vector<TernASEdge> all = edges(position);
  auto& blocked = nodes_[position].blocked;
  blocked.resize(all.size());
  for (std::size_t i = 0; i < all.size(); ++i) {
    if (!joining || all[i].joins(*joining)) blocked[i] = block;
  }
}

bool NodeCopies::isEdgeBlocked(Position position, std::int64_t joining) const {
  const std::vector<TernASEdge> all = edges(position);
  const auto first =
      std::ranges::find_if(all, [&](const TernASEdge& edge) { return edge.joins(joining); });
  return first != all.end() && first->blocked;
}

}  // namespace tern::detail
