// Which levels of a file are floors, and what they are called.
//
// Threads: a free function. Fails: never; levels that are no floor are told of.
#pragma once

#include <cstddef>
#include <map>
#include <vector>

#include "tools/import/draft/Draft.hpp"
#include "tools/import/osm/OsmSelection.hpp"

namespace tern::imports {

// Floors by level.
using OsmFloors = std::map<double, std::size_t>;

// Adds them to the draft, from the lowest to the highest. A level is a floor where something lies
// on it alone, or where something lies on it among others and stairs or a lift lead to it: a shop
// on "0;2" alone makes no third floor.
OsmFloors addOsmFloors(const OsmSelection& found, Draft& draft);

}  // namespace tern::imports
