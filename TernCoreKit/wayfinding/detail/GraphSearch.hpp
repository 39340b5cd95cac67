// The search loop over a graph: best first by accumulated cost, with no estimate of what is left.
//
// Source: E. W. Dijkstra, A note on two problems in connexion with graphs, Numerische Mathematik 1,
// 1959; with an open list that is not reordered when a score drops, and closed nodes that are never
// opened again, also where costs are negative.
#pragma once

#include <cstdint>

#include "TernCoreKit/wayfinding/detail/Graph.hpp"

namespace tern::detail {

// Marks a node as a goal of the search to come. REQUIRES: the last search has been cleared.
void markGoal(Graph& graph, Position position);

// Searches from `start` until a marked goal is taken off the open list, over links whose gate lies
// below `gateLimit`. Gives that goal, or none. Scores, distances and parents stay in the graph's
// states. Touches only what it reaches; allocates only when the open list outgrows its last size.
// REQUIRES: the last search has been cleared and every goal is marked.
Position searchGraph(Graph& graph, Position start, std::uint32_t gateLimit);

}  // namespace tern::detail
