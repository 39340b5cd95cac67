// The search loop over a graph: best first by accumulated cost, with no estimate of what is left.
//
// Source: E. W. Dijkstra, A note on two problems in connexion with graphs, Numerische Mathematik 1,
// 1959; with an open list that is not reordered when a score drops, and closed nodes that are never
// opened again, also where costs are negative.
#pragma once

#include <vector>

#include "TernCoreKit/wayfinding/detail/Graph.hpp"
#include "TernCoreKit/wayfinding/detail/SearchState.hpp"

namespace tern::inline v5::detail {

// Searches from `start` until a marked goal is taken off the open list, over links whose rank lies
// below `limit`. Gives that goal, or none. Scores, parents and the links used stay in the state.
// Touches only what it reaches; allocates nothing. REQUIRES: `links` are the graph's or a copy of
// them, some of which are closed; the state is as large as the graph, cleared, and has every goal
// marked.
Position searchGraph(const Graph& graph, const Links& links, SearchState& state, Position start,
                     TypeRank limit);

// A node that a search has closed, and how it was come to.
struct Settled {
  Position node;
  Position parent;  // none for the start
  LinkIndex link;   // the one that led there from the parent
};

// The same without a goal: `settled` becomes all nodes that are reached, in the order in which they
// were closed, so that each stands behind its parent. REQUIRES: no goal is marked. Allocates while
// `settled` is smaller than the graph.
void searchWhole(const Graph& graph, const Links& links, SearchState& state, Position start,
                 TypeRank limit, std::vector<Settled>& settled);

}  // namespace tern::detail
