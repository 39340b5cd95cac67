// Reads the shapes of GeoJSON onto the globe.
//
// Ownership: plain values. Threads: free functions. Fails: by value: a shape with a coordinate that
// is no place gives none.
#pragma once

#include <optional>
#include <vector>

#include "TernCoreKit/platform/Value.hpp"
#include "tools/import/source/PlaneSystem.hpp"

namespace tern::imports {

using GlobeLine = std::vector<LonLat>;
using GlobePolygon = std::vector<GlobeLine>;

// The system that a document says its coordinates are in, longitude and latitude where it says
// none; none for one that is not known.
std::optional<PlaneSystem> statedPlaneSystem(const Value& document);

// Of a Point, or of a MultiPoint of one.
std::optional<LonLat> globePoint(const Value& geometry, const PlaneSystem& system);
// Of a LineString, or of a MultiLineString whose lines each begin where the one before ends; of two
// points or more.
std::optional<GlobeLine> globeLine(const Value& geometry, const PlaneSystem& system);
// Of a LineString, or all of a MultiLineString, each of two points or more; none where one is not.
std::vector<GlobeLine> globeLines(const Value& geometry, const PlaneSystem& system);
// Of a Polygon or a MultiPolygon, each ring without its last point, which is its first; of at least
// one, each with three points or more.
std::optional<std::vector<GlobePolygon>> globePolygons(const Value& geometry,
                                                       const PlaneSystem& system);

}  // namespace tern::imports
