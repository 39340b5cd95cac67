#include "TernCoreKit/wayfinding/detail/RouteNodes.hpp"

namespace tern::inline v5::detail {

RouteNodes::RouteNodes(std::shared_ptr<GridNodes> grid, const SearchTurn& turn,
                       std::span<const Position> route)
    : grid_(std::move(grid)) {
  nodes_.reserve(route.size());
  Position before = noPosition;
  for (const Position position : route) {
    Node node{position, turn.progress(position)};
    node.progress.parent = before;
    before = nodes_.endIndex();
    nodes_.push_back(node);
  }
}

std::vector<Position> RouteNodes::chainTo(Position position) const {
  std::vector<Position> chain;
  for (Position at = position; at != noPosition; at = nodes_[at].progress.parent) {
    chain.push_back(at);
  }
  return chain;
}

}  // namespace tern::detail
