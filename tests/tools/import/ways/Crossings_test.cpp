#include "tools/import/ways/Crossings.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tern::imports {
namespace {

using testing::IsEmpty;

TEST(Crossings, oneGoesThroughTheMiddleOfADoor) {
  const std::vector<Crossing> crossings = crossingsOf({{2, 3}, {3, 3}});
  ASSERT_EQ(crossings.size(), 1U);
  EXPECT_EQ(crossings[0].at, (Point{2.5, 3}));
  EXPECT_EQ(crossings[0].normal, (Point{0, 1}));
}

TEST(Crossings, oneGoesThroughAWideDoorInSeveralPlacesAlongItsLine) {
  const std::vector<Crossing> crossings = crossingsOf({{0, 0}, {2, 0}, {2, 2}});
  ASSERT_EQ(crossings.size(), 2U);
  EXPECT_EQ(crossings[0].at, (Point{1, 0}));
  EXPECT_EQ(crossings[1].at, (Point{2, 1}));
}

TEST(Crossings, aDoorWithoutALengthIsGoneThroughNowhere) {
  EXPECT_THAT(crossingsOf({{1, 1}, {1, 1}}), IsEmpty());
}

}  // namespace
}  // namespace tern::imports
