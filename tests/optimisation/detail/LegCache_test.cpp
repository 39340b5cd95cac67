#include "TernCoreKit/optimisation/detail/LegCache.hpp"

#include <gtest/gtest.h>

namespace tern::detail {
namespace {

TEST(LegCache, idsThatReadTheSameShareALeg) {
  LegCache legs;
  TernPathPerFloor segment;
  segment.pixelDistance = 7;
  legs.store(12, 3, {segment});
  ASSERT_NE(legs.find(1, 23), nullptr);
  EXPECT_EQ(legs.firstSegment(1, 23)->pixelDistance, 7);
  EXPECT_EQ(legs.find(3, 12), nullptr);
}

TEST(LegCache, emptyRouteIsALegWithoutSegments) {
  LegCache legs;
  legs.store(1, 2, {});
  EXPECT_NE(legs.find(1, 2), nullptr);
  EXPECT_EQ(legs.firstSegment(1, 2), nullptr);
}

}  // namespace
}  // namespace tern::detail
