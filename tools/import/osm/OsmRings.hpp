// Rings put together from the ways of a multipolygon.
//
// Ownership: plain values. Threads: a free function. Fails: never; what closes to no ring is
// counted.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace tern::imports {

// Nodes; the last one leads to the first, which does not stand there twice.
using OsmRing = std::vector<std::int64_t>;

struct OsmRings {
  std::vector<OsmRing> rings;
  // Ways that are part of none.
  std::size_t loose = 0;
};

// Of ways given by their nodes, in whatever order and direction they are.
OsmRings osmRings(std::span<const std::vector<std::int64_t>* const> ways);

}  // namespace tern::imports
