#include "tools/import/ways/Sight.hpp"

#include <algorithm>
#include <cmath>

#include "tools/import/ways/PlaneGeometry.hpp"
#include "tools/import/ways/WallGrid.hpp"

namespace tern::imports {

namespace {

// What is nearer to a wall than this stands at it.
constexpr double atWallMetres = 1e-5;
// How far to the right of a wall, in parts of its length, a way may lead before it leads into it.
constexpr double roundingPart = 1e-7;

// A side of the space, with the space on the left of it.
struct Side {
  Point a;
  Point b;
};

// Where one stands, and which directions are free there as far as the walls right here tell.
class Standing {
 public:
  // A stop: free of the walls that it stands at.
  Standing(Point at, std::span<const Side> sides) : at_(at) {
    for (const Side& side : sides) {
      if (apart(nearestOn(side.a, side.b, at), at) < atWallMetres) walls_.push_back(wallOf(side));
    }
    if (walls_.size() == 2) isInnerCorner_ = isInnerCorner(walls_[0], walls_[1]);
  }

  // An inner corner of the space: only what goes past it.
  Standing(Point at, Point before, Point after)
      : at_(at), walls_{wallOf({at, before}), wallOf({at, after})}, isCorner_(true) {}

  Point at() const { return at_; }

  // `unit` is the way's direction.
  bool isFree(Point unit, double metres) const {
    if (isCorner_) {
      const double before = crossOf(walls_[0].unit, unit);
      const double after = crossOf(walls_[1].unit, unit);
      const bool isPast =
          std::min(before, after) >= -roundingPart || std::max(before, after) <= roundingPart;
      if (!isPast) return false;
    }
    const auto leadsPast = [&](const Wall& wall) { return this->leadsPast(wall, unit, metres); };
    if (std::ranges::any_of(walls_, leadsPast)) return false;
    if (isCorner_) return true;
    const auto isLeft = [&](const Wall& wall) { return crossOf(wall.unit, unit) >= -roundingPart; };
    return isInnerCorner_ ? std::ranges::any_of(walls_, isLeft)
                          : std::ranges::all_of(walls_, isLeft);
  }

 private:
  struct Wall {
    Side side;
    Point unit;
  };

  static Wall wallOf(const Side& side) {
    return {side, (side.b - side.a) * (1 / apart(side.a, side.b))};
  }

  // Along the wall and on: what comes then is seen from the wall's end, if anything is.
  bool leadsPast(const Wall& wall, Point unit, double way) const {
    if (std::abs(crossOf(wall.unit, unit)) > roundingPart) return false;
    const double metres = apart(at_, dotOf(wall.unit, unit) > 0 ? wall.side.b : wall.side.a);
    return metres > atWallMetres && metres + atWallMetres < way;
  }

  // Whether two sides that both end here make an inner corner.
  static bool isInnerCorner(const Wall& a, const Wall& b) {
    const double turn = crossOf(a.unit, b.unit);
    if (apart(a.side.b, b.side.a) < atWallMetres) return turn < 0;
    return apart(b.side.b, a.side.a) < atWallMetres && turn > 0;
  }

  Point at_;
  std::vector<Wall> walls_;
  bool isCorner_ = false;
  bool isInnerCorner_ = false;
};

void addCorners(const Line& ring, std::span<const Point> stops, std::vector<Standing>& standings) {
  for (std::size_t i = 0; i < ring.size(); ++i) {
    const Point before = ring[(i + ring.size() - 1) % ring.size()];
    const Point after = ring[(i + 1) % ring.size()];
    if (crossOf(ring[i] - before, after - ring[i]) >= 0) continue;
    const bool isStop =
        std::ranges::any_of(stops, [&](Point stop) { return apart(stop, ring[i]) < atWallMetres; });
    if (!isStop) standings.emplace_back(ring[i], before, after);
  }
}

}  // namespace

Sight sightIn(const Shapes& space, std::span<const Point> stops) {
  const Polygon rings = ringsOf(space);
  const WallGrid walls(rings);
  std::vector<Side> sides;
  forEachSide(rings, [&](Point a, Point b) { sides.push_back({a, b}); });
  std::vector<Standing> standings;
  for (const Point stop : stops) standings.emplace_back(stop, sides);
  for (const Line& ring : rings.rings) addCorners(ring, stops, standings);
  Sight sight;
  for (const Standing& standing : standings) sight.nodes.push_back(standing.at());
  for (std::uint32_t i = 0; i < standings.size(); ++i) {
    for (std::uint32_t k = i + 1; k < standings.size(); ++k) {
      const Point way = sight.nodes[k] - sight.nodes[i];
      const double metres = lengthOf(way);
      const Point unit = way * (1 / metres);
      if (!standings[i].isFree(unit, metres) || !standings[k].isFree(unit * -1, metres)) continue;
      if (walls.areCrossed(sight.nodes[i], sight.nodes[k])) continue;
      sight.ways.push_back({i, k, metres});
    }
  }
  return sight;
}

}  // namespace tern::imports
