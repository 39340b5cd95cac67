#include "bench/GridAdjacency.hpp"

#include <unordered_map>

#include "TernCoreKit/wayfinding/TernASGrid.hpp"

namespace tern::bench {

Adjacency adjacencyOf(const TernASGrid& grid) {
  const std::vector<TernASNode> nodes = grid.nodes();
  std::unordered_map<std::int64_t, std::uint32_t> numbers;
  for (std::uint32_t i = 0; i < nodes.size(); ++i) numbers.emplace(nodes[i].nodeId(), i);
  Adjacency adjacency;
  for (const TernASNode& node : nodes) {
    adjacency.first.push_back(static_cast<std::uint32_t>(adjacency.target.size()));
    for (const TernNeighbor& neighbor : node.neighbors()) {
      adjacency.target.push_back(numbers.at(neighbor.neighborId.integer()));
      adjacency.cost.push_back(neighbor.cost);
      adjacency.distance.push_back(neighbor.distance);
      adjacency.accessibility.push_back(static_cast<std::int32_t>(neighbor.acc.integer()));
    }
  }
  adjacency.first.push_back(static_cast<std::uint32_t>(adjacency.target.size()));
  return adjacency;
}

}  // namespace tern::bench
