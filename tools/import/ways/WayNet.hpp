// A net of straight ways, made thin: of ways that lead alongside each other one is enough.
//
// A greedy spanner takes the ways from the shortest to the longest and keeps one unless those that
// are kept already join its ends with little more walking (I. Althoefer, G. Das, D. Dobkin, D.
// Joseph, J. Soares, "On sparse spanners of weighted graphs", 1993). So whatever way is left out,
// the walk stays shorter than `stretch` times what it was. What a search learns about other ways is
// kept, as in P. Bose, P. Carmi, M. Farshi, A. Maheshwari, M. Smid, "Computing the greedy spanner
// in near-quadratic time", 2010.
//
// Ownership: plain values. Threads: free functions. Fails: never.
#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "tools/import/ways/Sight.hpp"

namespace tern::imports {

// Gives up when more than `most` ways between the first `stops` nodes are kept: what is kept then
// has more of them, and says no more. REQUIRES: ways from the shortest to the longest.
std::vector<StraightWay> thinned(const Sight& sight, double stretch, std::size_t stops = 0,
                                 std::size_t most = 0);

// Of the ways only those that a shortest walk between two of the first `stops` nodes takes.
std::vector<StraightWay> usedOf(std::size_t nodes, std::span<const StraightWay> ways,
                                std::size_t stops);

}  // namespace tern::imports
