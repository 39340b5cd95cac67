// Which areas lead from level to level: of stairs, lifts, escalators and ramps those that lie above
// each other, also past a level between.
//
// Ownership: plain values. Threads: free functions. Fails: never; what leads nowhere is told of.
#pragma once

#include <cstddef>
#include <span>
#include <vector>

#include "tools/import/ways/SiteWays.hpp"

namespace tern::imports {

struct Climb {
  // Areas.
  std::size_t low = 0;
  std::size_t high = 0;
};

// Beside those of which the site says it itself. By area how high its floor lies.
std::vector<Climb> climbsIn(const Site& site, std::span<const double> ordinals, Oddities& oddities);

// Lifts are lifts, whoever may use them.
LinkKind familyOf(LinkKind kind);

}  // namespace tern::imports
