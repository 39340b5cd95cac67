// Reads OpenStreetMap's XML, as the map's own servers, its editors and the Overpass API write it.
//
// What an editor has marked as deleted is not there. Where ways and relations say themselves where
// they lie, as the Overpass API does when it is asked for geometry, that is read too; elements of
// other names are passed over.
//
// Threads: free functions. Fails: by value, with one line. XML that declares entities is refused.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "tools/import/osm/OsmGatherer.hpp"

namespace tern::imports {

// Reading ends where the budget does.
std::optional<std::string> readOsmXml(std::string_view bytes, OsmGatherer& gatherer);

}  // namespace tern::imports
