#include "tools/import/ways/WallGrid.hpp"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "tests/tools/import/ways/MadeArea.hpp"
#include "tools/import/ways/PlaneGeometry.hpp"

namespace tern::imports {
namespace {

bool isCrossedByScan(const Polygon& area, Point from, Point to) {
  bool isCrossed = false;
  forEachSide(area, [&](Point a, Point b) {
    const double first = crossOf(to - from, a - from);
    const double second = crossOf(to - from, b - from);
    const double third = crossOf(b - a, from - a);
    const double fourth = crossOf(b - a, to - a);
    isCrossed = isCrossed || ((first > 0) != (second > 0) && (third > 0) != (fourth > 0));
  });
  return isCrossed;
}

RC_GTEST_PROP(WallGrid, saysWhatAScanOfAllWallsSays, ()) {
  const auto seed = *rc::gen::arbitrary<std::uint32_t>();
  const MadeArea made = madeArea(seed, *rc::gen::inRange(1, 6), 12);
  const WallGrid walls(made.area);
  for (const Point from : made.places) {
    for (const Point to : made.places) {
      if (from == to) continue;
      RC_ASSERT(walls.areCrossed(from, to) == isCrossedByScan(made.area, from, to));
    }
  }
}

RC_GTEST_PROP(WallGrid, knowsWhatIsNearAsAScanDoes, ()) {
  const MadeArea made = madeArea(*rc::gen::arbitrary<std::uint32_t>(), 2, 6);
  const WallGrid walls(made.area);
  for (const Point at : made.places) {
    for (const double metres : {0.01, 0.3, 2.0, 40.0}) {
      const bool isNear = apart(nearestOnRings(made.area, at), at) < metres;
      RC_ASSERT(walls.areNear(at, metres) == isNear);
    }
  }
}

TEST(WallGrid, waysAlongAWallAndUpToACornerAreFree) {
  const Polygon bend{{{{0, 0}, {10, 0}, {10, 2}, {2, 2}, {2, 10}, {0, 10}}}};
  const WallGrid walls(bend);
  EXPECT_FALSE(walls.areCrossed({10, 2}, {2, 2}));
  EXPECT_FALSE(walls.areCrossed({1, 1}, {2, 2}));
  EXPECT_FALSE(walls.areCrossed({5, 1}, {5, 1}));
  EXPECT_TRUE(walls.areCrossed({1, 9}, {9, 1}));
  EXPECT_TRUE(walls.areCrossed({1, 9}, {-1, 9}));
}

}  // namespace
}  // namespace tern::imports
