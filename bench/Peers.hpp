// Other libraries at the same work: shortest-path searches over the same links, and reading JSON
// into the same tree.
#pragma once

#include <memory>
#include <string>

#include "TernCoreKit/platform/Value.hpp"
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

// RapidJSON: its SAX reader in place, with exact doubles and checked UTF-8, straight into a Value.
// Unlike ours it does not settle repeated keys.
Value parseByRapidJson(std::string text);

}  // namespace tern::bench
