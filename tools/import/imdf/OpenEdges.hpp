// Where halls and corridors of a level lie side by side without an opening between them, as parts
// of one open space do: one goes from the one to the other over all of the edge that they share.
//
// Threads: a free function. Fails: never.
#pragma once

#include <span>

#include "tools/import/ways/AreaUse.hpp"
#include "tools/import/ways/SiteWays.hpp"

namespace tern::imports {

// Adds to the site's doors. The uses are by area: indoors only what is indoors is open, outdoors
// what is outdoors.
void addOpenEdges(Site& site, std::span<const AreaUse> uses);

}  // namespace tern::imports
