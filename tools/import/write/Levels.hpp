// The levels that floors have in a venue, whole numbers without a gap, from the ordinals that a
// source gives them.
//
// Threads: free functions. Fails: never.
#pragma once

#include <vector>

#include "tools/import/draft/Draft.hpp"

namespace tern::imports {

// In the order of the floors. The ground has level 0: ordinal 0 where there is one, else the lowest
// floor with an entrance, else the lowest.
std::vector<int> levelsOf(const Draft& draft);

}  // namespace tern::imports
