#include "tools/graph/Standing.hpp"

#include <algorithm>

namespace tern::graph {

namespace {

// The first of the largest; 0 without any.
std::uint32_t largest(const std::vector<std::uint32_t>& sizes) {
  return static_cast<std::uint32_t>(std::ranges::max_element(sizes) - sizes.begin());
}

}  // namespace

Standing standingIn(const Digraph& graph) {
  Standing standing;
  standing.weak = weakParts(graph);
  if (standing.weak.empty()) return standing;
  standing.mainland = largest(sizesOf(standing.weak));
  const PartNumbers strong = strongParts(graph);
  std::vector<std::uint32_t> sizes(graph.count());
  for (std::uint32_t node = 0; node < graph.count(); ++node) {
    if (standing.isOnMainland(node)) ++sizes[strong[node]];
  }
  const std::uint32_t core = largest(sizes);
  for (std::uint32_t node = 0; node < graph.count(); ++node) {
    if (strong[node] == core) standing.core.push_back(node);
  }
  standing.reached = reachedFrom(graph, standing.core);
  standing.returns = reachedFrom(reversed(graph), standing.core);
  return standing;
}

}  // namespace tern::graph
