#include "tools/check/Network.hpp"

namespace tern::check {

Network::Network(const TernASGrid& grid) {
  std::vector<TernASNode> firsts;
  for (TernASNode& node : grid.nodes()) {
    const auto number = static_cast<std::uint32_t>(nodes_.size());
    if (!numbers_.try_emplace(node.nodeId(), number).second) continue;
    nodes_.push_back({node.nodeId(), node.mapId(), {node.x(), node.y()}});
    firsts.push_back(std::move(node));
  }
  for (const TernASNode& node : firsts) {
    first_.push_back(links_.size());
    for (const TernNeighbor& neighbor : node.neighbors()) {
      const auto to = numbers_.find(neighbor.neighborId.integer());
      if (neighbor.neighborId.isAbsent() || to == numbers_.end()) continue;
      links_.push_back({to->second, neighbor.edgeId.integer(), neighbor.edgeTypeId.integer(),
                        neighbor.acc.integer()});
    }
  }
  first_.push_back(links_.size());
}

std::optional<std::uint32_t> Network::find(std::int64_t waypointId) const {
  const auto found = numbers_.find(waypointId);
  return found != numbers_.end() ? std::optional(found->second) : std::nullopt;
}

graph::Digraph Network::upTo(std::int64_t level) const {
  graph::Digraph graph;
  for (std::uint32_t node = 0; node < nodes_.size(); ++node) {
    for (const Link& link : linksOf(node)) {
      if (link.accessibility <= level) graph.targets.push_back(link.to);
    }
    graph.first.push_back(static_cast<std::uint32_t>(graph.targets.size()));
  }
  return graph;
}

}  // namespace tern::check
