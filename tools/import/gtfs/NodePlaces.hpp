// Places the nodes of which a feed says no place: each lies between its neighbours, the nearer to
// one the shorter the pathway there.
//
// A node is the mean of its neighbours, weighted by one over the length of the pathways to them;
// all of them at once, by going round until nothing moves. What hangs at the end of a way, where
// that mean is its neighbour's own place, lies as far from it as the pathway is long. No node that
// is placed comes to lie at the point of another on its floor.
//
// Threads: free functions. Fails: never.
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <vector>

#include "tools/import/draft/LocalPlane.hpp"

namespace tern::imports {

struct PlacedNode {
  // Where the feed says it.
  std::optional<Point> stated;
  std::size_t floor = 0;
  // Where it begins, with its neighbours, when none of them leads to a place.
  Point fallback;
};

struct PlacedLink {
  std::size_t from = 0;
  std::size_t to = 0;
  double metres = 1;
};

// In the order of the nodes. REQUIRES: links between them, longer than 0.
std::vector<Point> placesOf(std::span<const PlacedNode> nodes, std::span<const PlacedLink> links);

}  // namespace tern::imports
