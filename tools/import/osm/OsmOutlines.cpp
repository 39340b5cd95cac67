#include "tools/import/osm/OsmOutlines.hpp"

#include <algorithm>
#include <utility>

#include "tools/import/ways/PlaneGeometry.hpp"

namespace tern::imports {

namespace {

constexpr double mostAsideOfWall = 0.5;
constexpr double besideWallMetres = 0.1;
// The wall turns less than this, as the cosine of the angle: the door lies across the bend.
constexpr double leastStraight = 0.8;

Line acrossOf(Point at, Point way, double metres) {
  const Point step = way * (metres / 2 / std::max(lengthOf(way), 1e-9));
  return {at - step, at + step};
}

// From the corner on, no longer than the wall. REQUIRES: a wall of some length.
Line besideCorner(Point corner, Point wall, double metres) {
  const double length = lengthOf(wall);
  const double width = std::min(metres, length);
  return acrossOf(corner + wall * (width / 2 / length), wall, width);
}

}  // namespace

OsmOutlines::OsmOutlines(std::span<const OsmArea> areas, PlaceOf placeOf)
    : areas_(areas), placeOf_(std::move(placeOf)) {
  for (std::size_t area = 0; area < areas.size(); ++area) {
    for (std::size_t ring = 0; ring < areas[area].rings.size(); ++ring) {
      const OsmRing& nodes = areas[area].rings[ring];
      for (std::size_t i = 0; i < nodes.size(); ++i) spots_[nodes[i]].push_back({area, ring, i});
    }
  }
}

const std::vector<OsmOutlines::Spot>& OsmOutlines::spotsOf(std::int64_t node) const {
  static const std::vector<Spot> none;
  const auto spots = spots_.find(node);
  return spots == spots_.end() ? none : spots->second;
}

std::vector<std::size_t> OsmOutlines::floorsAt(std::int64_t node) const {
  std::vector<std::size_t> floors;
  for (const Spot& spot : spotsOf(node)) floors.push_back(areas_[spot.area].floor);
  std::ranges::sort(floors);
  const auto repeated = std::ranges::unique(floors);
  floors.erase(repeated.begin(), repeated.end());
  return floors;
}

bool OsmOutlines::isOnWall(std::int64_t node, std::size_t floor) const {
  return std::ranges::any_of(spotsOf(node), [&](const Spot& spot) {
    return areas_[spot.area].floor == floor && areas_[spot.area].meaning.isWalled;
  });
}

bool OsmOutlines::shareWall(std::int64_t a, std::int64_t b, std::size_t floor) const {
  return std::ranges::any_of(spotsOf(a), [&](const Spot& first) {
    return areas_[first.area].floor == floor &&
           std::ranges::any_of(spotsOf(b),
                               [&](const Spot& other) { return other.area == first.area; });
  });
}

std::optional<Line> OsmOutlines::doorAt(std::int64_t node, std::size_t floor, double metres) const {
  const auto at = placeOf_(node);
  if (!at) return std::nullopt;
  // Rooms before corridors: theirs is the wall.
  for (const bool isWalled : {true, false}) {
    for (const Spot& spot : spotsOf(node)) {
      const OsmArea& area = areas_[spot.area];
      if (area.floor != floor || area.meaning.isWalled != isWalled) continue;
      if (auto line = doorOn(spot, *at, metres)) return line;
    }
  }
  return doorNear(*at, floor, metres);
}

std::optional<Line> OsmOutlines::doorOn(const Spot& spot, Point at, double metres) const {
  const OsmRing& ring = areas_[spot.area].rings[spot.ring];
  const auto before = placeOf_(ring[(spot.index + ring.size() - 1) % ring.size()]);
  const auto after = placeOf_(ring[(spot.index + 1) % ring.size()]);
  if (!before || !after) return std::nullopt;
  const Point in = at - *before;
  const Point out = *after - at;
  const double inMetres = lengthOf(in);
  const double outMetres = lengthOf(out);
  if (inMetres == 0 || outMetres == 0) return std::nullopt;
  const Point tangent = in * (1 / inMetres) + out * (1 / outMetres);
  if (dotOf(in, out) > leastStraight * inMetres * outMetres) return acrossOf(at, tangent, metres);
  // In a corner: beside it, in that of the two walls which has an area on either side, else in the
  // longer one.
  const Line behind = besideCorner(at, out, metres);
  const Line ahead = besideCorner(at, in * -1, metres);
  const std::size_t floor = areas_[spot.area].floor;
  const bool isBehind = isBetweenAreas(behind, floor);
  if (isBehind != isBetweenAreas(ahead, floor)) return isBehind ? behind : ahead;
  return outMetres >= inMetres ? behind : ahead;
}

bool OsmOutlines::isBetweenAreas(const Line& line, std::size_t floor) const {
  const Point middle = between(line.front(), line.back(), 0.5);
  const Point way = line.back() - line.front();
  const Point normal = Point{-way.y, way.x} * (besideWallMetres / lengthOf(way));
  return isInArea(middle + normal, floor) && isInArea(middle - normal, floor);
}

bool OsmOutlines::isInArea(Point at, std::size_t floor) const {
  return std::ranges::any_of(areas_, [&](const OsmArea& area) {
    return area.floor == floor && std::ranges::any_of(area.shapes, [&](const Polygon& shape) {
             return boxOf(shape).contains(at) && holds(shape, at);
           });
  });
}

std::optional<Line> OsmOutlines::doorNear(Point at, std::size_t floor, double metres) const {
  std::optional<Line> door;
  double least = mostAsideOfWall;
  for (const OsmArea& area : areas_) {
    if (area.floor != floor) continue;
    for (const Polygon& shape : area.shapes) {
      forEachSide(shape, [&](Point a, Point b) {
        const Point on = nearestOn(a, b, at);
        if (apart(on, at) >= least) return;
        least = apart(on, at);
        door = acrossOf(on, b - a, std::min(metres, apart(a, b)));
      });
    }
  }
  return door;
}

}  // namespace tern::imports
