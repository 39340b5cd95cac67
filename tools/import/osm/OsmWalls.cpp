#include "tools/import/osm/OsmWalls.hpp"

#include "tools/import/osm/OsmCodes.hpp"
#include "tools/import/osm/OsmGeometry.hpp"
#include "tools/import/ways/PlaneGeometry.hpp"

namespace tern::imports {

Shapes wallShapes(const OsmNodes& nodes, const OsmWay& wall, const std::set<std::int64_t>& doors) {
  // What a wall takes of the room to walk is twice this.
  constexpr double halfWallMetres = 0.03;
  const Line line = osmLine(nodes, wall.refs);
  const auto gapAt = [&](std::int64_t node) {
    return doors.contains(node) ? osmDoorMetres(nodes.find(node)->tags) / 2 : 0;
  };
  Shapes shapes;
  for (std::size_t i = 1; i < line.size(); ++i) {
    const double length = apart(line[i - 1], line[i]);
    const double from = gapAt(wall.refs[i - 1]);
    const double to = length - gapAt(wall.refs[i]);
    if (to - from < halfWallMetres) continue;
    const Point way = (line[i] - line[i - 1]) * (1 / length);
    const Point aside = Point{-way.y, way.x} * halfWallMetres;
    const Point a = line[i - 1] + way * from;
    const Point b = line[i - 1] + way * to;
    shapes.push_back({{{a + aside, b + aside, b - aside, a - aside}}});
  }
  return shapes;
}

}  // namespace tern::imports
