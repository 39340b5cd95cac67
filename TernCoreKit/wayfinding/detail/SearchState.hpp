// What one search knows of the nodes of a graph. Made once, used for search after search: clearing
// it takes constant time, and a search touches only what it reaches.
//
// Ownership: plain data. Threads: one at a time.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

#include "TernCoreKit/wayfinding/detail/Graph.hpp"

namespace tern::inline v5::detail {

// What a search knows of a node and where the node's links lie: all that is read when a node is
// settled, in half a cache line. `mark` is the number of the search that wrote the rest plus how
// far the node has come; a mark of no stage of the current search counts as cleared.
struct alignas(32) NodeState {
  static constexpr std::uint32_t wanted = 0;   // a goal that has not been reached
  static constexpr std::uint32_t visited = 1;  // has a score
  static constexpr std::uint32_t visitedGoal = 2;
  static constexpr std::uint32_t closed = 3;  // has been expanded
  static constexpr std::uint32_t stageCount = 4;

  std::uint32_t mark = 0;
  float score = 0;
  Position parent = noPosition;
  LinkIndex link = none<LinkIndex>;  // the one that led there from the parent
  std::uint32_t heapIndex = 0;
  LinkIndex firstLink{0};
  LinkIndex endLink{0};
};
static_assert(sizeof(NodeState) == 32);

// An entry of the open list: a score, as the list's order writes it, and whose it is; in the halves
// of one word, since moving one is what a search does most.
struct OpenEntry {
  std::uint64_t word = 0;

  OpenEntry() = default;
  OpenEntry(std::uint32_t key, Position position)
      : word(std::uint64_t{key} << 32U | numberOf(position)) {}
  std::uint32_t key() const { return static_cast<std::uint32_t>(word >> 32U); }
  Position position() const { return Position{static_cast<std::uint32_t>(word)}; }
};

struct SearchState {
  explicit SearchState(std::size_t nodeCount) : nodes(nodeCount), open(nodeCount + 1) {}
  explicit SearchState(const Graph& graph);

  Indexed<Position, NodeState> nodes;
  // The open list; its root lies at 1. Each node is put on it once a search at most.
  std::vector<OpenEntry> open;
  // How much of it the last search left.
  std::size_t openCount = 0;
  // The number of the current search, a multiple of the stages; never 0, the mark of untouched
  // nodes.
  std::uint32_t round = NodeState::stageCount;
  // The next of a pile of states that nobody uses.
  std::unique_ptr<SearchState> next;
  // Stands for the thread that used it last.
  const void* lastThread = nullptr;

  // How far the current search has come with a node: a stage, or anything else when it has not.
  std::uint32_t stage(Position position) const { return nodes[position].mark - round; }
  // Whether a link has led the current search to the node; none leads to the start.
  bool isVisited(Position position) const {
    return nodes[position].parent != noPosition && stage(position) - NodeState::visited < 3;
  }
  std::span<const OpenEntry> openEntries() const { return std::span(open).subspan(1, openCount); }

  // The node and all its predecessors, the start last.
  std::vector<Position> chainTo(Position position) const;

  // Forgets the last search.
  void clear();
  // REQUIRES: the last search has been forgotten.
  void markGoal(Position position) { nodes[position].mark = round + NodeState::wanted; }
};

}  // namespace tern::detail
