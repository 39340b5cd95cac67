// The parts of a directed graph that hang together.
//
// All take time and memory linear in nodes and links, and no stack that grows with the graph.
//
// Threads: free functions and plain values. Fails: never.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <utility>
#include <vector>

namespace tern::graph {

struct Digraph {
  // Where the targets of each node begin; one more entry than there are nodes.
  std::vector<std::uint32_t> first{0};
  std::vector<std::uint32_t> targets;

  std::uint32_t count() const { return static_cast<std::uint32_t>(first.size() - 1); }
  std::span<const std::uint32_t> of(std::uint32_t node) const {
    return std::span(targets).subspan(first[node], first[node + 1] - first[node]);
  }
};

// From the first node to the second.
using Link = std::pair<std::uint32_t, std::uint32_t>;

// The targets of each node in the order of the links.
Digraph digraphOf(std::uint32_t count, const std::vector<Link>& links);

Digraph reversed(const Digraph& graph);

// The number of each node's part, from 0 without a gap.
using PartNumbers = std::vector<std::uint32_t>;

// Nodes are in one part when each leads to the other: Tarjan, Depth-first search and linear graph
// algorithms, 1972.
PartNumbers strongParts(const Digraph& graph);
// Nodes are in one part when links join them, whichever way they lead.
PartNumbers weakParts(const Digraph& graph);

// How many nodes each part has.
std::vector<std::uint32_t> sizesOf(const PartNumbers& parts);

// Whether the links lead to the node from one of the starts, which count as reached.
std::vector<bool> reachedFrom(const Digraph& graph, std::span<const std::uint32_t> starts);

}  // namespace tern::graph
