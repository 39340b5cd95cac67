// Reads pedestrian networks: node and link GeoJSON with floor ordinals, and the floor plans that
// lie beside them.
//
// All parts of a site are one building, and all floors of one ordinal are one floor.
//
// Threads: free functions. Fails: by value, with one line.
#pragma once

#include "tools/import/draft/ReadDraft.hpp"
#include "tools/import/source/SourceFiles.hpp"

namespace tern::imports {

ReadDraft readNetwork(const SourceFiles& source);

}  // namespace tern::imports
