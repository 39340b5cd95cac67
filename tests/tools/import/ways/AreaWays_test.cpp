#include "tools/import/ways/AreaWays.hpp"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <cmath>
#include <set>
#include <vector>

#include "tests/tools/import/ways/MadeArea.hpp"
#include "tests/tools/import/ways/PlainWalks.hpp"
#include "tools/import/ways/PlaneGeometry.hpp"
#include "tools/import/ways/WalkSpace.hpp"

namespace tern::imports {
namespace {

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
  expectLaws(madeArea(seed, *rc::gen::inRange(1, 5), *rc::gen::inRange<std::size_t>(0, 16)));
}

TEST(AreaWays, areasOfTwoThousandCornersAreNoOtherThanSmallOnes) {
  const MadeArea made = madeArea(1, 15, 60);
  EXPECT_GT(cornersOf(made.area), 1'800U);
  expectLaws(made);
}

// How much longer walks between places are than they had to be, from the least to the greatest.
using Ratios = std::vector<double>;

void addRatios(const AreaWays& ways, const Lengths& walked, const Polygon& space, Ratios& ratios) {
  std::vector<Point> stands;
  for (const std::size_t node : ways.ofPlace) stands.push_back(ways.nodes[node]);
  const Lengths least = geodesics(space, stands);
  for (std::size_t i = 0; i < stands.size(); ++i) {
    for (std::size_t k = 0; k < i; ++k) {
      if (least[i][k] < 0.5) continue;
      ratios.push_back(walked[ways.ofPlace[i]][ways.ofPlace[k]] / least[i][k]);
    }
  }
  std::ranges::sort(ratios);
}

void expectShortWalks(int rooms, std::size_t places) {
  Ratios inSpace;
  Ratios inArea;
  for (std::uint64_t seed = 3; inArea.size() < 500; ++seed) {
    const MadeArea made = madeArea(seed, rooms, places);
    const AreaWays ways = waysIn(made.area, made.doors, made.places);
    const Lengths walked = walks(ways.nodes.size(), ways.ways, ways.nodes.size());
    std::vector<Point> stops = made.doors;
    stops.insert(stops.end(), made.places.begin(), made.places.end());
    addRatios(ways, walked, ringsOf(walkSpaceOf(made.area, stops)), inSpace);
    addRatios(ways, walked, made.area, inArea);
  }
  EXPECT_GE(inSpace.front(), 1 - 1e-6);
  EXPECT_LE(inSpace.back(), 1.02 + 1e-6) << "in the space that is a person's";
  EXPECT_GE(inArea.front(), 1 - 1e-6);
  EXPECT_LE(inArea[inArea.size() / 2], 1.05) << "between the walls themselves";
  EXPECT_LE(inArea[inArea.size() * 95 / 100], 1.15) << "between the walls themselves";
}

TEST(AreaWays, walksAreHardlyLongerThanTheyHaveToBe) { expectShortWalks(4, 16); }

// With loops through necks of a few centimetres, which are long ways round when one is missed.
TEST(AreaWays, walksThroughManyRoomsAreHardlyLongerThanTheyHaveToBe) { expectShortWalks(7, 24); }

TEST(AreaWays, manyPlacesInAPlainRoomHaveFewWaysAndShortWalks) {
  const Polygon room{{{{0, 0}, {20, 0}, {20, 20}, {0, 20}}}};
  std::vector<Point> places;
  for (int i = 0; i < 40; ++i) places.push_back({1 + i * 7 % 19 * 0.97, 1 + i * 11 % 18 * 1.03});
  const AreaWays ways = waysIn(room, {}, places);
  Ratios ratios;
  addRatios(ways, walks(ways.nodes.size(), ways.ways, ways.nodes.size()), room, ratios);
  EXPECT_LE(ratios.back(), 1.05 + 1e-6);
  EXPECT_LE(ways.ways.size(), 10 * (places.size() + 4));
}

TEST(AreaWays, thousandsOfPlacesInAHallHaveFewWaysAndShortWalks) {
  const Polygon hall{{{{0, 0}, {400, 0}, {400, 300}, {0, 300}}}};
  std::vector<Point> places;
  for (int i = 0; i < 2'000; ++i) {
    places.push_back({0.5 + std::fmod(i * 37.77, 399), 0.5 + std::fmod(i * 91.3, 299)});
  }
  const AreaWays ways = waysIn(hall, {}, places);
  EXPECT_LE(ways.ways.size(), 10 * (places.size() + 4));
  const Lengths walked = walks(ways.nodes.size(), ways.ways, 10);
  for (std::size_t from = 0; from < walked.size(); ++from) {
    for (std::size_t to = 0; to < ways.nodes.size(); ++to) {
      EXPECT_LE(walked[from][to], apart(ways.nodes[from], ways.nodes[to]) * 1.06 + 1e-6);
    }
  }
}

TEST(AreaWays, betweenWallsLikeSawsOneWalksStraight) {
  constexpr int teeth = 800;
  Line outline;
  for (int i = 0; i < teeth; ++i) outline.push_back({i * 0.9, i % 2 == 0 ? 0.5 : 0});
  for (int i = teeth; i-- > 0;) outline.push_back({i * 0.9, i % 2 == 0 ? 60.5 : 60});
  const std::vector<Point> places{{10, 5}, {700, 50}};
  const AreaWays ways = waysIn({{outline}}, {}, places);
  const Lengths walked = walks(ways.nodes.size(), ways.ways, 1);
  EXPECT_LE(walked[0][1], apart(places[0], places[1]) * 1.02);
  EXPECT_LE(ways.ways.size(), 10U * 2 * teeth);
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
