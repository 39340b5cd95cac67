// The navigation graph as the search reads it: flat arrays, addressed by position.
//
// A position is a node's place in these arrays. Positions follow the walkways, not the order in
// which waypoints were given, so that a search moves through neighbouring memory whatever the ids
// are.
//
// Ownership: plain data, owned by the grid. Threads: one at a time.
#pragma once

#include <cstddef>
#include <cstdint>
#include <limits>
#include <span>
#include <vector>

namespace tern::detail {

// A node's place in the arrays of a graph.
using Position = std::uint32_t;
inline constexpr Position noPosition = std::numeric_limits<Position>::max();

// One directed link to a neighbour.
//
// `gate` folds the two tests of a link into one comparison: the rank of the link's kind, ranks
// being sorted by accessibility, with the top bit set while the link is blocked. A link may be used
// when its gate lies below the number of kinds that the level admits.
struct Link {
  static constexpr std::uint32_t blockedBit = 1U << 31U;
  // The gate of a link that leads to no node: it never opens.
  static constexpr std::uint32_t shut = std::numeric_limits<std::uint32_t>::max();

  Position target;
  float cost;
  float distance;  // map units
  std::uint32_t gate;

  std::uint32_t kindRank() const { return gate & ~blockedBit; }
  // REQUIRES: the link leads to a node.
  void setBlocked(bool block) { gate = kindRank() | (block ? blockedBit : 0); }
};
static_assert(sizeof(Link) == 16);

// What a search knows of a node, and where the node's links lie: all that is read when a node is
// settled, in half a cache line.
//
// `mark` is the number of the search that wrote the state plus how far the node has come. A state
// whose mark is none of the current search's counts as cleared.
struct NodeState {
  static constexpr std::uint32_t wanted = 0;   // a goal that has not been reached
  static constexpr std::uint32_t visited = 1;  // has a score
  static constexpr std::uint32_t visitedGoal = 2;
  static constexpr std::uint32_t closed = 3;  // has been expanded
  static constexpr std::uint32_t stageCount = 4;

  std::uint32_t mark = 0;
  float score = 0;
  float distance = 0;  // map units, from the start
  Position parent = noPosition;
  std::uint32_t usedKind = 0;
  std::uint32_t heapPlace = 0;
  std::uint32_t firstLink = 0;
  std::uint32_t endLink = 0;
};
static_assert(sizeof(NodeState) == 32);

// An entry of the open list: a score, as the list's order writes it, and whose it is; in the halves
// of one word, since moving one is what a search does most.
struct OpenEntry {
  std::uint64_t word = 0;

  OpenEntry() = default;
  OpenEntry(std::uint32_t key, Position position) : word(std::uint64_t{key} << 32U | position) {}
  std::uint32_t key() const { return static_cast<std::uint32_t>(word >> 32U); }
  Position position() const { return static_cast<Position>(word); }
};

struct Graph {
  std::vector<NodeState> states;
  std::vector<Link> links;
  // Room for the open list: made by the first search, kept for the next; its root lies at 1.
  std::vector<OpenEntry> openStorage;
  // What the last search left on it.
  std::size_t openCount = 0;
  // Whether every link's cost is a finite number and none is negative.
  bool costsArePlain = true;
  // The number of the current search, a multiple of the stages; never 0, the mark of untouched
  // states.
  std::uint32_t round = NodeState::stageCount;

  // How far the current search has come with a node: a stage, or anything else when it has not.
  std::uint32_t stage(const NodeState& state) const { return state.mark - round; }
  // Whether a link has led the current search to the node; none leads to the start.
  bool isVisited(const NodeState& state) const {
    return state.parent != noPosition && stage(state) - NodeState::visited < 3;
  }

  std::span<const OpenEntry> openEntries() const {
    return openCount > 0 ? std::span(openStorage).subspan(1, openCount)
                         : std::span<const OpenEntry>();
  }

  // Clears the last search in constant time.
  void clearSearch() {
    openCount = 0;
    round += NodeState::stageCount;
    if (round != 0) return;
    // The numbers have run out, after a billion searches: start over.
    for (NodeState& state : states) state.mark = 0;
    round = NodeState::stageCount;
  }
};

}  // namespace tern::detail
