// The nodes of one route: a grid's own nodes in all but what a search knows of them, which stays as
// the route's own search left it.
//
// Ownership: keeps the grid's nodes alive. Threads: any number of readers.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include "TernCoreKit/wayfinding/detail/GridNodes.hpp"

namespace tern::inline v5::detail {

class RouteNodes final : public NodeSource {
 public:
  // `route` runs from the start to the end of what the turn's last search has found.
  RouteNodes(std::shared_ptr<GridNodes> grid, const SearchTurn& turn,
             std::span<const Position> route);

  NodeFacts facts(Position position) const override { return grid_->facts(at(position)); }
  NodeProgress progress(Position position) const override { return nodes_[position].progress; }
  std::vector<Distance> distances(std::span<const Position> positions) const override;
  std::vector<Position> chainTo(Position position) const override;
  void clearProgress(Position position) override;
  std::vector<TernASEdge> edges(Position position) const override {
    return grid_->edges(at(position));
  }
  std::vector<bool> blockedEdges(Position position) const override {
    return grid_->blockedEdges(at(position));
  }
  std::vector<TernNeighbor> neighbors(Position position) const override {
    return grid_->neighbors(at(position));
  }
  std::vector<std::int64_t> neighborIds(Position position) const override {
    return grid_->neighborIds(at(position));
  }
  void blockEdges(Position position, std::optional<std::int64_t> joining, bool block) override {
    grid_->blockEdges(at(position), joining, block);
  }
  bool isEdgeBlocked(Position position, std::int64_t joining) const override {
    return grid_->isEdgeBlocked(at(position), joining);
  }
  std::pair<const NodeSource*, Position> original(Position position) const override {
    return grid_->original(at(position));
  }

 private:
  struct Node {
    Position original;
    NodeProgress progress;
    Distance distance;
  };

  Position at(Position position) const { return nodes_[position].original; }

  const std::shared_ptr<GridNodes> grid_;
  Indexed<Position, Node> nodes_;
};

}  // namespace tern::detail
