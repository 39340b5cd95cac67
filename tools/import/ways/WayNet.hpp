// A net of straight ways, made thin: of ways that lead alongside each other one is enough.
//
// A greedy spanner takes the ways from the shortest to the longest and keeps one unless those that
// are kept already join its ends with little more walking (I. Althoefer, G. Das, D. Dobkin, D.
// Joseph, J. Soares, "On sparse spanners of weighted graphs", 1993). So whatever way is left out,
// the walk stays shorter than `stretch` times what it was.
//
// Ownership: plain values. Threads: free functions. Fails: never.
#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "tools/import/ways/Sight.hpp"

namespace tern::imports {

std::vector<StraightWay> thinned(const Sight& sight, double stretch);

// Of the ways only those that a shortest walk between two of the first `stops` nodes takes.
std::vector<StraightWay> usedOf(std::span<const Point> nodes, std::span<const StraightWay> ways,
                                std::size_t stops);

}  // namespace tern::imports
