#include <algorithm>
#include <cmath>
#include <map>
#include <optional>
#include <set>
#include <utility>
#include <vector>

#include "TernCoreKit/model/collections/TernMapCollection.hpp"
#include "tools/check/Checks.hpp"
#include "tools/check/Strips.hpp"

namespace tern::check {

namespace {

// Drawings are rounded to whole map units, and walls have a breadth: what only touches a wall, or
// passes its end as closely as that, does not cross it.
constexpr double touchPx = 3;
// The path type that is walked on one level. Drawings show the treads of stairs and the rims of
// moving walkways as they show walls, and the ways on those lead over them.
constexpr std::int64_t walking = 1;
// How far beside a drawn door a way may pass the wall that it is in.
constexpr double doorMm = 500;

double side(const Segment& line, Point at) {
  const Point along{line.to.x - line.from.x, line.to.y - line.from.y};
  return (along.x * (at.y - line.from.y) - along.y * (at.x - line.from.x)) /
         std::hypot(along.x, along.y);
}

double distance(const Segment& line, Point at) {
  const Point along{line.to.x - line.from.x, line.to.y - line.from.y};
  const double squared = along.x * along.x + along.y * along.y;
  const double part =
      squared > 0
          ? std::clamp(((at.x - line.from.x) * along.x + (at.y - line.from.y) * along.y) / squared,
                       0.0, 1.0)
          : 0;
  return std::hypot(at.x - line.from.x - part * along.x, at.y - line.from.y - part * along.y);
}

// Where the way crosses the wall, clear of the ends of both.
std::optional<Point> crossing(const Segment& way, const Segment& wall) {
  const double from = side(wall, way.from);
  const double to = side(wall, way.to);
  const double start = side(way, wall.from);
  const double end = side(way, wall.to);
  const auto areApart = [](double a, double b) {
    return (a > touchPx && b < -touchPx) || (a < -touchPx && b > touchPx);
  };
  if (!areApart(from, to) || !areApart(start, end)) return std::nullopt;
  const double part = from / (from - to);
  return Point{std::lerp(way.from.x, way.to.x, part), std::lerp(way.from.y, way.to.y, part)};
}

class DrawnFloor {
 public:
  explicit DrawnFloor(const TernMap& map)
      : lines_(wallLinesOf(map.svg.text())),
        doorPx_(map.mmPerPixel.number() > 0 ? doorMm / map.mmPerPixel.number() : 0),
        walls_(lines_.walls, map.width.number(), 0),
        doors_(lines_.doors, map.width.number(), doorPx_) {}

  std::optional<Point> crossed(const Segment& way) const {
    std::optional<Point> at;
    walls_.any(way, [&](const Segment& wall) {
      const auto here = crossing(way, wall);
      if (here && !isAtDoor(*here)) at = here;
      return at.has_value();
    });
    return at;
  }

 private:
  bool isAtDoor(Point at) const {
    return doors_.any({at, at},
                      [&](const Segment& door) { return distance(door, at) <= doorPx_ + touchPx; });
  }

  const WallLines lines_;
  const double doorPx_;
  const Strips walls_;
  const Strips doors_;
};

class WallCheck {
 public:
  WallCheck(const Subject& subject, Findings& findings) : subject_(subject), findings_(findings) {
    for (const TernMap& map : subject.venue.maps->each()) {
      floors_.try_emplace(map.id.integer(), map);
    }
  }

  void check() {
    const Network& network = subject_.network;
    for (std::uint32_t node = 0; node < network.nodes().size(); ++node) {
      for (const Link& link : network.linksOf(node)) {
        const bool isWalk = link.pathType == walking && !network.changesMap(node, link);
        if (isWalk && node < link.to) checkLink(node, link);
      }
    }
  }

 private:
  void checkLink(std::uint32_t from, const Link& link) {
    const Node& a = subject_.network.nodes()[from];
    const Node& b = subject_.network.nodes()[link.to];
    const auto floor = floors_.find(a.map);
    const bool isLine = std::isfinite(a.at.x + a.at.y + b.at.x + b.at.y) && a.at != b.at;
    if (floor == floors_.end() || !isLine) return;
    const auto at = floor->second.crossed({a.at, b.at});
    if (!at) return;
    findings_.push_back(
        {Kind::throughWall,
         {link.path, a.id, b.id},
         a.map,
         "path " + std::to_string(link.path) + " from waypoint " + std::to_string(a.id) + " to " +
             std::to_string(b.id) + onFloor(subject_, a.map) + " crosses a wall at " +
             std::to_string(std::llround(at->x)) + "," + std::to_string(std::llround(at->y))});
  }

  const Subject& subject_;
  Findings& findings_;
  std::map<std::int64_t, DrawnFloor> floors_;
};

}  // namespace

void checkWalls(const Subject& subject, Findings& findings) {
  if (subject.venue.maps != nullptr) WallCheck(subject, findings).check();
}

}  // namespace tern::check
