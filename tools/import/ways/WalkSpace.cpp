#include "tools/import/ways/WalkSpace.hpp"

#include <algorithm>
#include <utility>
#include <vector>

#include "tools/import/ways/PlaneGeometry.hpp"

namespace tern::imports {

namespace {

// What a curved wall may be straightened by.
constexpr double straightenedMetres = 0.02;
// By which what is put together overlaps.
constexpr double overlapMetres = 0.04;
// What is nearer to a wall than this lies along it.
constexpr double alongMetres = 1e-5;
// About a door that nothing else reaches.
constexpr double doorwayMetres = 1;
// How many of the nearest points are tried.
constexpr std::size_t mostTried = 12;

// Half the widths that are tried in necks, one after another.
constexpr double narrowerMetres[] = {0.25, 0.12, 0.04, 0};

bool isAlong(const Shapes& shapes, Point at) {
  return std::ranges::any_of(shapes, [&](const Polygon& shape) {
    return apart(nearestOnRings(shape, at), at) < alongMetres;
  });
}

// How often the part opens to what it was cut from: the stretches of its edge that are no walls.
std::size_t mouthsOf(const Polygon& part, const Shapes& walls) {
  std::size_t mouths = 0;
  for (const Line& ring : part.rings) {
    std::vector<bool> isWall;
    for (std::size_t i = 0; i < ring.size(); ++i) {
      isWall.push_back(isAlong(walls, between(ring[i], ring[(i + 1) % ring.size()], 0.5)));
    }
    std::size_t ends = 0;
    for (std::size_t i = 0; i < ring.size(); ++i) {
      if (!isWall[i] && isWall[(i + 1) % ring.size()]) ++ends;
    }
    const bool isAllMouth = std::ranges::none_of(isWall, [](bool wall) { return wall; });
    mouths += isAllMouth ? 1 : ends;
  }
  return mouths;
}

class SpaceMaker {
 public:
  SpaceMaker(const Polygon& area, std::span<const Point> doors)
      : area_(area), doors_(doors), walls_(area) {}

  Shapes make() {
    space_ = simplified(shrunk({area_}, halfPersonMetres + straightenedMetres), straightenedMetres);
    added_.emplace_back(halfPersonMetres, space_);
    for (const double half : narrowerMetres) addNecks(half);
    for (const Point door : doors_) {
      if (!isReached(door)) addDoorway(door);
    }
    return isWhole() ? space_ : Shapes{area_};
  }

 private:
  bool isWhole() const {
    return space_.size() == 1 &&
           std::ranges::all_of(doors_, [&](Point door) { return isReached(door); });
  }

  bool isReached(Point door) const { return stepInside(space_, walls_, door).has_value(); }

  // Of what is left of the area at this width the parts that lead from one part of the space to
  // another or to a door.
  void addNecks(double half) {
    const Shapes wide = half > 0 ? shrunk({area_}, half) : Shapes{area_};
    Shapes necks = wide;
    for (const auto& [before, shapes] : added_) {
      if (!shapes.empty()) necks = cut(necks, widened(shapes, before - half + overlapMetres));
    }
    std::erase_if(necks, [&](const Polygon& neck) { return !isOfUse(neck, wide, half); });
    if (necks.empty()) return;
    const double reach = halfPersonMetres - half + 2 * overlapMetres;
    Shapes pieces = common(widened(necks, reach), wide);
    space_ = joined(space_, pieces);
    added_.emplace_back(half, std::move(pieces));
  }

  bool isOfUse(const Polygon& neck, const Shapes& wide, double half) const {
    const bool hasLostDoor = std::ranges::any_of(doors_, [&](Point door) {
      return apart(nearestIn(neck, door), door) <= 2 * half + overlapMetres && !isReached(door);
    });
    return hasLostDoor || space_.empty() || mouthsOf(neck, wide) > 1;
  }

  void addDoorway(Point door) {
    const Point reach{doorwayMetres, doorwayMetres};
    const Point low = door - reach;
    const Point high = door + reach;
    Shapes doorway = common({{{{low, {high.x, low.y}, high, {low.x, high.y}}}}}, {area_});
    std::erase_if(doorway, [&](const Polygon& part) {
      return apart(nearestIn(part, door), door) > alongMetres;
    });
    space_ = joined(space_, doorway);
  }

  const Polygon& area_;
  std::span<const Point> doors_;
  WallGrid walls_;
  Shapes space_;
  // What it is made of, with half the width that is free about it.
  std::vector<std::pair<double, Shapes>> added_;
};

}  // namespace

Shapes walkSpaceOf(const Polygon& area, std::span<const Point> doors) {
  return SpaceMaker(area, doors).make();
}

std::optional<Point> stepInside(const Shapes& space, const WallGrid& walls, Point from) {
  std::vector<std::pair<double, Point>> nearest;
  for (const Polygon& part : space) {
    if (holds(part, from)) return from;
    forEachSide(part, [&](Point a, Point b) {
      const Point at = nearestOn(a, b, from);
      nearest.emplace_back(apart(at, from), at);
    });
  }
  const std::size_t tried = std::min(nearest.size(), mostTried);
  const auto last = nearest.begin() + static_cast<std::ptrdiff_t>(tried);
  std::ranges::partial_sort(nearest, last);
  const auto seen = std::find_if(nearest.begin(), last, [&](const auto& candidate) {
    return !walls.areCrossed(from, candidate.second);
  });
  return seen == last ? std::nullopt : std::optional(seen->second);
}

}  // namespace tern::imports
