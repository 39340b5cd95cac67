#include "TernCoreKit/optimisation/detail/LegCache.hpp"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cstdint>
#include <string>

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

RC_GTEST_PROP(LegCache, findsALegUnderExactlyThePairsThatReadAsItsOwn, ()) {
  const auto anyId = rc::gen::element<std::int64_t>(0, 1, 2, 11, 12, 21, 112, 121, 1121);
  const std::int64_t from = *anyId;
  const std::int64_t to = *anyId;
  LegCache legs;
  legs.store(from, to, {});
  const std::int64_t otherFrom = *anyId;
  const std::int64_t otherTo = *anyId;
  const bool readTheSame = std::to_string(from) + std::to_string(to) ==
                           std::to_string(otherFrom) + std::to_string(otherTo);
  RC_ASSERT((legs.find(otherFrom, otherTo) != nullptr) == readTheSame);
}

}  // namespace
}  // namespace tern::detail
