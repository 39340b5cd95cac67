#include "tests/tools/import/ways/PlainWalks.hpp"

#include <algorithm>
#include <limits>
#include <set>
#include <utility>

#include "tools/import/ways/PlaneGeometry.hpp"

namespace tern::imports {

namespace {

constexpr double endlessMetres = std::numeric_limits<double>::infinity();
constexpr double tolerance = 1e-6;

// In plain numbers, since it is asked millions of times of code that nothing optimises.
bool isCut(Point from, Point to, Point unit, Point a, Point b) {
  const double first = unit.x * (a.y - from.y) - unit.y * (a.x - from.x);
  const double second = unit.x * (b.y - from.y) - unit.y * (b.x - from.x);
  if (first >= -tolerance && second >= -tolerance) return false;
  if (first <= tolerance && second <= tolerance) return false;
  const double metres = apart(a, b);
  const double third = crossOf(b - a, from - a) / metres;
  const double fourth = crossOf(b - a, to - a) / metres;
  return std::min(third, fourth) < -tolerance && std::max(third, fourth) > tolerance;
}

bool isIn(const Polygon& area, Point at) {
  return holds(area, at) || apart(nearestOnRings(area, at), at) < tolerance;
}

// By every wall, and by the middles between all corners that lie on the way.
bool sees(const Polygon& area, Point from, Point to) {
  const double metres = apart(from, to);
  if (metres < tolerance) return true;
  if (cutsWall(area, from, to)) return false;
  std::vector<double> parts{0, 1};
  forEachSide(area, [&](Point corner, Point) {
    const double part = dotOf(corner - from, to - from) / (metres * metres);
    if (part <= 0 || part >= 1 || apart(between(from, to, part), corner) > tolerance) return;
    parts.push_back(part);
  });
  std::ranges::sort(parts);
  for (std::size_t i = 1; i < parts.size(); ++i) {
    if (!isIn(area, between(from, to, (parts[i - 1] + parts[i]) / 2))) return false;
  }
  return true;
}

std::vector<Point> innerCornersOf(const Polygon& area) {
  std::vector<Point> corners;
  for (const Line& ring : area.rings) {
    for (std::size_t i = 0; i < ring.size(); ++i) {
      const Point before = ring[(i + ring.size() - 1) % ring.size()];
      if (crossOf(ring[i] - before, ring[(i + 1) % ring.size()] - ring[i]) < 0) {
        corners.push_back(ring[i]);
      }
    }
  }
  return corners;
}

void addSeen(const Polygon& area, std::span<const Point> nodes,
             std::span<const std::uint32_t> within, std::vector<StraightWay>& ways) {
  for (const std::uint32_t from : within) {
    for (const std::uint32_t to : within) {
      if (to >= from || !sees(area, nodes[from], nodes[to])) continue;
      ways.push_back({from, to, apart(nodes[from], nodes[to])});
    }
  }
}

}  // namespace

bool cutsWall(const Polygon& area, Point from, Point to) {
  const double metres = apart(from, to);
  if (metres == 0) return false;
  const Point unit = (to - from) * (1 / metres);
  for (const Line& ring : area.rings) {
    Point before = ring.back();
    for (const Point corner : ring) {
      if (isCut(from, to, unit, before, corner)) return true;
      before = corner;
    }
  }
  return false;
}

Lengths walks(std::size_t nodes, std::span<const StraightWay> ways, std::size_t stops) {
  std::vector<std::vector<StraightWay>> exits(nodes);
  for (const StraightWay& way : ways) {
    exits[way.from].push_back(way);
    exits[way.to].push_back({way.to, way.from, way.metres});
  }
  Lengths found;
  for (std::uint32_t from = 0; from < stops; ++from) {
    std::vector<double> metres(nodes, endlessMetres);
    std::set<std::pair<double, std::uint32_t>> open{{0, from}};
    metres[from] = 0;
    while (!open.empty()) {
      const std::uint32_t next = open.begin()->second;
      open.erase(open.begin());
      for (const StraightWay& way : exits[next]) {
        const double whole = metres[next] + way.metres;
        if (whole >= metres[way.to]) continue;
        open.erase({metres[way.to], way.to});
        metres[way.to] = whole;
        open.emplace(whole, way.to);
      }
    }
    found.push_back(std::move(metres));
  }
  return found;
}

Lengths geodesics(const Polygon& area, std::span<const Point> points) {
  return geodesics(std::span(&area, 1), {}, points, points.size());
}

Lengths geodesics(std::span<const Polygon> areas, std::span<const StraightWay> steps,
                  std::span<const Point> points, std::size_t stops) {
  std::vector<Point> nodes(points.begin(), points.end());
  std::vector<StraightWay> ways(steps.begin(), steps.end());
  for (const Polygon& area : areas) {
    std::vector<std::uint32_t> within;
    for (std::uint32_t i = 0; i < points.size(); ++i) {
      if (isIn(area, points[i])) within.push_back(i);
    }
    for (const Point corner : innerCornersOf(area)) {
      within.push_back(static_cast<std::uint32_t>(nodes.size()));
      nodes.push_back(corner);
    }
    addSeen(area, nodes, within, ways);
  }
  return walks(nodes.size(), ways, stops);
}

}  // namespace tern::imports
