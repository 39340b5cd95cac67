// Nodes as they were when they were copied: no search and no block changes them.
//
// What a search wrote and which edges are blocked is kept; edges and links themselves never change,
// and are made from those of the original when somebody asks.
//
// Ownership: keeps the graphs of the originals alive. Threads: one at a time.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include "TernCoreKit/wayfinding/detail/NodeSource.hpp"

namespace tern::detail {

class NodeCopies final : public NodeSource {
 public:
  // Appends a copy without a predecessor.
  void add(std::shared_ptr<const NodeSource> source, Position position);
  // REQUIRES: both have been added.
  void setParent(Position position, Position parent) { nodes_[position].progress.parent = parent; }

  NodeFacts facts(Position position) const override { return nodes_[position].facts; }
  float height(Position position) const override { return nodes_[position].height; }
  NodeProgress progress(Position position) const override { return nodes_[position].progress; }
  std::vector<Position> chainTo(Position position) const override;
  void clearProgress(Position position) override { nodes_[position].progress = {}; }
  std::vector<TernASEdge> edges(Position position) const override;
  std::vector<bool> blockedEdges(Position position) const override {
    return nodes_[position].blocked;
  }
  std::vector<TernNeighbor> neighbors(Position position) const override;
  std::vector<std::int64_t> neighborIds(Position position) const override;
  void blockEdges(Position position, std::optional<std::int64_t> joining, bool block) override;
  bool isEdgeBlocked(Position position, std::int64_t joining) const override;

 private:
  struct Copy {
    std::shared_ptr<const NodeSource> source;
    Position original;
    NodeFacts facts;
    float height;  // map units
    NodeProgress progress;
    std::vector<bool> blocked;  // by edge; empty when none is
  };

  std::vector<Copy> nodes_;
};

}  // namespace tern::detail
