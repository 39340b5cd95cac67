#include "tools/tern/Routing.hpp"

#include <gtest/gtest.h>

#include <array>

#include "TernCoreKit/model/records/TernWaypoint.hpp"
#include "tests/support/ActiveVenue.hpp"

namespace tern::command {
namespace {

using test::lettersOf;

const test::Drawing line{.floors = {{.lines = {"A  B  C    D"}}}, .paths = {"A-B", "B-C"}};

TEST(Routing, routeJoinsWaypointsThatTheVenueHas) {
  const auto venue = test::loadDrawnVenue(line);
  EXPECT_EQ(lettersOf(findRoute(*venue, 1, 3, 0)), "ABC");
  EXPECT_TRUE(findRoute(*venue, 1, 4, 0).empty());
  EXPECT_TRUE(findRoute(*venue, 1, 9, 0).empty());
  EXPECT_TRUE(findRoute(*venue, 9, 1, 0).empty());
}

TEST(Routing, idIsNotCutToThirtyTwoBits) {
  const auto venue = test::loadDrawnVenue(line);
  EXPECT_TRUE(findRoute(*venue, 1, 3 + (std::int64_t{1} << 32U), 0).empty());
}

TEST(Routing, levelBelowAllPathsLeavesNone) {
  const auto venue = test::loadDrawnVenue(line);
  EXPECT_TRUE(findRoute(*venue, 1, 3, -1).empty());
}

TEST(Routing, cheapestOfSeveralIsReached) {
  const auto venue = test::loadDrawnVenue(line);
  EXPECT_EQ(lettersOf(findRouteToAny(*venue, 1, std::array<std::int64_t, 4>{9, 3, 2, 3}, 0)), "AB");
  EXPECT_TRUE(findRouteToAny(*venue, 9, std::array<std::int64_t, 1>{1}, 0).empty());
  EXPECT_TRUE(findRouteToAny(*venue, 1, {}, 0).empty());
}

TEST(Routing, closestByRouteIsACandidate) {
  const auto venue = test::loadDrawnVenue(line);
  const auto closest = [&](std::vector<std::int64_t> candidates, std::int64_t to) {
    const auto found = findClosestByRoute(*venue, candidates, to, 0);
    return found != nullptr ? found->id.integer() : 0;
  };
  EXPECT_EQ(closest({3, 9, 2, 4}, 1), 2);
  EXPECT_EQ(closest({4}, 1), 0);
  EXPECT_EQ(closest({1}, 9), 0);
  EXPECT_EQ(closest({4, 1}, 4), 4);
}

}  // namespace
}  // namespace tern::command
