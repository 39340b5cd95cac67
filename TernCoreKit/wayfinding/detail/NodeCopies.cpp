#include "TernCoreKit/wayfinding/detail/NodeCopies.hpp"

#include <algorithm>
#include <utility>

namespace tern::inline v5::detail {

void NodeCopies::add(std::shared_ptr<const NodeSource> source, Position position,
                     NodeProgress progress, Distance distance, std::vector<bool> blocked) {
  if (auto original = source->copiedFrom(position)) {
    source = std::move(original->source);
    position = original->position;
  }
  // Neighbouring nodes mostly come from one source.
  if (sources_.empty() || sources_.back() != source) sources_.push_back(std::move(source));
  progress.parent = noPosition;
  if (!blocked.empty()) blocked_[copies_.endIndex()] = std::move(blocked);
  copies_.push_back({sources_.size() - 1, position, progress, distance});
}

void NodeCopies::add(const std::shared_ptr<const NodeSource>& source,
                     std::span<const Position> positions) {
  const std::vector<Distance> distances = source->distances(positions);
  for (std::size_t i = 0; i < positions.size(); ++i) {
    add(source, positions[i], source->progress(positions[i]), distances[i],
        source->blockedEdges(positions[i]));
  }
}

std::vector<Distance> NodeCopies::distances(std::span<const Position> positions) const {
  std::vector<Distance> distances;
  for (const Position position : positions) distances.push_back(copies_[position].distance);
  return distances;
}

void NodeCopies::clearProgress(Position position) {
  copies_[position].progress = {};
  copies_[position].distance.reset();
}

std::vector<Position> NodeCopies::chainTo(Position position) const {
  std::vector<Position> chain;
  for (Position at = position; at != noPosition; at = copies_[at].progress.parent) {
    chain.push_back(at);
  }
  return chain;
}

std::vector<TernASEdge> NodeCopies::edges(Position position) const {
  std::vector<TernASEdge> edges = sourceOf(position).edges(copies_[position].original);
  const std::vector<bool> blocked = blockedEdges(position);
  for (std::size_t i = 0; i < edges.size(); ++i) {
    edges[i].blocked = i < blocked.size() && blocked[i];
  }
  return edges;
}

std::vector<bool> NodeCopies::blockedEdges(Position position) const {
  const auto found = blocked_.find(position);
  return found != blocked_.end() ? found->second : std::vector<bool>();
}

void NodeCopies::blockEdges(Position position, std::optional<std::int64_t> joining, bool block) {
  const std::vector<TernASEdge> all = edges(position);
  auto& blocked = blocked_[position];
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
