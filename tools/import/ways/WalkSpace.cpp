#include "tools/import/ways/WalkSpace.hpp"

#include <algorithm>
#include <cmath>
#include <iterator>
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
// A step into the space, from the corner of a room at most.
constexpr double mostStepMetres = 0.8;
// About what nothing else reaches.
constexpr double leastAroundMetres = 0.5;
constexpr double mostAroundMetres = 1e5;
// How many of the nearest points are tried.
constexpr std::size_t mostTried = 12;

// Half the widths that are tried in necks, one after another.
constexpr double narrowerMetres[] = {0.25, 0.12, 0.04, 0};

// How often the part opens to what it was cut from: the stretches of its edge that are no walls.
std::size_t mouthsOf(const Polygon& part, const WallGrid& walls) {
  std::size_t mouths = 0;
  for (const Line& ring : part.rings) {
    std::vector<bool> isWall;
    for (std::size_t i = 0; i < ring.size(); ++i) {
      const Point middle = between(ring[i], ring[(i + 1) % ring.size()], 0.5);
      isWall.push_back(walls.areNear(middle, alongMetres));
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

// Where two parts come nearest to each other.
std::pair<Point, Point> nearestOf(const Polygon& part, const Polygon& other) {
  std::pair<Point, Point> nearest;
  double least = HUGE_VAL;
  const auto look = [&](const Polygon& from, const Polygon& to) {
    forEachSide(from, [&](Point at, Point) {
      const Point near = nearestOnRings(to, at);
      if (apart(at, near) >= least) return;
      least = apart(at, near);
      nearest = {at, near};
    });
  };
  look(part, other);
  look(other, part);
  return nearest;
}

class SpaceMaker {
 public:
  SpaceMaker(const Polygon& area, std::span<const Point> stops) : area_(area), walls_(area) {
    std::ranges::copy_if(stops, std::back_inserter(stops_), [&](Point stop) {
      return holds(area, stop) || walls_.areNear(stop, alongMetres);
    });
  }

  Shapes make() {
    space_ = simplified(shrunk({area_}, halfPersonMetres + straightenedMetres), straightenedMetres);
    added_.emplace_back(halfPersonMetres, space_);
    if (!necksAt(0, {area_}).empty()) {
      for (const double half : narrowerMetres) addNecks(half);
    }
    if (space_.empty()) space_ = {area_};
    while (space_.size() > 1) joinSmallest();
    for (const Point stop : stops_) {
      if (!isReached(stop)) addAbout(stop);
    }
    return space_;
  }

 private:
  bool isReached(Point stop) const {
    const auto inside = stepInside(space_, walls_, stop);
    return inside && apart(*inside, stop) <= mostStepMetres;
  }

  // Of `wide`, which is left of the area at this width, the parts that lead from one part of the
  // space to another or to a stop.
  Shapes necksAt(double half, const Shapes& wide) const {
    Shapes necks = wide;
    for (const auto& [before, shapes] : added_) {
      if (!shapes.empty()) necks = cut(necks, widened(shapes, before - half + overlapMetres));
    }
    if (necks.empty()) return necks;
    const WallGrid walls(ringsOf(wide));
    std::erase_if(necks, [&](const Polygon& neck) { return !isOfUse(neck, walls, half); });
    return necks;
  }

  void addNecks(double half) {
    const Shapes wide = half > 0 ? shrunk({area_}, half) : Shapes{area_};
    const double reach = halfPersonMetres - half + 2 * overlapMetres;
    Shapes pieces;
    for (const Polygon& neck : necksAt(half, wide)) {
      // What is near, but behind a wall, is no part of it.
      for (const Polygon& piece : common(widened({neck}, reach), wide)) {
        if (!common({piece}, {neck}).empty()) pieces = joined(pieces, {piece});
      }
    }
    if (pieces.empty()) return;
    space_ = joined(space_, pieces);
    added_.emplace_back(half, std::move(pieces));
  }

  bool isOfUse(const Polygon& neck, const WallGrid& walls, double half) const {
    const bool hasLostStop = std::ranges::any_of(stops_, [&](Point stop) {
      return apart(nearestIn(neck, stop), stop) <= 2 * half + overlapMetres && !isReached(stop);
    });
    return hasLostStop || space_.empty() || mouthsOf(neck, walls) > 1;
  }

  // What no neck joined: the area itself about where the parts come near to each other.
  void joinSmallest() {
    const auto smallest = std::ranges::min_element(space_, {}, areaOf);
    const Polygon part = std::move(*smallest);
    space_.erase(smallest);
    const auto nearest = nearestOf(part, {ringsOf(space_)});
    addAround(nearest.first, nearest.second,
              [&](const Polygon& piece) { return !common({piece}, {part}).empty(); });
    space_ = joined(space_, {part});
  }

  void addAbout(Point stop) {
    addAround(stop, stop, [&](const Polygon& piece) {
      return apart(nearestIn(piece, stop), stop) < alongMetres;
    });
  }

  // So much of the area around the points as it takes to join to the space what the piece touches.
  template <class Touches>
  void addAround(Point a, Point b, Touches touches) {
    for (double metres = leastAroundMetres; metres < mostAroundMetres; metres *= 2) {
      const Point low{std::min(a.x, b.x) - metres, std::min(a.y, b.y) - metres};
      const Point high{std::max(a.x, b.x) + metres, std::max(a.y, b.y) + metres};
      const Polygon square{{{low, {high.x, low.y}, high, {low.x, high.y}}}};
      for (const Polygon& piece : common({square}, {area_})) {
        if (!touches(piece)) continue;
        if (!space_.empty() && common({piece}, space_).empty()) continue;
        space_ = joined(space_, {piece});
        return;
      }
    }
    space_ = {area_};
  }

  const Polygon& area_;
  std::vector<Point> stops_;
  WallGrid walls_;
  Shapes space_;
  // What it is made of, with half the width that is free about it.
  std::vector<std::pair<double, Shapes>> added_;
};

}  // namespace

Shapes walkSpaceOf(const Polygon& area, std::span<const Point> stops) {
  return SpaceMaker(area, stops).make();
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
