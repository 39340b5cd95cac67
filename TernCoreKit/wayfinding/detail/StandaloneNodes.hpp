// Nodes outside any grid, made by hand.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "TernCoreKit/wayfinding/detail/NodeSource.hpp"

namespace tern::inline v5::detail {

struct StandaloneNode {
  NodeFacts facts;
  NodeProgress progress;  // without a parent
  Distance distance = std::nullopt;
  std::vector<TernASEdge> edges;
  std::vector<TernNeighbor> neighbors;
};

class StandaloneNodes final : public NodeSource {
 public:
  explicit StandaloneNodes(Indexed<Position, StandaloneNode> nodes) : nodes_(std::move(nodes)) {}

  NodeFacts facts(Position position) const override { return nodes_[position].facts; }
  NodeProgress progress(Position position) const override { return nodes_[position].progress; }
  std::vector<Distance> distances(std::span<const Position> positions) const override;
  std::vector<Position> chainTo(Position position) const override { return {position}; }
  void clearProgress(Position position) override;
  std::vector<TernASEdge> edges(Position position) const override { return nodes_[position].edges; }
  std::vector<bool> blockedEdges(Position position) const override;
  std::vector<TernNeighbor> neighbors(Position position) const override {
    return nodes_[position].neighbors;
  }
  std::vector<std::int64_t> neighborIds(Position position) const override;
  void blockEdges(Position position, std::optional<std::int64_t> joining, bool block) override;
  bool isEdgeBlocked(Position position, std::int64_t joining) const override;

 private:
  Indexed<Position, StandaloneNode> nodes_;
};

}  // namespace tern::detail
