#include "tools/import/ways/AreaWays.hpp"

#include <cmath>
#include <cstdint>
#include <iterator>
#include <limits>
#include <map>
#include <utility>

#include "tools/import/ways/PlaneGeometry.hpp"
#include "tools/import/ways/WalkSpace.hpp"
#include "tools/import/ways/WallGrid.hpp"
#include "tools/import/ways/WayNet.hpp"

namespace tern::imports {

namespace {

// How much longer walks may get, one after another, until the ways are few enough.
constexpr double stretches[] = {1.02, 1.03, 1.05, 1.1, 1.2, 1.4};
// From here on a stop counts as a corner: many places in a plain room take ways of their own.
constexpr double fairStretch = 1.05;
constexpr std::size_t waysOfCorner = 10;
// One stop of so many nodes is few.
constexpr std::size_t fewStopsPart = 16;
// What looking for all walks may take, in ways looked at from each stop.
constexpr std::size_t mostWalkSteps = 100'000'000;
// Stops that are nearer than this are one.
constexpr double sameStopMetres = 0.01;
// A stop so near to a corner stands at it.
constexpr double atCornerMetres = 1e-4;

class Stops {
 public:
  explicit Stops(const Shapes& space) : space_(space) {}

  std::size_t add(Point at) {
    const auto key = [](double metres) {
      return static_cast<std::int64_t>(std::llround(metres / sameStopMetres));
    };
    const auto [known, isNew] = known_.try_emplace({key(at.x), key(at.y)}, points_.size());
    if (isNew) points_.push_back(atCorner(at));
    return known->second;
  }

  const std::vector<Point>& points() const { return points_; }

 private:
  Point atCorner(Point at) const {
    for (const Polygon& part : space_) {
      for (const Line& ring : part.rings) {
        for (const Point corner : ring) {
          if (apart(corner, at) < atCornerMetres) return corner;
        }
      }
    }
    return at;
  }

  const Shapes& space_;
  std::map<std::pair<std::int64_t, std::int64_t>, std::size_t> known_;
  std::vector<Point> points_;
};

// All of them where looking for walks from every stop would take too long.
std::vector<StraightWay> usedIfSoon(std::size_t nodes, std::vector<StraightWay> ways,
                                    std::size_t stops) {
  if (stops * ways.size() > mostWalkSteps) return ways;
  return usedOf(nodes, ways, stops);
}

std::vector<StraightWay> waysOf(Sight& sight, std::size_t stops, std::size_t corners) {
  const std::size_t nodes = sight.nodes.size();
  // Between few stops most of what is seen is of no use, and soon told from the rest.
  if (stops * fewStopsPart <= nodes) {
    sight.ways = usedIfSoon(nodes, std::move(sight.ways), stops);
  }
  std::vector<StraightWay> ways;
  for (const double stretch : stretches) {
    const std::size_t counted = stretch < fairStretch ? corners : corners + stops;
    const bool isLast = stretch == std::end(stretches)[-1];
    const std::size_t most = isLast ? sight.ways.size() : waysOfCorner * counted;
    ways = usedIfSoon(nodes, thinned(sight, stretch, stops, most), stops);
    if (ways.size() <= most) break;
  }
  return ways;
}

// Stops, and of the corners only those that ways lead to.
void keepUsedNodes(AreaWays& ways, const std::vector<Point>& nodes, std::size_t stops) {
  constexpr std::uint32_t none = std::numeric_limits<std::uint32_t>::max();
  ways.nodes.assign(nodes.begin(), nodes.begin() + static_cast<std::ptrdiff_t>(stops));
  std::vector<std::uint32_t> kept(nodes.size(), none);
  for (std::uint32_t i = 0; i < stops; ++i) kept[i] = i;
  const auto keep = [&](std::uint32_t& node) {
    if (kept[node] == none) {
      kept[node] = static_cast<std::uint32_t>(ways.nodes.size());
      ways.nodes.push_back(nodes[node]);
    }
    node = kept[node];
  };
  for (StraightWay& way : ways.ways) {
    keep(way.from);
    keep(way.to);
  }
}

}  // namespace

AreaWays waysIn(const Polygon& area, std::span<const Point> doors, std::span<const Point> places) {
  std::vector<Point> all(doors.begin(), doors.end());
  all.insert(all.end(), places.begin(), places.end());
  const Shapes space = walkSpaceOf(area, all);
  const WallGrid walls(area);
  AreaWays ways;
  Stops stops(space);
  for (const Point door : doors) {
    ways.ofDoor.push_back(stops.add(stepInside(space, walls, door).value_or(door)));
  }
  for (const Point place : places) {
    const Point at = stepInside(space, walls, place).value_or(nearestIn(space.front(), place));
    ways.ofPlace.push_back(stops.add(at));
  }
  const std::size_t count = stops.points().size();
  Sight sight = sightIn(space, stops.points());
  ways.ways = waysOf(sight, count, cornersOf(area));
  keepUsedNodes(ways, sight.nodes, count);
  return ways;
}

}  // namespace tern::imports
