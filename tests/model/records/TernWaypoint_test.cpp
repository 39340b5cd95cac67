#include "TernCoreKit/model/records/TernWaypoint.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "TernCoreKit/model/records/TernAssociation.hpp"
#include "tests/support/CapturedLog.hpp"
#include "tests/support/MadeRecords.hpp"

namespace tern::test {
namespace {

TEST(TernWaypoint, associationsOfAListStayTheList) {
  CapturedLog log;
  const auto waypoint = made<TernWaypoint>(R"({"associations": [1, 2]})");
  EXPECT_FALSE(waypoint->associations);
  EXPECT_EQ(waypoint->associations.plain(), Value::list({1, 2}));
}

TEST(TernWaypoint, associationsOfAMapAreARecord) {
  const auto waypoint =
      made<TernWaypoint>(R"({"associations": {"destinations": [5], "amenities": []}})");
  ASSERT_TRUE(waypoint->associations);
  EXPECT_EQ(waypoint->associations->destinations, Value::list({5}));
  EXPECT_EQ(waypoint->associations->amenities, Value::list());
}

TEST(TernWaypoint, anUnknownKeyLeavesLaterFieldsUnsetAndTheAssociationsAMap) {
  CapturedLog log;
  const auto waypoint =
      made<TernWaypoint>(R"({"id": 1, "associations": {"destinations": [5]}, "x": 0, "mapId": 2})");
  EXPECT_EQ(waypoint->id, Value(1));
  EXPECT_TRUE(waypoint->mapId.isAbsent());
  EXPECT_FALSE(waypoint->associations);
  EXPECT_TRUE(waypoint->associations.plain().isMap());
  EXPECT_THAT(log.take(), testing::ElementsAre("Tern SDK: unknown key \"x\" in TernWaypoint"));
}

TEST(TernWaypoint, anUnknownKeyWithinItsAssociationsStopsOnlyThose) {
  CapturedLog log;
  const auto waypoint =
      made<TernWaypoint>(R"({"associations": {"x": 0, "destinations": [5]}, "mapId": 2})");
  ASSERT_TRUE(waypoint->associations);
  EXPECT_TRUE(waypoint->associations->destinations.isAbsent());
  EXPECT_EQ(waypoint->mapId, Value(2));
  EXPECT_THAT(log.take(), testing::ElementsAre("Tern SDK: unknown key \"x\" in TernAssociation"));
}

TEST(TernWaypoint, aCoordinateIsReadAsItIsStored) {
  const auto waypoint = made<TernWaypoint>(R"({"coordinates": [7, 2.5]})");
  EXPECT_TRUE(waypoint->coordinate(0).isInteger());
  EXPECT_EQ(waypoint->coordinate(0), Value(7));
  EXPECT_EQ(waypoint->coordinate(1), Value(2.5));
}

TEST(TernWaypoint, aCoordinateThatIsNotThereIsAbsent) {
  EXPECT_TRUE(made<TernWaypoint>(R"({"coordinates": [7]})")->coordinate(1).isAbsent());
  EXPECT_TRUE(made<TernWaypoint>(R"({"coordinates": {"x": 1, "y": 2}})")->coordinate(0).isAbsent());
  EXPECT_TRUE(made<TernWaypoint>("{}")->coordinate(0).isAbsent());
}

}  // namespace
}  // namespace tern::test
