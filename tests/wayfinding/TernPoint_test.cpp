#include "TernCoreKit/wayfinding/TernPoint.hpp"

#include <gtest/gtest.h>

namespace tern {
namespace {

TEST(TernPoint, isMadeOfThreeNumbers) {
  const TernPoint point = TernPoint::initWithX(1.5F, -2, 300);
  EXPECT_EQ(point.x, 1.5F);
  EXPECT_EQ(point.y, -2.0F);
  EXPECT_EQ(point.z, 300.0F);
}

TEST(TernPoint, liesAtTheOriginByDefault) { EXPECT_EQ(TernPoint(), TernPoint::initWithX(0, 0, 0)); }

TEST(TernPoint, isEqualWhereAllThreeNumbersAre) {
  EXPECT_EQ(TernPoint::initWithX(1, 2, 3), TernPoint::initWithX(1, 2, 3));
  EXPECT_NE(TernPoint::initWithX(1, 2, 3), TernPoint::initWithX(1, 2, 4));
}

}  // namespace
}  // namespace tern
