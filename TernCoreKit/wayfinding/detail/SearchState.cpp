#include "TernCoreKit/wayfinding/detail/SearchState.hpp"

namespace tern::inline v5::detail {

std::vector<Position> SearchState::chainTo(Position position) const {
  std::vector<Position> chain;
  chain.reserve(64);
  for (Position at = position; at != noPosition;) {
    chain.push_back(at);
    at = isVisited(at) ? nodes[at].parent : noPosition;
  }
  return chain;
}

void SearchState::clear() {
  openCount = 0;
  round += NodeState::stageCount;
  if (round != 0) return;
  // The numbers have run out, after a billion searches: start over.
  for (NodeState& node : nodes) node.mark = 0;
  round = NodeState::stageCount;
}

}  // namespace tern::detail
