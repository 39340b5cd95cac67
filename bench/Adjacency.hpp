// A grid's links as plain lists, for the peers that are measured beside it. Nothing of ours is
// included, since LEMON wants an older C++ than we do.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace tern::bench {

// Nodes are numbered as the grid lists its waypoints; the links of node n stand from first[n] to
// first[n + 1].
struct Adjacency {
  std::vector<std::uint32_t> first;
  std::vector<std::uint32_t> target;
  std::vector<float> cost;
  std::vector<float> distance;
  std::vector<std::int32_t> accessibility;

  std::size_t nodeCount() const { return first.size() - 1; }
};

// One pair of nodes to find a route between.
struct Query {
  std::uint32_t from;
  std::uint32_t to;
};

}  // namespace tern::bench
