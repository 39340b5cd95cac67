// Takes out of the areas of a site what cannot be walked there. An area of which nothing would be
// left stays as it is.
//
// Threads: free functions. Fails: never.
#pragma once

#include <cstddef>

#include "tools/import/ways/Shapes.hpp"
#include "tools/import/ways/SiteWays.hpp"

namespace tern::imports {

// What stands in the way on a floor.
void cutObstacles(Site& site, std::size_t floor, const Shapes& obstacles);

// Of units over each other the smaller one has walls: stairs on a stage, a booth in a hall.
void cutSmallerAreas(Site& site);

}  // namespace tern::imports
