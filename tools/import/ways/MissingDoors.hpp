// Doors that nobody drew: a room without one is entered where it lies along a corridor, over the
// middle of its longest stretch there, else along what is open outdoors, else along a room that is
// entered itself. A corridor without one is entered from outdoors. Stairs are entered at an end.
//
// Threads: a free function. Fails: never; each such room is told of.
#pragma once

#include <vector>

#include "tools/import/draft/Oddities.hpp"
#include "tools/import/ways/AreaUse.hpp"
#include "tools/import/ways/SiteWays.hpp"

namespace tern::imports {

// Adds to the site's doors. The uses are by area.
void addMissingDoors(Site& site, const std::vector<AreaUse>& uses, Oddities& oddities);

}  // namespace tern::imports
