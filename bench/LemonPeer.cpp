#include <lemon/dijkstra.h>
#include <lemon/static_graph.h>

#include <utility>

#include "bench/GraphPeers.hpp"

namespace tern::bench {

struct LemonPeer::Impl {
  using Costs = lemon::StaticDigraph::ArcMap<float>;

  explicit Impl(const Adjacency& adjacency) : costs(graph), dijkstra(graph, costs) {
    std::vector<std::pair<int, int>> arcs;
    for (std::uint32_t node = 0; node < adjacency.nodeCount(); ++node) {
      for (auto i = adjacency.first[node]; i < adjacency.first[node + 1]; ++i) {
        arcs.emplace_back(static_cast<int>(node), static_cast<int>(adjacency.target[i]));
      }
    }
    graph.build(static_cast<int>(adjacency.nodeCount()), arcs.begin(), arcs.end());
    for (std::size_t i = 0; i < adjacency.cost.size(); ++i) {
      costs[graph.arc(static_cast<int>(i))] = adjacency.cost[i];
    }
  }

  lemon::StaticDigraph graph;
  Costs costs;
  lemon::Dijkstra<lemon::StaticDigraph, Costs> dijkstra;
};

LemonPeer::LemonPeer(const Adjacency& adjacency) : impl_(std::make_unique<Impl>(adjacency)) {}
LemonPeer::~LemonPeer() = default;

float LemonPeer::search(Query query) {
  const auto goal = lemon::StaticDigraph::node(static_cast<int>(query.to));
  if (!impl_->dijkstra.run(lemon::StaticDigraph::node(static_cast<int>(query.from)), goal))
    return -1;
  return impl_->dijkstra.dist(goal);
}

}  // namespace tern::bench
