#include "tools/import/ways/Shapes.hpp"

#include <gtest/gtest.h>

#include <limits>

#include "tools/import/ways/PlaneGeometry.hpp"

namespace tern::imports {
namespace {

Polygon square(double left, double top, double side) {
  return {{{{left, top}, {left + side, top}, {left + side, top + side}, {left, top + side}}}};
}

double areaOfAll(const Shapes& shapes) {
  double sum = 0;
  for (const Polygon& shape : shapes) sum += areaOf(shape);
  return sum;
}

double turnOf(const Line& ring) {
  double twice = 0;
  for (std::size_t i = 0; i < ring.size(); ++i) {
    twice += crossOf(ring[i], ring[(i + 1) % ring.size()]);
  }
  return twice;
}

TEST(Shapes, aRingThatCrossesItselfBecomesTwoShapes) {
  const Shapes bow = repaired({{{{{0, 0}, {2, 2}, {2, 0}, {0, 2}}}}});
  EXPECT_EQ(bow.size(), 2U);
  EXPECT_NEAR(areaOfAll(bow), 2, 1e-9);
}

TEST(Shapes, whatLiesOverEachOtherBecomesOne) {
  const Shapes both = repaired({square(0, 0, 2), square(1, 0, 2), square(1.5, 0.5, 0.5)});
  ASSERT_EQ(both.size(), 1U);
  EXPECT_EQ(both.front().rings.size(), 1U) << "no hole where two lie over each other";
  EXPECT_NEAR(areaOfAll(both), 6, 1e-9);
}

// Not with libc++: what GEOS throws within itself is libstdc++'s where it comes from a package, and
// a program that has both does not survive that.
#ifndef _LIBCPP_VERSION

// As rounding leaves them; GEOS by itself gives up on each of these.
TEST(Shapes, whatLiesOverEachOtherOrCrossesItselfIsCutAndCutOut) {
  const Shapes pair{square(0, 0, 2), square(1.9, 0, 2)};
  const Shapes bow{{{{{0, 0}, {2, 2}, {2, 0}, {0, 2}}}}};
  EXPECT_NEAR(areaOfAll(cut(pair, {square(0, 1, 4)})), 3.9, 1e-9);
  EXPECT_NEAR(areaOfAll(cut({square(0, 0, 2)}, bow)), 2, 1e-9);
  EXPECT_NEAR(areaOfAll(common({square(0, 0, 1)}, bow)), 0.5, 1e-9);
  EXPECT_NEAR(areaOfAll(joined({square(0, 0, 1)}, bow)), 2.5, 1e-9);
}

#endif

TEST(Shapes, outlinesTurnOneWayAndHolesTheOther) {
  const Shapes frame = cut({square(0, 0, 4)}, {square(1, 1, 2)});
  ASSERT_EQ(frame.size(), 1U);
  ASSERT_EQ(frame.front().rings.size(), 2U);
  EXPECT_GT(turnOf(frame.front().rings[0]), 0);
  EXPECT_LT(turnOf(frame.front().rings[1]), 0);
}

TEST(Shapes, pointsOnTheLineBetweenTheirNeighboursAreNoCorners) {
  const Shapes shapes = repaired({{{{{0, 0}, {1, 0}, {2, 0}, {2, 2}, {0, 2}, {0, 1}}}}});
  ASSERT_EQ(shapes.size(), 1U);
  EXPECT_EQ(cornersOf(shapes.front()), 4U);
}

TEST(Shapes, aSquareShrunkKeepsItsFourCorners) {
  const Shapes smaller = shrunk({square(0, 0, 4)}, 1);
  ASSERT_EQ(smaller.size(), 1U);
  EXPECT_EQ(cornersOf(smaller.front()), 4U);
  EXPECT_NEAR(areaOfAll(smaller), 4, 1e-9);
  EXPECT_NEAR(areaOfAll(widened(smaller, 1)), 16, 1e-9);
}

TEST(Shapes, shrinkingClosesWhatIsTooNarrow) {
  EXPECT_TRUE(shrunk({square(0, 0, 2)}, 1.5).empty());
}

TEST(Shapes, joinedCutAndCommonAreWhatTheySay) {
  const Shapes left{square(0, 0, 2)};
  const Shapes right{square(1, 0, 2)};
  EXPECT_NEAR(areaOfAll(joined(left, right)), 6, 1e-9);
  EXPECT_NEAR(areaOfAll(cut(left, right)), 2, 1e-9);
  EXPECT_NEAR(areaOfAll(common(left, right)), 2, 1e-9);
  EXPECT_TRUE(common(left, {square(5, 5, 1)}).empty());
  EXPECT_NEAR(areaOfAll(joined({}, right)), 4, 1e-9);
}

TEST(Shapes, simplifyingLeavesOutWhatIsNearerThanSaid) {
  const Shapes rough{{{{{0, 0}, {1, 0.01}, {2, 0}, {2, 2}, {0, 2}}}}};
  EXPECT_EQ(cornersOf(simplified(rough, 0.02).front()), 4U);
  EXPECT_EQ(cornersOf(simplified(rough, 0.005).front()), 5U);
}

TEST(Shapes, whatIsNoAreaIsEmpty) {
  const double endless = std::numeric_limits<double>::infinity();
  EXPECT_TRUE(repaired({}).empty());
  EXPECT_TRUE(repaired({{}}).empty());
  EXPECT_TRUE(repaired({{{{{0, 0}, {1, 1}}}}}).empty());
  EXPECT_TRUE(repaired({{{{{0, 0}, {1, 0}, {2, 0}}}}}).empty());
  EXPECT_TRUE(repaired({{{{{0, 0}, {endless, 0}, {1, 1}}}}}).empty());
}

}  // namespace
}  // namespace tern::imports
