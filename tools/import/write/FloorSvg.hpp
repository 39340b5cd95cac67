// The drawing of an imported floor: its outline, areas tinted by what they are, walls, doors and
// the names of places. A floor that the source draws nothing of shows its ways as bands.
//
// Every line and word stands out from what it lies on by 3:1 or more.
//
// Threads: free functions. Fails: never.
#pragma once

#include <cstddef>
#include <string>

#include "tools/import/write/VenuePlan.hpp"

namespace tern::imports {

// In the frame that all maps of the venue have.
std::string drawFloor(const VenuePlan& venue, std::size_t floor);

}  // namespace tern::imports
