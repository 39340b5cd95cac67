#include "TernCoreKit/wayfinding/detail/RouteNodes.hpp"

namespace tern::inline v5::detail {

RouteNodes::RouteNodes(std::shared_ptr<GridNodes> grid, const SearchTurn& turn,
                       std::span<const Position> route)
    : grid_(std::move(grid)) {
  const std::vector<Distance> distances = turn.distances(route);
  nodes_.reserve(route.size());
  Position before = noPosition;
  for (std::size_t i = 0; i < route.size(); ++i) {
    Node node{route[i], turn.progress(route[i]), distances[i]};
    node.progress.parent = before;
    before = nodes_.endIndex();
    nodes_.push_back(node);
  }
}

std::vector<Distance> RouteNodes::distances(std::span<const Position> positions) const {
  std::vector<Distance> distances;
  for (const Position position : positions) distances.push_back(nodes_[position].distance);
  return distances;
}

void RouteNodes::clearProgress(Position position) {
  nodes_[position].progress = {};
  nodes_[position].distance.reset();
}

std::vector<Position> RouteNodes::chainTo(Position position) const {
  std::vector<Position> chain;
  for (Position at = position; at != noPosition; at = nodes_[at].progress.parent) {
    chain.push_back(at);
  }
  return chain;
}

}  // namespace tern::detail
