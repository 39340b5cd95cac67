// Lines and outlines of OpenStreetMap records on the plane.
//
// Threads: free functions. Fails: what is no shape near the site is empty.
#pragma once

#include <cstdint>
#include <vector>

#include "tools/import/osm/OsmNodes.hpp"
#include "tools/import/osm/OsmSelection.hpp"
#include "tools/import/ways/Shapes.hpp"

namespace tern::imports {

// Farther than ten kilometres from the middle of what is indoors is another place.
bool isNearSite(Point at);

// Of the nodes that are there.
Line osmLine(const OsmNodes& nodes, const std::vector<std::int64_t>& ids);
Shapes osmShapes(const OsmNodes& nodes, const OsmOutline& outline);

// Amid the corners, and within.
Point middleOfShape(const Polygon& shape);

}  // namespace tern::imports
