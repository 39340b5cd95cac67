#include "TernCoreKit/wayfinding/detail/SearchState.hpp"

namespace tern::inline v5::detail {

SearchState::SearchState(const Graph& graph) : SearchState(graph.nodeCount()) {
  for (Position node{0}; node < nodes.endIndex(); ++node) {
    nodes[node].firstLink = graph.firstLink[node];
    nodes[node].endLink = graph.endOf(node);
  }
}

std::vector<Position> SearchState::chainTo(Position position) const {
  std::vector<Position> chain;
  chain.reserve(64);
  chain.push_back(position);
  while (isVisited(chain.back())) chain.push_back(nodes[chain.back()].parent);
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
