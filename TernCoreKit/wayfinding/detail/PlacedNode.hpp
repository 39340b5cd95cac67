// A node, of whichever source, with the places of its neighbours in a graph.
//
// Ownership: a value. Threads: as a standard container. Fails: never.
#pragma once

#include <cstdint>
#include <vector>

#include "TernCoreKit/wayfinding/detail/Index.hpp"

namespace tern::inline v5::detail {

struct PlacedNode {
  struct Neighbour {
    std::int64_t nodeId;
    Position position;  // noPosition where the graph does not know it
  };

  std::int64_t nodeId;
  std::int64_t mapId;
  std::vector<Neighbour> neighbours;

  std::vector<Position> knownNeighbours() const {
    std::vector<Position> known;
    for (const Neighbour& neighbour : neighbours) {
      if (neighbour.position != noPosition) known.push_back(neighbour.position);
    }
    return known;
  }
};

}  // namespace tern::detail
