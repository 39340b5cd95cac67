// The navigation graph as a search reads it: flat arrays, addressed by position.
//
// Ownership: plain data. Threads: once laid out it is never changed; any number of readers.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "TernCoreKit/wayfinding/detail/EdgeLists.hpp"
#include "TernCoreKit/wayfinding/detail/Index.hpp"
#include "TernCoreKit/wayfinding/detail/NodeOrder.hpp"

namespace tern::inline v5::detail {

// One directed link to a neighbour. It may be used when its type's rank lies below the number of
// types that a level admits; a link that leads to no node has no rank, and so never may. Where it
// is closed its rank lies above those of all types.
struct Link {
  static constexpr std::uint32_t closedBit = 1U << 31U;

  Position target;
  float cost;
  TypeRank rank;

  bool isClosed() const { return (numberOf(rank) & closedBit) != 0; }
  // REQUIRES: the link leads to a node.
  void setClosed(bool closed) {
    rank = TypeRank{(numberOf(rank) & ~closedBit) | (closed ? closedBit : 0)};
  }
};
static_assert(sizeof(Link) == 12);

using Links = Indexed<LinkIndex, Link>;

struct Graph {
  Indexed<Position, LinkIndex> firstLink;  // one more than there are nodes
  Links links;
  // Whether the points of its nodes do not tell what a route over a link is longer by.
  bool listsDistances = false;
  // Then it stands here for each link; else this is empty.
  Indexed<LinkIndex, float> distances;
  // Whether each walk costs just its length.
  bool walksCostTheirLength = true;
  // Whether every link's cost is a finite number and none is negative.
  bool costsArePlain = true;

  std::size_t nodeCount() const { return firstLink.empty() ? 0 : firstLink.size() - 1; }
  LinkIndex endOf(Position node) const { return firstLink[Position{numberOf(node) + 1}]; }
  std::span<const Link> linksOf(Position node) const {
    const std::uint32_t first = numberOf(firstLink[node]);
    return {links.data() + first, numberOf(endOf(node)) - first};
  }
};

// A node's links stand in the order of its edges and of their ends.
Graph layGraph(const VenueFacts& facts, const LinkBounds& bounds, const EdgeLists& edges,
               const NodeOrder& order);

}  // namespace tern::detail
