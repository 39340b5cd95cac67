// Nodes as they were when they were copied: no search and no block changes them.
//
// What a search wrote and which edges are blocked is kept; all else never changes, and is read from
// the originals.
//
// Ownership: keeps the graphs of the originals alive, and no copies that it was made of. Threads:
// as a standard container.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <vector>

#include "TernCoreKit/wayfinding/detail/NodeSource.hpp"

namespace tern::inline v5::detail {

class NodeCopies final : public NodeSource {
 public:
  void reserve(std::size_t count) { copies_.reserve(count); }
  // Appends a copy without a predecessor. `blocked` has a mark for each edge, or none at all.
  void add(std::shared_ptr<const NodeSource> source, Position position, NodeProgress progress,
           Distance distance, std::vector<bool> blocked);
  // The same of nodes as their source shows them.
  void add(const std::shared_ptr<const NodeSource>& source, std::span<const Position> positions);
  // REQUIRES: both have been added.
  void setParent(Position position, Position parent) { copies_[position].progress.parent = parent; }

  NodeFacts facts(Position position) const override {
    return sourceOf(position).facts(copies_[position].original);
  }
  NodeProgress progress(Position position) const override { return copies_[position].progress; }
  std::vector<Distance> distances(std::span<const Position> positions) const override;
  std::vector<Position> chainTo(Position position) const override;
  void clearProgress(Position position) override;
  std::vector<TernASEdge> edges(Position position) const override;
  std::vector<bool> blockedEdges(Position position) const override;
  std::vector<TernNeighbor> neighbors(Position position) const override {
    return sourceOf(position).neighbors(copies_[position].original);
  }
  std::vector<std::int64_t> neighborIds(Position position) const override {
    return sourceOf(position).neighborIds(copies_[position].original);
  }
  void blockEdges(Position position, std::optional<std::int64_t> joining, bool block) override;
  bool isEdgeBlocked(Position position, std::int64_t joining) const override;
  std::optional<NodePlace> copiedFrom(Position position) const override {
    return NodePlace{sources_[copies_[position].source], copies_[position].original};
  }

 private:
  struct Copy {
    std::size_t source;
    Position original;
    NodeProgress progress;
    Distance distance;
  };

  const NodeSource& sourceOf(Position position) const {
    return *sources_[copies_[position].source];
  }

  std::vector<std::shared_ptr<const NodeSource>> sources_;
  Indexed<Position, Copy> copies_;
  std::map<Position, std::vector<bool>> blocked_;  // of the nodes that have a blocked edge
};

}  // namespace tern::detail
