#include "tools/import/ways/Sight.hpp"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>
#include <vector>

#include "tests/tools/import/ways/MadeArea.hpp"
#include "tests/tools/import/ways/PlainWalks.hpp"
#include "tools/import/ways/PlaneGeometry.hpp"

namespace tern::imports {
namespace {

const Shapes bend{{{{{0, 0}, {10, 0}, {10, 2}, {2, 2}, {2, 10}, {0, 10}}}}};

bool isSeen(const Sight& sight, Point from, Point to) {
  for (const StraightWay& way : sight.ways) {
    const Point a = sight.nodes[way.from];
    const Point b = sight.nodes[way.to];
    if ((a == from && b == to) || (a == to && b == from)) return true;
  }
  return false;
}

TEST(Sight, stopsInARoomSeeEachOtherAndNoCornerOfIt) {
  const std::vector<Point> stops{{1, 1}, {9, 9}, {1, 9}};
  const Sight sight = sightIn({{{{{0, 0}, {10, 0}, {10, 10}, {0, 10}}}}}, stops);
  EXPECT_EQ(sight.nodes.size(), 3U);
  EXPECT_EQ(sight.ways.size(), 3U);
}

TEST(Sight, roundABendOneSeesTheInnerCornerAlone) {
  const std::vector<Point> stops{{9, 1}, {1, 9}};
  const Sight sight = sightIn(bend, stops);
  ASSERT_EQ(sight.nodes.size(), 3U);
  EXPECT_EQ(sight.nodes[2], (Point{2, 2}));
  EXPECT_TRUE(isSeen(sight, {9, 1}, {2, 2}));
  EXPECT_TRUE(isSeen(sight, {1, 9}, {2, 2}));
  EXPECT_FALSE(isSeen(sight, {9, 1}, {1, 9}));
}

TEST(Sight, whatLeadsIntoTheWallOfACornerIsNoWay) {
  // From here a shortest way never bends at the corner: it would go on into the wall.
  const std::vector<Point> stops{{1, 1}};
  EXPECT_TRUE(sightIn(bend, stops).ways.empty());
}

TEST(Sight, aStopAtAWallSeesAlongItAndIntoTheRoom) {
  const std::vector<Point> stops{{5, 0}, {8, 0}, {6, 1}};
  const Sight sight = sightIn(bend, stops);
  EXPECT_TRUE(isSeen(sight, {5, 0}, {8, 0}));
  EXPECT_TRUE(isSeen(sight, {5, 0}, {6, 1}));
}

TEST(Sight, aStopAtAnInnerCornerIsNoSecondNode) {
  const std::vector<Point> stops{{2, 2}, {1, 9}, {9, 1}};
  const Sight sight = sightIn(bend, stops);
  EXPECT_EQ(sight.nodes.size(), 3U);
  EXPECT_TRUE(isSeen(sight, {2, 2}, {1, 9}));
  EXPECT_TRUE(isSeen(sight, {2, 2}, {9, 1}));
}

TEST(Sight, nothingIsSeenFromOnePartToAnother) {
  const Shapes parts{{{{{0, 0}, {1, 0}, {1, 1}, {0, 1}}}}, {{{{2, 0}, {3, 0}, {3, 1}, {2, 1}}}}};
  const std::vector<Point> stops{{0.5, 0.5}, {2.5, 0.5}};
  EXPECT_TRUE(sightIn(parts, stops).ways.empty());
}

RC_GTEST_PROP(Sight, noWalkIsShorterThanThoseThroughWhatIsSeen, ()) {
  const MadeArea made = madeArea(*rc::gen::arbitrary<std::uint32_t>(), 2, 6);
  const Sight sight = sightIn({made.area}, made.places);
  const Lengths seen = walks(sight.nodes.size(), sight.ways, made.places.size());
  const Lengths least = geodesics(made.area, made.places);
  for (std::size_t i = 0; i < made.places.size(); ++i) {
    for (std::size_t k = 0; k < i; ++k) RC_ASSERT(std::abs(seen[i][k] - least[i][k]) < 1e-5);
  }
}

RC_GTEST_PROP(Sight, lookingAtTheNearestInEachDirectionLengthensHardlyAnyWalk, ()) {
  const MadeArea made = madeArea(*rc::gen::arbitrary<std::uint32_t>(), 3, 12);
  const Sight sight = sightIn({made.area}, made.places, 0);
  const Lengths seen = walks(sight.nodes.size(), sight.ways, made.places.size());
  const Lengths least = geodesics(made.area, made.places);
  for (std::size_t i = 0; i < made.places.size(); ++i) {
    for (std::size_t k = 0; k < i; ++k) RC_ASSERT(seen[i][k] <= least[i][k] * 1.01 + 1e-5);
  }
}

TEST(Sight, manyStopsLookAtTheNearestAloneAndHangTogether) {
  // A row behind a row: from each stop the eight nearest of a direction are behind the wall.
  const Shapes rooms{{{{{0, 0},
                        {9, 0},
                        {9, 4},
                        {4.2, 4},
                        {4.2, 5},
                        {9, 5},
                        {9, 9},
                        {0, 9},
                        {0, 5},
                        {4, 5},
                        {4, 4},
                        {0, 4}}}}};
  std::vector<Point> stops;
  for (int i = 0; i < 40; ++i) {
    stops.push_back({0.2 + i * 0.22, 3.8});
    stops.push_back({0.2 + i * 0.22, 5.2});
  }
  const Sight all = sightIn(rooms, stops);
  const Sight nearest = sightIn(rooms, stops, 0);
  EXPECT_LT(nearest.ways.size() * 2, all.ways.size());
  for (const Lengths lengths = walks(nearest.nodes.size(), nearest.ways, 1);
       const double metres : lengths.front()) {
    EXPECT_LT(metres, 20);
  }
}

}  // namespace
}  // namespace tern::imports
