#include <boost/graph/compressed_sparse_row_graph.hpp>
#include <boost/graph/dijkstra_shortest_paths.hpp>
#include <utility>

#include "bench/GraphPeers.hpp"

namespace tern::bench {

namespace {

using BoostGraph = boost::compressed_sparse_row_graph<boost::directedS, boost::no_property,
                                                      boost::property<boost::edge_weight_t, float>>;
using Vertex = boost::graph_traits<BoostGraph>::vertex_descriptor;

struct GoalReached {};

struct StopAtGoal : boost::default_dijkstra_visitor {
  explicit StopAtGoal(Vertex goal) : goal_(goal) {}
  void examine_vertex(Vertex vertex, const BoostGraph&) const {
    if (vertex == goal_) throw GoalReached();
  }
  Vertex goal_;
};

BoostGraph graphOf(const Adjacency& adjacency) {
  std::vector<std::pair<Vertex, Vertex>> edges;
  edges.reserve(adjacency.target.size());
  for (Vertex node = 0; node < adjacency.nodeCount(); ++node) {
    for (auto i = adjacency.first[node]; i < adjacency.first[node + 1]; ++i) {
      edges.emplace_back(node, adjacency.target[i]);
    }
  }
  return {boost::edges_are_sorted, edges.begin(), edges.end(), adjacency.cost.begin(),
          adjacency.nodeCount()};
}

}  // namespace

struct BoostPeer::Impl {
  BoostGraph graph;
  std::vector<float> distances;
  std::vector<Vertex> parents;
};

BoostPeer::BoostPeer(const Adjacency& adjacency)
    : impl_(
          std::make_unique<Impl>(Impl{graphOf(adjacency), std::vector<float>(adjacency.nodeCount()),
                                      std::vector<Vertex>(adjacency.nodeCount())})) {}
BoostPeer::~BoostPeer() = default;

float BoostPeer::search(Query query) {
  const auto index = get(boost::vertex_index, impl_->graph);
  try {
    boost::dijkstra_shortest_paths(
        impl_->graph, Vertex{query.from},
        boost::predecessor_map(make_iterator_property_map(impl_->parents.begin(), index))
            .distance_map(make_iterator_property_map(impl_->distances.begin(), index))
            .weight_map(get(boost::edge_weight, impl_->graph))
            .visitor(StopAtGoal(query.to)));
  } catch (const GoalReached&) {
    return impl_->distances[query.to];
  }
  return -1;
}

}  // namespace tern::bench
