// Builds a grid's graph from its records, in time and memory linear in the waypoints and path ends.
#pragma once

#include "TernCoreKit/wayfinding/detail/GridGraph.hpp"

namespace tern::detail {

// REQUIRES: nothing has been built into the grid yet.
void buildGraph(GridGraph& grid);

}  // namespace tern::detail
