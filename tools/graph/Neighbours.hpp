// Which nodes links join, whichever way these lead.
//
// Threads: free functions. Fails: never.
#pragma once

#include <cstdint>

#include "tools/graph/Components.hpp"

namespace tern::graph {

// Of each node those that links join it to: ascending, none twice.
Digraph neighboursIn(const Digraph& graph);

// Whether the node's neighbours are joined by links among themselves alone, as the stops of one
// lift are: without the node, each still leads to each. One neighbour does; none, or more than any
// lift has stops, do not.
bool areJoinedWithout(const Digraph& neighbours, std::uint32_t node);

}  // namespace tern::graph
