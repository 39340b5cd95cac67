#include "tools/import/imdf/ImdfShapes.hpp"

#include <algorithm>
#include <utility>

#include "tools/import/source/GeoJson.hpp"
#include "tools/import/ways/PlaneGeometry.hpp"

namespace tern::imports {

namespace {

// Farther from the middle of the site is another place.
constexpr double mostSiteMetres = 30'000;

bool isNearSite(Point at) { return lengthOf(at) <= mostSiteMetres; }

Line onPlane(const LocalPlane& plane, const GlobeLine& line) {
  Line points;
  for (const LonLat at : line) points.push_back(plane.at(at));
  return points;
}

}  // namespace

std::optional<Point> imdfPoint(const LocalPlane& plane, const Value& geometry) {
  const auto globe = globePoint(geometry, PlaneSystem());
  if (!globe) return std::nullopt;
  const Point at = plane.at(*globe);
  return isNearSite(at) ? std::optional(at) : std::nullopt;
}

std::vector<Line> imdfLines(const LocalPlane& plane, const Value& geometry) {
  std::vector<Line> lines;
  for (const GlobeLine& globe : globeLines(geometry, PlaneSystem())) {
    Line line = onPlane(plane, globe);
    if (std::ranges::all_of(line, isNearSite)) lines.push_back(std::move(line));
  }
  return lines;
}

std::vector<Polygon> imdfPolygons(const LocalPlane& plane, const Value& geometry) {
  const auto globe = globePolygons(geometry, PlaneSystem());
  if (!globe) return {};
  std::vector<Polygon> shapes;
  for (const GlobePolygon& polygon : *globe) {
    Polygon shape;
    for (const GlobeLine& ring : polygon) shape.rings.push_back(onPlane(plane, ring));
    if (!std::ranges::all_of(shape.rings.front(), isNearSite)) return {};
    shapes.push_back(std::move(shape));
  }
  return shapes;
}

}  // namespace tern::imports
