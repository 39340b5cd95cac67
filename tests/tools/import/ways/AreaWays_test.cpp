#include "tools/import/ways/AreaWays.hpp"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <set>
#include <vector>

#include "tests/tools/import/ways/MadeArea.hpp"
#include "tools/import/ways/PlaneGeometry.hpp"

namespace tern::imports {
namespace {

constexpr double endlessMetres = std::numeric_limits<double>::infinity();

// How far to the right of the way from a to b, at most zero in a row of nothing.
double besideOf(Point at, Point a, Point b) { return crossOf(b - a, at - a) / apart(a, b); }

// Whether the way cuts through a wall, by every wall of the area.
bool cutsWall(const Polygon& area, Point from, Point to) {
  constexpr double tolerance = 1e-6;
  bool isCut = false;
  forEachSide(area, [&](Point a, Point b) {
    const double first = besideOf(a, from, to);
    const double second = besideOf(b, from, to);
    const double third = besideOf(from, a, b);
    const double fourth = besideOf(to, a, b);
    isCut = isCut || (std::min(first, second) < -tolerance && std::max(first, second) > tolerance &&
                      std::min(third, fourth) < -tolerance && std::max(third, fourth) > tolerance);
  });
  return isCut;
}

bool isIn(const Polygon& area, Point at) {
  return holds(area, at) || apart(nearestOnRings(area, at), at) < 1e-6;
}

// Whether the one sees the other in the area, by every wall and by points between.
bool sees(const Polygon& area, Point from, Point to) {
  if (apart(from, to) < 1e-9) return true;
  for (const double part : {0.0001, 0.1, 0.5, 0.9, 0.9999}) {
    if (!isIn(area, between(from, to, part))) return false;
  }
  return !cutsWall(area, from, to);
}

using Lengths = std::vector<std::vector<double>>;

// Shortest walks from each of the first `stops` nodes, by the plainest of searches.
Lengths shortest(const Lengths& steps, std::size_t stops) {
  Lengths found;
  for (std::size_t from = 0; from < stops; ++from) {
    std::vector<double> metres(steps.size(), endlessMetres);
    std::vector<bool> isDone(steps.size());
    metres[from] = 0;
    for (std::size_t round = 0; round < steps.size(); ++round) {
      std::size_t next = steps.size();
      for (std::size_t i = 0; i < steps.size(); ++i) {
        if (!isDone[i] && (next == steps.size() || metres[i] < metres[next])) next = i;
      }
      isDone[next] = true;
      for (std::size_t i = 0; i < steps.size(); ++i) {
        metres[i] = std::min(metres[i], metres[next] + steps[next][i]);
      }
    }
    found.push_back(std::move(metres));
  }
  return found;
}

// Between the points, as the crow walks: over all corners of the area itself.
Lengths geodesics(const Polygon& area, const std::vector<Point>& points) {
  std::vector<Point> nodes = points;
  for (const Line& ring : area.rings) {
    for (std::size_t i = 0; i < ring.size(); ++i) {
      const Point before = ring[(i + ring.size() - 1) % ring.size()];
      if (crossOf(ring[i] - before, ring[(i + 1) % ring.size()] - ring[i]) < 0) {
        nodes.push_back(ring[i]);
      }
    }
  }
  Lengths steps(nodes.size(), std::vector<double>(nodes.size(), endlessMetres));
  for (std::size_t i = 0; i < nodes.size(); ++i) {
    for (std::size_t k = 0; k < i; ++k) {
      if (!sees(area, nodes[i], nodes[k])) continue;
      steps[i][k] = steps[k][i] = apart(nodes[i], nodes[k]);
    }
  }
  return shortest(steps, points.size());
}

Lengths walks(const AreaWays& ways, std::size_t stops) {
  Lengths steps(ways.nodes.size(), std::vector<double>(ways.nodes.size(), endlessMetres));
  for (const StraightWay& way : ways.ways) {
    steps[way.from][way.to] = steps[way.to][way.from] = way.metres;
  }
  return shortest(steps, stops);
}

std::size_t islandsOf(const AreaWays& ways) {
  std::vector<std::size_t> island(ways.nodes.size());
  for (std::size_t i = 0; i < island.size(); ++i) island[i] = i;
  const auto rootOf = [&](std::size_t node) {
    while (island[node] != node) node = island[node] = island[island[node]];
    return node;
  };
  for (const StraightWay& way : ways.ways) island[rootOf(way.from)] = rootOf(way.to);
  std::set<std::size_t> roots;
  for (std::size_t i = 0; i < island.size(); ++i) roots.insert(rootOf(i));
  return roots.size();
}

void expectLaws(const MadeArea& made) {
  const AreaWays ways = waysIn(made.area, made.doors, made.places);
  for (const StraightWay& way : ways.ways) {
    RC_ASSERT(!cutsWall(made.area, ways.nodes[way.from], ways.nodes[way.to]));
  }
  for (std::size_t i = 0; i < made.doors.size(); ++i) {
    RC_ASSERT(!cutsWall(made.area, made.doors[i], ways.nodes[ways.ofDoor[i]]));
  }
  RC_ASSERT(islandsOf(ways) == 1U);
  RC_ASSERT(ways.ways.size() <= 10 * cornersOf(made.area));
}

RC_GTEST_PROP(AreaWays, waysCrossNoWallAndReachAllWithFewWays, ()) {
  const auto seed = *rc::gen::arbitrary<std::uint32_t>();
  expectLaws(madeArea(seed, *rc::gen::inRange(1, 7), *rc::gen::inRange<std::size_t>(0, 30)));
}

TEST(AreaWays, walksAreHardlyLongerThanTheyHaveToBe) {
  std::vector<double> ratios;
  for (std::uint64_t seed = 0; ratios.size() < 500; ++seed) {
    const MadeArea made = madeArea(seed, 4, 16);
    const AreaWays ways = waysIn(made.area, made.doors, made.places);
    std::vector<Point> stands;
    for (const std::size_t node : ways.ofPlace) stands.push_back(ways.nodes[node]);
    const Lengths least = geodesics(made.area, stands);
    const Lengths walked = walks(ways, ways.nodes.size());
    for (std::size_t i = 0; i < stands.size(); ++i) {
      for (std::size_t k = 0; k < i; ++k) {
        if (least[i][k] < 0.5) continue;
        ratios.push_back(walked[ways.ofPlace[i]][ways.ofPlace[k]] / least[i][k]);
      }
    }
  }
  std::ranges::sort(ratios);
  EXPECT_GE(ratios.front(), 1 - 1e-6);
  EXPECT_LE(ratios[ratios.size() / 2], 1.05);
  EXPECT_LE(ratios[ratios.size() * 95 / 100], 1.15);
}

TEST(AreaWays, aSquareRoomIsCrossedStraight) {
  const Polygon room{{{{0, 0}, {10, 0}, {10, 10}, {0, 10}}}};
  const std::vector<Point> doors{{5, 0}, {5, 10}};
  const AreaWays ways = waysIn(room, doors, {});
  ASSERT_EQ(ways.nodes.size(), 2U);
  ASSERT_EQ(ways.ways.size(), 1U);
  EXPECT_NEAR(ways.nodes[ways.ofDoor[0]].y, 0.35, 0.03);
  EXPECT_NEAR(ways.nodes[ways.ofDoor[1]].y, 9.65, 0.03);
}

TEST(AreaWays, aCornerIsWalkedRoundAtAPersonsWidth) {
  const Polygon bend{{{{0, 0}, {10, 0}, {10, 2}, {2, 2}, {2, 10}, {0, 10}}}};
  const std::vector<Point> doors{{10, 1}, {1, 10}};
  const AreaWays ways = waysIn(bend, doors, {});
  ASSERT_EQ(ways.nodes.size(), 3U);
  EXPECT_EQ(ways.ways.size(), 2U);
  EXPECT_NEAR(ways.nodes[2].x, 1.65, 0.03);
  EXPECT_NEAR(ways.nodes[2].y, 1.65, 0.03);
}

TEST(AreaWays, placesAtOneSpotShareANode) {
  const Polygon room{{{{0, 0}, {10, 0}, {10, 10}, {0, 10}}}};
  const std::vector<Point> places{{5, 5}, {5, 5}, {2, 2}};
  const AreaWays ways = waysIn(room, {}, places);
  EXPECT_EQ(ways.ofPlace[0], ways.ofPlace[1]);
  EXPECT_EQ(ways.nodes.size(), 2U);
}

}  // namespace
}  // namespace tern::imports
