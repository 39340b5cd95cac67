#include "TernCoreKit/wayfinding/detail/DetourSearch.hpp"

#include <utility>

#include "TernCoreKit/wayfinding/detail/NodeCopies.hpp"
#include "TernCoreKit/wayfinding/detail/RouteMaker.hpp"

namespace tern::inline v5::detail {

DetourSearch::DetourSearch(std::shared_ptr<GridNodes> grid, std::span<const PlacedNode> route)
    : grid_(std::move(grid)),
      turn_(*grid_),
      blocks_(turn_.blocks() != nullptr ? *turn_.blocks() : noBlocks(grid_->graph)),
      isOpened_(route.size()) {
  const auto endNode = [this] {
    firstEdge_.push_back(ways_.edges.size());
    firstLink_.push_back(ways_.links.size());
  };
  endNode();
  for (const PlacedNode& node : route) {
    addWaysInto(grid_->graph, node.nodeId, node.knownNeighbours(), ways_);
    endNode();
  }
}

void DetourSearch::close(std::size_t first, std::size_t count) {
  first_ = first;
  count_ = count;
  blocks_.mark(edgesInto(first, count), linksInto(first, count), true);
}

bool DetourSearch::search(std::int64_t startId, std::int64_t endId, std::int64_t accessLevel) {
  const std::int64_t goals[] = {endId};
  end_ = turn_.search({startId, goals, accessLevel}, blocks_.links);
  return end_ != noPosition;
}

Detour DetourSearch::keep(std::vector<Position> nodes, std::vector<Distance> distances) const {
  std::vector<NodeProgress> progress;
  progress.reserve(nodes.size());
  for (const Position node : nodes) progress.push_back(turn_.progress(node));
  return {std::move(nodes), std::move(distances), std::move(progress), blocks_.edges};
}

TernRoute DetourSearch::routeOf(const Detour& detour, const TernMapCollection* maps) const {
  const GridGraph& graph = grid_->graph;
  const auto copies = std::make_shared<NodeCopies>();
  copies->reserve(detour.nodes.size());
  for (std::size_t i = 0; i < detour.nodes.size(); ++i) {
    copies->add(grid_, detour.nodes[i], detour.progress[i], detour.distances[i],
                marksOf(detour.blocked, graph.edgesOf(detour.nodes[i])));
  }
  return RouteMaker(&graph, maps).makeOfAll(copies, detour.nodes.size()).value();
}

void DetourSearch::open() {
  blocks_.mark(edgesInto(first_, count_), linksInto(first_, count_), false);
  for (std::size_t i = first_; i < first_ + count_; ++i) isOpened_[i] = true;
}

void DetourSearch::commit() {
  Ways opened;
  for (std::size_t i = 0; i < isOpened_.size(); ++i) {
    if (!isOpened_[i]) continue;
    const auto edges = edgesInto(i, 1);
    const auto links = linksInto(i, 1);
    opened.edges.insert(opened.edges.end(), edges.begin(), edges.end());
    opened.links.insert(opened.links.end(), links.begin(), links.end());
  }
  grid_->open(opened);
}

}  // namespace tern::detail
