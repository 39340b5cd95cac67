#include "tests/tools/import/ways/PlainWalks.hpp"

#include <algorithm>
#include <limits>

#include "tools/import/ways/PlaneGeometry.hpp"

namespace tern::imports {

namespace {

constexpr double endlessMetres = std::numeric_limits<double>::infinity();
constexpr double tolerance = 1e-6;

bool isCut(Point from, Point to, Point unit, Point a, Point b) {
  const double first = crossOf(unit, a - from);
  const double second = crossOf(unit, b - from);
  if (std::min(first, second) >= -tolerance || std::max(first, second) <= tolerance) return false;
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

}  // namespace

bool cutsWall(const Polygon& area, Point from, Point to) {
  const double metres = apart(from, to);
  if (metres == 0) return false;
  const Point unit = (to - from) * (1 / metres);
  for (const Line& ring : area.rings) {
    for (std::size_t i = 0; i < ring.size(); ++i) {
      if (isCut(from, to, unit, ring[i], ring[i + 1 == ring.size() ? 0 : i + 1])) return true;
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
  for (std::size_t from = 0; from < stops; ++from) {
    std::vector<double> metres(nodes, endlessMetres);
    std::vector<bool> isDone(nodes);
    metres[from] = 0;
    for (std::size_t round = 0; round < nodes; ++round) {
      std::size_t next = nodes;
      for (std::size_t i = 0; i < nodes; ++i) {
        if (!isDone[i] && (next == nodes || metres[i] < metres[next])) next = i;
      }
      isDone[next] = true;
      for (const StraightWay& way : exits[next]) {
        metres[way.to] = std::min(metres[way.to], metres[next] + way.metres);
      }
    }
    found.push_back(std::move(metres));
  }
  return found;
}

Lengths geodesics(const Polygon& area, std::span<const Point> points) {
  std::vector<Point> nodes(points.begin(), points.end());
  for (const Line& ring : area.rings) {
    for (std::size_t i = 0; i < ring.size(); ++i) {
      const Point before = ring[(i + ring.size() - 1) % ring.size()];
      if (crossOf(ring[i] - before, ring[(i + 1) % ring.size()] - ring[i]) < 0) {
        nodes.push_back(ring[i]);
      }
    }
  }
  std::vector<StraightWay> ways;
  for (std::uint32_t i = 0; i < nodes.size(); ++i) {
    for (std::uint32_t k = 0; k < i; ++k) {
      if (sees(area, nodes[i], nodes[k])) ways.push_back({i, k, apart(nodes[i], nodes[k])});
    }
  }
  return walks(nodes.size(), ways, points.size());
}

}  // namespace tern::imports
