#include "tools/import/ways/WalkSpace.hpp"

#include <gtest/gtest.h>

#include <vector>

#include "tools/import/ways/PlaneGeometry.hpp"

namespace tern::imports {
namespace {

// Two rooms of five metres with a neck of a metre's length between them.
Polygon roomsWithNeck(double width) {
  const double low = 2.5 - width / 2;
  const double high = 2.5 + width / 2;
  return {{{{0, 0},
            {5, 0},
            {5, low},
            {6, low},
            {6, 0},
            {11, 0},
            {11, 5},
            {6, 5},
            {6, high},
            {5, high},
            {5, 5},
            {0, 5}}}};
}

TEST(WalkSpace, keepsAPersonsWidthFromTheWalls) {
  const Shapes space = walkSpaceOf(roomsWithNeck(2), {});
  ASSERT_EQ(space.size(), 1U);
  EXPECT_FALSE(holds(space.front(), {0.3, 2.5}));
  EXPECT_TRUE(holds(space.front(), {0.4, 2.5}));
  EXPECT_TRUE(holds(space.front(), {5.5, 2.5}));
}

TEST(WalkSpace, leadsThroughNecksHoweverThin) {
  for (const double width : {0.6, 0.3, 0.1, 0.01, 0.001}) {
    const Shapes space = walkSpaceOf(roomsWithNeck(width), {});
    ASSERT_EQ(space.size(), 1U) << width;
    EXPECT_TRUE(holds(space.front(), {5.5, 2.5})) << width;
    EXPECT_FALSE(holds(space.front(), {0.3, 1})) << "the rooms keep their width";
  }
}

TEST(WalkSpace, whatLiesBehindTheWallOfANeckKeepsItsWidth) {
  // A hall; behind a wall of a decimetre two rooms, and a passage of half a metre between them.
  const auto box = [](double left, double top, double right, double bottom) {
    return Shapes{{{{{left, top}, {right, top}, {right, bottom}, {left, bottom}}}}};
  };
  Shapes area = joined(box(0, 0, 11, 5), box(0.5, 5, 1.5, 5.1));
  area = joined(area, box(0, 5.1, 2, 10));
  area = joined(area, box(9, 5.1, 11, 10));
  area = joined(area, box(2, 5.1, 9, 5.6));
  ASSERT_EQ(area.size(), 1U);
  const Shapes space = walkSpaceOf(area.front(), {});
  ASSERT_EQ(space.size(), 1U);
  EXPECT_TRUE(holds(space.front(), {5.5, 5.35}));
  EXPECT_FALSE(holds(space.front(), {5.5, 4.8}));
}

TEST(WalkSpace, aPlaceInACupboardIsReached) {
  const Polygon room{{{{0, 0}, {5, 0}, {5, 2}, {5.4, 2}, {5.4, 2.3}, {5, 2.3}, {5, 5}, {0, 5}}}};
  const std::vector<Point> places{{5.3, 2.15}};
  const Shapes space = walkSpaceOf(room, places);
  ASSERT_EQ(space.size(), 1U);
  const auto inside = stepInside(space, WallGrid(room), places.front());
  ASSERT_TRUE(inside);
  EXPECT_LT(apart(*inside, places.front()), 0.8);
}

TEST(WalkSpace, aDoorAtTheEndOfANookIsSeenFromTheSpace) {
  const Polygon nook{{{{0, 0}, {5, 0}, {5, 2}, {7, 2}, {7, 2.4}, {5, 2.4}, {5, 5}, {0, 5}}}};
  const std::vector<Point> doors{{7, 2.2}};
  const Shapes space = walkSpaceOf(nook, doors);
  ASSERT_EQ(space.size(), 1U);
  const auto inside = stepInside(space, WallGrid(nook), doors.front());
  ASSERT_TRUE(inside);
  EXPECT_NEAR(inside->y, 2.2, 0.2);
}

TEST(WalkSpace, reachesADoorRoundTheBendOfANook) {
  const Polygon nook{
      {{{0, 0}, {5, 0}, {5, 2}, {7, 2}, {7, 4}, {6.6, 4}, {6.6, 2.4}, {5, 2.4}, {5, 5}, {0, 5}}}};
  const std::vector<Point> doors{{6.8, 4}};
  const Shapes space = walkSpaceOf(nook, doors);
  ASSERT_EQ(space.size(), 1U);
  EXPECT_TRUE(stepInside(space, WallGrid(nook), doors.front()));
  EXPECT_FALSE(holds(space.front(), {0.3, 1})) << "the room keeps its width";
}

TEST(WalkSpace, aClosetNarrowerThanAPersonStillHasSpace) {
  const Polygon closet{{{{0, 0}, {0.5, 0}, {0.5, 2}, {0, 2}}}};
  EXPECT_EQ(walkSpaceOf(closet, {}).size(), 1U);
}

TEST(WalkSpace, oneStepsInsideWithoutCrossingAWall) {
  const Polygon area = roomsWithNeck(2);
  const Shapes space = walkSpaceOf(area, {});
  const auto at = stepInside(space, WallGrid(area), {0, 2.5});
  ASSERT_TRUE(at);
  EXPECT_NEAR(at->x, 0.35, 0.03);
  EXPECT_NEAR(at->y, 2.5, 1e-9);
}

}  // namespace
}  // namespace tern::imports
