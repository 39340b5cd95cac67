// The search and the cutting of its route in their plainest form, over a LiteralGrid, to hold the
// library's against.
//
// Ownership: borrows the grid, which must outlive it; shares the maps. Threads: one.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "TernCoreKit/model/collections/TernMapCollection.hpp"
#include "tests/support/LiteralGrid.hpp"

namespace tern::test {

struct LiteralSegment {
  float cost = 0;
  std::int64_t mapId = 0;
  std::shared_ptr<TernPathType> mover;
  std::vector<const LiteralNode*> points;
  float pixelDistance = 0;
  float mmDistance = 0;
  std::vector<TernPoint> mapPoints;
};

using LiteralRoute = std::vector<LiteralSegment>;

// An array heap of nodes by their live `f`, which nobody reorders when that drops.
class LiteralHeap {
 public:
  bool isEmpty() const { return nodes_.empty(); }
  bool contains(const LiteralNode* node) const;
  void insert(LiteralNode* node);
  // REQUIRES: not empty.
  LiteralNode* removeFirst();
  const std::vector<LiteralNode*>& nodes() const { return nodes_; }

 private:
  std::vector<LiteralNode*> nodes_;
};

class LiteralSearch {
 public:
  LiteralSearch(LiteralGrid& grid, std::shared_ptr<TernMapCollection> maps)
      : grid_(grid), maps_(std::move(maps)) {}

  std::optional<LiteralRoute> search(std::int64_t startId, std::int64_t endId,
                                     std::int64_t accessLevel);
  std::optional<LiteralRoute> searchInArray(std::int64_t startId,
                                            const TernASGrid::Waypoints& endWaypoints,
                                            std::int64_t accessLevel);
  std::optional<LiteralRoute> pathTo(const LiteralNode* end, const LiteralNode* start);

  const LiteralHeap& openStartHeap() const { return open_; }
  // What both have logged so far.
  const std::vector<std::string>& log() const { return log_; }

 private:
  using IsGoal = std::function<bool(const LiteralNode& node)>;
  std::optional<LiteralRoute> run(std::int64_t startId, std::int64_t accessLevel,
                                  const IsGoal& isGoal);
  void expand(LiteralNode& current, std::int64_t accessLevel);
  void reach(LiteralNode& node, LiteralNode& current, const TernNeighbor& over);
  LiteralSegment segmentOf(const std::vector<const LiteralNode*>& pending,
                           const LiteralNode& reachedByMover) const;

  LiteralGrid& grid_;
  std::shared_ptr<TernMapCollection> maps_;
  LiteralHeap open_;
  std::vector<std::string> log_;
};

}  // namespace tern::test
