// The nodes of a grid as a caller sees them: the graph, which never changes, with the blocks that
// callers set and the scores that the last search left.
//
// A search takes what it needs for itself (SearchTurn) and gives it back when it is over; what it
// gives back is then what the nodes show. So one search after the other uses the same state, and
// any number may be under way at once.
//
// Ownership: shared by the grid and by all references to its nodes. Threads: any, at any time; a
// search sees the blocks as they were when it began. Fails: what runs out of memory has changed
// nothing.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <utility>
#include <vector>

#include "TernCoreKit/platform/Mutex.hpp"
#include "TernCoreKit/wayfinding/detail/Blocks.hpp"
#include "TernCoreKit/wayfinding/detail/GraphSearch.hpp"
#include "TernCoreKit/wayfinding/detail/GridGraph.hpp"
#include "TernCoreKit/wayfinding/detail/NodeSource.hpp"
#include "TernCoreKit/wayfinding/detail/SearchState.hpp"

namespace tern::inline v5::detail {

class GridNodes final : public NodeSource {
 public:
  explicit GridNodes(GridRecords records) : graph(std::move(records)) {}
  ~GridNodes() override;

  const GridGraph graph;

  // Forgets the last search.
  void reset();
  // What the last search left on its open list, in the order of the heap.
  std::vector<Position> openList() const;
  // Closes or opens all of the ways, or none of them.
  void block(const Ways& ways, bool block);
  // Opens the ways, where anything is closed at all.
  void open(const Ways& ways);

  NodeFacts facts(Position position) const override { return graph.nodeFacts(position); }
  NodeProgress progress(Position position) const override;
  std::vector<Distance> distances(std::span<const Position> positions) const override;
  std::vector<Position> chainTo(Position position) const override;
  void clearProgress(Position position) override;
  std::vector<TernASEdge> edges(Position position) const override;
  std::vector<bool> blockedEdges(Position position) const override;
  std::vector<TernNeighbor> neighbors(Position position) const override {
    return graph.neighbors(position);
  }
  std::vector<std::int64_t> neighborIds(Position position) const override {
    return graph.neighborIds(position);
  }
  void blockEdges(Position position, std::optional<std::int64_t> joining, bool block) override;
  bool isEdgeBlocked(Position position, std::int64_t joining) const override;

 private:
  friend class SearchTurn;
  void mark(const Ways& ways, bool block) TERN_REQUIRES(mutex_);
  // The one that this thread used before, where nobody has it: what lies in the cache of another
  // core is slow to come by. Else the one that was used last.
  std::unique_ptr<SearchState> takeState() TERN_REQUIRES(mutex_);
  void giveBack(std::unique_ptr<SearchState> state) TERN_REQUIRES(mutex_);

  mutable Mutex mutex_;
  // A pile of states that nobody uses.
  std::unique_ptr<SearchState> idle_ TERN_GUARDED_BY(mutex_);
  // The last search's, in that pile; null before the first, and while another uses it.
  SearchState* last_ TERN_GUARDED_BY(mutex_) = nullptr;
  // Null as long as nothing has been closed. Searches share it, and take and give up their share
  // under the mutex: what nobody shares is changed in place.
  std::shared_ptr<Blocks> blocks_ TERN_GUARDED_BY(mutex_);
};

// What a search is asked for.
struct RouteRequest {
  std::int64_t startId = 0;
  std::span<const std::int64_t> goalIds;
  std::int64_t accessLevel = 0;
};

// One search's turn, or that of several in a row: a state that nobody else uses, and the blocks of
// the moment.
class SearchTurn {
 public:
  explicit SearchTurn(GridNodes& nodes);
  // What the search left is what the nodes show from now on.
  ~SearchTurn();
  SearchTurn(const SearchTurn&) = delete;
  SearchTurn& operator=(const SearchTurn&) = delete;

  // The goal that is reached first, or none; over those of the links that are open.
  Position search(const RouteRequest& request, const Links& links);
  // All that is reached from the start: see `searchWhole` of the graph.
  void searchWhole(Position start, std::int64_t accessLevel, const Links& links,
                   std::vector<Settled>& settled);

  const SearchState& state() const { return *state_; }
  // Null when nothing is closed.
  const Blocks* blocks() const { return blocks_.get(); }
  const Links& links() const {
    return blocks_ != nullptr ? blocks_->links : nodes_.graph.graph.links;
  }
  // From the start to the node.
  std::vector<Position> routeTo(Position end) const;
  NodeProgress progress(Position position) const {
    return nodes_.graph.progress(*state_, position);
  }
  std::vector<Distance> distances(std::span<const Position> positions) const {
    return nodes_.graph.distances(*state_, positions);
  }

 private:
  GridNodes& nodes_;
  std::unique_ptr<SearchState> state_;
  std::shared_ptr<const Blocks> blocks_;
};

}  // namespace tern::detail
