// Where a venue of OpenStreetMap is, what it is called, and in which language its names are.
//
// Threads: a free function. Fails: never.
#pragma once

#include <span>
#include <string>

#include "tools/import/draft/Draft.hpp"
#include "tools/import/osm/OsmArea.hpp"
#include "tools/import/osm/OsmNodes.hpp"
#include "tools/import/osm/OsmSelection.hpp"

namespace tern::imports {

// The plane touches the globe amid what is indoors. False where nothing is.
bool placeOsm(const OsmSelection& found, const OsmNodes& nodes, Draft& draft);

// By the building that most areas lie in, else by what it lies on, else by the file.
void nameOsmVenue(Draft& draft, const std::string& file, const OsmSelection& found,
                  const OsmNodes& nodes, std::span<const OsmArea> areas);

}  // namespace tern::imports
