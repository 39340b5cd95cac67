// Other libraries at the same work: shortest-path searches over the same links. Nothing of ours is
// included, since LEMON wants an older C++ than we do.
#pragma once

#include <memory>

#include "bench/Adjacency.hpp"

namespace tern::bench {

// Boost.Graph: dijkstra_shortest_paths on a compressed_sparse_row_graph, left by an exception as
// soon as the goal is examined, which is how its documentation says to end early.
class BoostPeer {
 public:
  explicit BoostPeer(const Adjacency& adjacency);
  ~BoostPeer();
  float search(Query query);

 private:
  struct Impl;
  std::unique_ptr<Impl> impl_;
};

// LEMON: Dijkstra on a StaticDigraph, run from start to goal, with its maps kept between runs.
class LemonPeer {
 public:
  explicit LemonPeer(const Adjacency& adjacency);
  ~LemonPeer();
  float search(Query query);

 private:
  struct Impl;
  std::unique_ptr<Impl> impl_;
};

}  // namespace tern::bench
