// Where one goes through a door: in its middle, through a wide one in several places.
//
// Threads: a free function. Fails: never; a door without a length is gone through nowhere.
#pragma once

#include <vector>

#include "tools/import/draft/Draft.hpp"

namespace tern::imports {

struct Crossing {
  Point at;
  // Across the door, a metre long.
  Point normal;
};

std::vector<Crossing> crossingsOf(const Line& door);

}  // namespace tern::imports
