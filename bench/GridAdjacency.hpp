// A grid's links as the peers read them.
#pragma once

#include "TernCoreKit/wayfinding/TernASGrid.hpp"
#include "bench/Adjacency.hpp"

namespace tern::bench {

Adjacency adjacencyOf(const TernASGrid& grid);

}  // namespace tern::bench
