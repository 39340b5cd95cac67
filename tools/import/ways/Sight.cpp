#include "tools/import/ways/Sight.hpp"

#include <algorithm>
#include <array>
#include <cmath>
#include <numeric>
#include <set>
#include <tuple>
#include <utility>

#include "tools/import/ways/PlaneGeometry.hpp"
#include "tools/import/ways/WallGrid.hpp"

namespace tern::imports {

namespace {

// What is nearer to a wall than this stands at it.
constexpr double atWallMetres = 1e-5;
// How far to the right of a wall, in parts of its length, a way may lead before it leads into it.
constexpr double roundingPart = 1e-7;

// Of many nodes each looks at the nearest in each direction, as a Yao graph does (A. C. Yao, "On
// constructing minimum spanning trees in k-dimensional spaces and related problems", 1982).
constexpr std::size_t directions = 64;
constexpr std::size_t inDirection = 8;
constexpr std::size_t seenInDirection = 2;

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

// Which nodes hang together.
class Groups {
 public:
  explicit Groups(std::size_t nodes) : next_(nodes) { std::iota(next_.begin(), next_.end(), 0U); }

  std::uint32_t of(std::uint32_t node) {
    while (next_[node] != node) node = next_[node] = next_[next_[node]];
    return node;
  }

  void join(std::uint32_t a, std::uint32_t b) { next_[of(a)] = of(b); }

 private:
  std::vector<std::uint32_t> next_;
};

class Looker {
 public:
  Looker(const Shapes& space, std::span<const Point> stops)
      : rings_(ringsOf(space)), walls_(rings_), stops_(static_cast<std::uint32_t>(stops.size())) {
    std::vector<Side> sides;
    forEachSide(rings_, [&](Point a, Point b) { sides.push_back({a, b}); });
    for (const Point stop : stops) standings_.emplace_back(stop, sides);
    for (const Line& ring : rings_.rings) addCorners(ring, stops, standings_);
    for (const Standing& standing : standings_) sight_.nodes.push_back(standing.at());
  }

  Sight look(std::size_t seenFromAll) {
    if (standings_.size() <= seenFromAll) {
      lookEverywhere();
    } else {
      for (std::uint32_t from = 0; from < standings_.size(); ++from) lookInDirections(from);
      joinStops();
    }
    const auto orderOf = [](const StraightWay& way) {
      return std::tuple(way.metres, way.from, way.to);
    };
    std::ranges::sort(sight_.ways, {}, orderOf);
    const auto same = std::ranges::unique(sight_.ways, {}, orderOf);
    sight_.ways.erase(same.begin(), same.end());
    return std::move(sight_);
  }

 private:
  struct Near {
    double metres;
    std::uint32_t node;
    auto operator<=>(const Near&) const = default;
  };

  bool isSeen(std::uint32_t from, std::uint32_t to) {
    if (from > to) std::swap(from, to);
    const Point way = sight_.nodes[to] - sight_.nodes[from];
    const double metres = lengthOf(way);
    const Point unit = way * (1 / metres);
    if (!standings_[from].isFree(unit, metres)) return false;
    if (!standings_[to].isFree(unit * -1, metres)) return false;
    if (walls_.areCrossed(sight_.nodes[from], sight_.nodes[to])) return false;
    sight_.ways.push_back({from, to, metres});
    return true;
  }

  void lookEverywhere() {
    for (std::uint32_t from = 0; from < standings_.size(); ++from) {
      for (std::uint32_t to = from + 1; to < standings_.size(); ++to) isSeen(from, to);
    }
  }

  void lookInDirections(std::uint32_t from) {
    std::array<std::array<Near, inDirection>, directions> nearest;
    std::array<std::size_t, directions> counts{};
    for (std::uint32_t to = 0; to < standings_.size(); ++to) {
      if (to == from) continue;
      const Point way = sight_.nodes[to] - sight_.nodes[from];
      const std::size_t direction = directionOf(way);
      std::size_t& count = counts[direction];
      auto& found = nearest[direction];
      const Near near{dotOf(way, way), to};
      if (count == inDirection && found.back() <= near) continue;
      std::size_t at = count < inDirection ? count++ : inDirection - 1;
      for (; at > 0 && near < found[at - 1]; --at) found[at] = found[at - 1];
      found[at] = near;
    }
    for (std::size_t i = 0; i < directions; ++i) {
      std::size_t seen = 0;
      for (std::size_t k = 0; k < counts[i] && seen < seenInDirection; ++k) {
        if (isSeen(from, nearest[i][k].node)) ++seen;
      }
    }
  }

  static std::size_t directionOf(Point way) {
    const double turns = std::atan2(way.y, way.x) / (2 * M_PI) + 0.5;
    return static_cast<std::size_t>(turns * directions) % directions;
  }

  // What hangs together by what is seen must do so by what was looked at, too.
  void joinStops() {
    Groups groups(standings_.size());
    for (const StraightWay& way : sight_.ways) groups.join(way.from, way.to);
    std::set<std::uint32_t> alone;
    for (std::uint32_t stop = 1; stop < stops_; ++stop) {
      while (groups.of(stop) != groups.of(0) && !alone.contains(groups.of(stop))) {
        if (!joinToOthers(groups, groups.of(stop))) alone.insert(groups.of(stop));
      }
    }
  }

  // By the first way that is seen, if there is one.
  bool joinToOthers(Groups& groups, std::uint32_t group) {
    for (std::uint32_t from = 0; from < standings_.size(); ++from) {
      if (groups.of(from) != group) continue;
      for (std::uint32_t to = 0; to < standings_.size(); ++to) {
        if (groups.of(to) == group || !isSeen(from, to)) continue;
        groups.join(from, to);
        return true;
      }
    }
    return false;
  }

  Polygon rings_;
  WallGrid walls_;
  std::uint32_t stops_;
  std::vector<Standing> standings_;
  Sight sight_;
};

}  // namespace

Sight sightIn(const Shapes& space, std::span<const Point> stops, std::size_t seenFromAll) {
  return Looker(space, stops).look(seenFromAll);
}

}  // namespace tern::imports
