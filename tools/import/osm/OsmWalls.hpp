// Walls as areas that nobody walks through, each stretch open where a door is on it.
//
// Threads: a free function. Fails: never.
#pragma once

#include <set>

#include "tools/import/osm/OsmNodes.hpp"
#include "tools/import/ways/Shapes.hpp"

namespace tern::imports {

// The nodes of all doors that are open to the public.
Shapes wallShapes(const OsmNodes& nodes, const OsmWay& wall, const std::set<std::int64_t>& doors);

}  // namespace tern::imports
