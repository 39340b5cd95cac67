#include "tools/import/osm/OsmGeometry.hpp"

#include <algorithm>
#include <utility>

#include "tools/import/ways/PlaneGeometry.hpp"

namespace tern::imports {

namespace {

Shapes shapesOfRings(const OsmNodes& nodes, const std::vector<OsmRing>& rings) {
  constexpr std::size_t leastOfRing = 3;
  Shapes shapes;
  for (const OsmRing& ring : rings) {
    Line line = osmLine(nodes, ring);
    if (line.size() < leastOfRing || !std::ranges::all_of(line, isNearSite)) return {};
    shapes.push_back({{std::move(line)}});
  }
  return shapes;
}

}  // namespace

bool isNearSite(Point at) {
  constexpr double mostMetres = 10'000;
  return lengthOf(at) <= mostMetres;
}

Line osmLine(const OsmNodes& nodes, const std::vector<std::int64_t>& ids) {
  Line line;
  for (const std::int64_t id : ids) {
    if (const auto at = nodes.placeOf(id)) line.push_back(*at);
  }
  return line;
}

Shapes osmShapes(const OsmNodes& nodes, const OsmOutline& outline) {
  Shapes whole = shapesOfRings(nodes, outline.outer);
  if (whole.empty()) return {};
  // A single ring comes through as it is drawn.
  if (whole.size() > 1 || !outline.inner.empty()) {
    whole = repaired(whole);
    const Shapes holes = shapesOfRings(nodes, outline.inner);
    if (!holes.empty()) whole = cut(whole, repaired(holes));
  }
  return repaired(whole).empty() ? Shapes() : whole;
}

Point middleOfShape(const Polygon& shape) {
  Point sum;
  for (const Point at : shape.rings.front()) sum = sum + at;
  return nearestIn(shape, sum * (1 / static_cast<double>(shape.rings.front().size())));
}

}  // namespace tern::imports
