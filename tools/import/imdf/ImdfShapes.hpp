// The shapes of features on the plane of a site. What is not near the site is none.
//
// Threads: free functions. Fails: by value, with nothing.
#pragma once

#include <optional>
#include <vector>

#include "TernCoreKit/platform/Value.hpp"
#include "tools/import/draft/Draft.hpp"

namespace tern::imports {

std::optional<Point> imdfPoint(const LocalPlane& plane, const Value& geometry);
// Those of several that are near the site.
std::vector<Line> imdfLines(const LocalPlane& plane, const Value& geometry);
std::vector<Polygon> imdfPolygons(const LocalPlane& plane, const Value& geometry);

}  // namespace tern::imports
