#include "tools/graph/Neighbours.hpp"

#include <algorithm>
#include <vector>

namespace tern::graph {

namespace {

constexpr std::size_t mostStops = 200;

}  // namespace

Digraph neighboursIn(const Digraph& graph) {
  const Digraph back = reversed(graph);
  Digraph neighbours;
  for (std::uint32_t node = 0; node < graph.count(); ++node) {
    std::vector<std::uint32_t> around(graph.of(node).begin(), graph.of(node).end());
    around.insert(around.end(), back.of(node).begin(), back.of(node).end());
    std::ranges::sort(around);
    around.erase(std::unique(around.begin(), around.end()), around.end());
    neighbours.targets.insert(neighbours.targets.end(), around.begin(), around.end());
    neighbours.first.push_back(static_cast<std::uint32_t>(neighbours.targets.size()));
  }
  return neighbours;
}

bool areJoinedWithout(const Digraph& neighbours, std::uint32_t node) {
  const auto around = neighbours.of(node);
  if (around.empty() || around.size() > mostStops) return false;
  std::vector<std::uint32_t> left(around.begin(), around.end() - 1);
  std::vector<std::uint32_t> waiting{around.back()};
  while (!waiting.empty()) {
    const auto joined = neighbours.of(waiting.back());
    waiting.pop_back();
    std::erase_if(left, [&](std::uint32_t other) {
      const bool isJoined = std::ranges::binary_search(joined, other);
      if (isJoined) waiting.push_back(other);
      return isJoined;
    });
  }
  return left.empty();
}

}  // namespace tern::graph
