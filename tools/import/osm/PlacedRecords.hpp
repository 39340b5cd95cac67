// Takes the nodes and ways that a file has only where others say how they lie: the nodes of a way,
// and the ways of a relation, as the Overpass API writes them when it is asked for geometry.
//
// Threads: a free function. Fails: never; a record that is there itself stays as it is.
#pragma once

#include "tools/import/osm/OsmData.hpp"

namespace tern::imports {

// Corners of a placed way are the nodes that lie there, else new ones.
void addPlacedRecords(OsmData& data);

}  // namespace tern::imports
