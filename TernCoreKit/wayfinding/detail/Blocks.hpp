// Which edges and links of a graph are closed, beside the graph, which never changes.
//
// An edge carries the mark that callers set and read. A search asks, for each link, the mark of the
// node's first edge that joins the neighbour, whichever edge the link belongs to; what it would
// read there is written into a copy of the links, so that a search has nothing else to look at.
//
// Ownership: plain data. Threads: as a standard container. Fails: reading and marking never do.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <utility>
#include <vector>

#include "TernCoreKit/wayfinding/detail/Graph.hpp"

namespace tern::inline v5::detail {

class GridGraph;

// A set of indices of one kind.
template <Index I>
class Marks {
 public:
  explicit Marks(std::size_t count) : words_(count / 64 + 1) {}

  bool has(I index) const {
    return (words_[numberOf(index) / 64] >> numberOf(index) % 64 & 1) != 0;
  }
  void mark(I index, bool isIn) {
    const std::uint64_t bit = std::uint64_t{1} << numberOf(index) % 64;
    std::uint64_t& word = words_[numberOf(index) / 64];
    word = isIn ? word | bit : word & ~bit;
  }

 private:
  std::vector<std::uint64_t> words_;
};

// Edges that are closed or opened together, with the links that a search judges by them.
struct Ways {
  std::vector<EdgeIndex> edges;
  std::vector<LinkIndex> links;
};

struct Blocks {
  Marks<EdgeIndex> edges;
  Links links;  // as a search takes them

  void mark(std::span<const EdgeIndex> edgeList, std::span<const LinkIndex> linkList, bool block);
};

// The mark of each of these edges, from the first to the one before the last; none at all when no
// edge is blocked.
std::vector<bool> marksOf(const Marks<EdgeIndex>& blocked, std::pair<EdgeIndex, EdgeIndex> range);

Blocks noBlocks(const GridGraph& graph);

// Adds the node's edges that join the id; all of its edges without one.
void addWaysFrom(const GridGraph& graph, Position from, std::optional<std::int64_t> joining,
                 Ways& ways);
// Adds, for each of these nodes once, the edges that join the id.
void addWaysInto(const GridGraph& graph, std::int64_t id, std::vector<Position> neighbours,
                 Ways& ways);
// The node's first edge that joins the id, or none.
EdgeIndex firstEdgeJoining(const GridGraph& graph, Position from, std::int64_t id);

}  // namespace tern::detail
