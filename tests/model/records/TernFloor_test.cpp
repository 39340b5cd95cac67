#include "TernCoreKit/model/records/TernFloor.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "TernCoreKit/model/collections/TernWaypointCollection.hpp"
#include "TernCoreKit/model/records/TernMap.hpp"
#include "tests/support/CapturedLog.hpp"
#include "tests/support/MadeRecords.hpp"

namespace tern::test {
namespace {

TEST(TernFloor, nullLevelReadsAsSmallestInteger) {
  EXPECT_EQ(made<TernFloor>(R"({"level": null})")->level, Value(-2147483648LL));
}

TEST(TernFloor, missingLevelStaysAbsent) {
  EXPECT_TRUE(made<TernFloor>(R"({"id": 1})")->level.isAbsent());
}

TEST(TernFloor, levelOfAnyOtherKindStays) {
  EXPECT_EQ(made<TernFloor>(R"({"level": "top"})")->level, Value("top"));
  EXPECT_EQ(made<TernFloor>(R"({"level": 3})")->copyWithZone()->level, Value(3));
}

TEST(TernFloor, altitudeIsThatOfElevationWhateverTheDocumentSays) {
  const auto floor = made<TernFloor>(R"({"elevation": 3, "altitude": 9})");
  EXPECT_EQ(floor->altitude, Value(3));
  EXPECT_EQ(floor->elevation, Value(3));
  EXPECT_EQ(floor->copyWithZone()->altitude, Value(3));
  EXPECT_TRUE(made<TernFloor>(R"({"altitude": 9})")->altitude.isAbsent());
}

TEST(TernFloor, anUnknownKeyLeavesLevelAltitudeAndMapAsTheDocumentGaveThem) {
  CapturedLog log;
  const auto floor = made<TernFloor>(
      R"({"level": null, "elevation": 3, "altitude": 9, "map": {"id": 1}, "colour": 1})");
  EXPECT_TRUE(floor->level.isNull());
  EXPECT_EQ(floor->altitude, Value(9));
  EXPECT_FALSE(floor->map);
  EXPECT_EQ(floor->map.plain(), Value::map({{"id", 1}}));
  EXPECT_THAT(log.take(), testing::ElementsAre("Tern SDK: unknown key \"colour\" in TernFloor"));
}

TEST(TernFloor, aCopyHasAMapOfItsOwnWithTheSameWaypoints) {
  const auto floor = made<TernFloor>(R"({"map": {"id": 1, "waypoints": {"items": [{"id": 5}]}}})");
  const auto copy = floor->copyWithZone();
  EXPECT_NE(copy->map.get(), floor->map.get());
  EXPECT_NE(copy->map->waypoints.get(), floor->map->waypoints.get());
  EXPECT_EQ(copy->map->waypoints->getAll(), floor->map->waypoints->getAll());
}

}  // namespace
}  // namespace tern::test
