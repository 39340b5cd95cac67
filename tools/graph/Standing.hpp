// Where the nodes of a graph stand to the largest of its parts.
//
//   const Standing standing = standingIn(ways);
//   if (!standing.isOnMainland(node)) ...
//
// Threads: free functions and plain values. Fails: never.
#pragma once

#include <cstdint>
#include <vector>

#include "tools/graph/Components.hpp"

namespace tern::graph {

// How the nodes stand to the part that most of them are in.
struct Standing {
  PartNumbers weak;
  // The weak part with the most nodes, and the nodes of the largest strong part in it, its core.
  std::uint32_t mainland = 0;
  std::vector<std::uint32_t> core;
  // Whether a way leads from the core to the node, and from the node to the core.
  std::vector<bool> reached;
  std::vector<bool> returns;

  bool isOnMainland(std::uint32_t node) const { return weak[node] == mainland; }
};

Standing standingIn(const Digraph& graph);

}  // namespace tern::graph
