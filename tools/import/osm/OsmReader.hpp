// Reads what OpenStreetMap knows of the inside of a building: Simple Indoor Tagging, as XML or as
// .osm.pbf. Rooms and corridors become ways, those that are drawn are joined to them.
//
// Threads: free functions. Fails: by value, with one line.
#pragma once

#include "tools/import/draft/ReadDraft.hpp"
#include "tools/import/source/SourceFiles.hpp"

namespace tern::imports {

ReadDraft readOsm(const SourceFiles& source);

}  // namespace tern::imports
