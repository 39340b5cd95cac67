#include "TernCoreKit/model/collections/TernBuildingCollection.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "TernCoreKit/model/collections/TernFloorCollection.hpp"
#include "TernCoreKit/model/records/TernMap.hpp"
#include "tests/support/CapturedLog.hpp"
#include "tests/support/MadeRecords.hpp"

namespace tern::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(TernBuildingCollection, aBatchFillsItsFields) {
  CapturedLog log;
  const auto buildings = batch<TernBuildingCollection>(
      R"({"defaultId": 12, "items": [{"id": 12}], "loadedBuildingCount": 1})");
  EXPECT_EQ(buildings->defaultId, Value(12));
  EXPECT_EQ(buildings->loadedBuildingCount, Value(1));
}

TEST(TernBuildingCollection, withoutDefaultIdTheFirstKeyAsTextIsTheDefault) {
  const auto buildings = filled<TernBuildingCollection>(R"([{"id": 9}, {"id": 10}])");
  EXPECT_EQ(idOf(buildings->getDefault()), 10);
  EXPECT_EQ(TernBuildingCollection().getDefault(), nullptr);
}

TEST(TernBuildingCollection, keysAreSortedInAnyCase) {
  const auto buildings =
      filled<TernBuildingCollection>(R"([{"id": "b"}, {"id": "C"}, {"id": "A"}])");
  EXPECT_EQ(buildings->getDefault()->id, Value("A"));
  const auto equal = filled<TernBuildingCollection>(R"([{"id": "b"}, {"id": "a"}, {"id": "A"}])");
  EXPECT_EQ(equal->getDefault()->id, Value("a"));
}

TEST(TernBuildingCollection, defaultIdNamesTheDefault) {
  const auto buildings = filled<TernBuildingCollection>(R"([{"id": 9}, {"id": 10}])");
  buildings->defaultId = 9;
  EXPECT_EQ(idOf(buildings->getDefault()), 9);
  for (const char* number : {"9.0", "9e0"}) {
    buildings->defaultId = parsed(number);
    EXPECT_EQ(idOf(buildings->getDefault()), 9) << number;
  }
  buildings->defaultId = 11;
  EXPECT_EQ(buildings->getDefault(), nullptr);
}

TEST(TernBuildingCollection, onlyAKnownBuildingBecomesTheDefault) {
  const auto buildings = filled<TernBuildingCollection>(R"([{"id": 9}, {"id": 10}])");
  buildings->assignDefaultBuildingWithId(11);
  EXPECT_TRUE(buildings->defaultId.isAbsent());
  buildings->assignDefaultBuildingWithId(9);
  EXPECT_EQ(buildings->defaultId, Value(9));
  buildings->assignDefaultBuildingWithId(-1);
  EXPECT_EQ(buildings->defaultId, Value(9));
}

// Buildings 1 (without floors), 2 (floors 21 and 22 with maps 5 and 6) and 3 (floor 31 with map 6).
std::shared_ptr<TernBuildingCollection> threeBuildings() {
  return filled<TernBuildingCollection>(R"([{"id": 1},
      {"id": 2, "floors": {"items": [{"id": 21, "map": {"id": 5}}, {"id": 22, "map": {"id": 6}}]}},
      {"id": 3, "floors": {"items": [{"id": 31, "map": {"id": 6}}, {"id": 22}]}}])");
}

TEST(TernBuildingCollection, getByFloorFindsTheFirstThatHoldsItsId) {
  CapturedLog log;
  const auto buildings = threeBuildings();
  EXPECT_EQ(idOf(buildings->getByFloor(made<TernFloor>(R"({"id": 31})"))), 3);
  EXPECT_EQ(idOf(buildings->getByFloor(made<TernFloor>(R"({"id": 22})"))), 2);
  EXPECT_EQ(buildings->getByFloor(made<TernFloor>(R"({"id": 99})")), nullptr);
  EXPECT_EQ(buildings->getByFloor(nullptr), nullptr);
}

TEST(TernBuildingCollection, getByMapFindsTheFirstThatShowsIt) {
  CapturedLog log;
  const auto buildings = threeBuildings();
  const auto map = made<TernMap>(R"({"id": 6})");
  EXPECT_EQ(idOf(buildings->getByMap(map)), 2);
  EXPECT_EQ(idOf(buildings->getFloorByMap(map)), 22);
  for (const auto& unknown :
       {made<TernMap>(R"({"id": 7})"), made<TernMap>("{}"), std::shared_ptr<TernMap>()}) {
    EXPECT_EQ(buildings->getByMap(unknown), nullptr);
    EXPECT_EQ(buildings->getFloorByMap(unknown), nullptr);
  }
}

TEST(TernBuildingCollection, getAllFloorsGoesFromBuildingToBuilding) {
  CapturedLog log;
  EXPECT_THAT(ids(threeBuildings()->getAllFloors()), ElementsAre(21, 22, 31, 22));
  EXPECT_THAT(TernBuildingCollection().getAllFloors(), IsEmpty());
}

TEST(TernBuildingCollection, floorsThatAreNoCollectionArePassedOver) {
  CapturedLog log;
  const auto buildings =
      filled<TernBuildingCollection>(R"([{"id": 1, "floors": [21]}, {"id": 2, "floors": null}])");
  EXPECT_THAT(buildings->getAllFloors(), IsEmpty());
  EXPECT_EQ(buildings->getByFloor(made<TernFloor>(R"({"id": 21})")), nullptr);
  EXPECT_EQ(buildings->getByMap(made<TernMap>(R"({"id": 21})")), nullptr);
}

}  // namespace
}  // namespace tern::test
