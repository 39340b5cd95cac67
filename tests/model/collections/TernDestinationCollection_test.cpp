#include "TernCoreKit/model/collections/TernDestinationCollection.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "TernCoreKit/model/collections/TernFloorCollection.hpp"
#include "TernCoreKit/model/records/TernBuilding.hpp"
#include "TernCoreKit/model/records/TernMap.hpp"
#include "TernCoreKit/model/records/TernWaypoint.hpp"
#include "tests/support/RecordChecks.hpp"

namespace tern::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(TernDestinationCollection, aCopyIsOfTheSameKindWithTheSameRecords) {
  CapturedLog log;
  const auto collection = filled<TernDestinationCollection>(R"([{"id": 2}, {"id": 1}])");
  const std::shared_ptr<TernDestinationCollection> copy = collection->copyWithZone();
  EXPECT_EQ(copy->getAll(), collection->getAll());
  copy->create(parsed(R"({"id": 3})"));
  EXPECT_THAT(ids(copy->getAll()), ElementsAre(2, 1, 3));
  EXPECT_THAT(ids(collection->getAll()), ElementsAre(2, 1));
}

TEST(TernDestinationCollection, getByTagFindsThoseWhoseTagsContainTheText) {
  CapturedLog log;
  const auto collection = filled<TernDestinationCollection>(
      R"([{"id": 1, "tags": ["x", "a"]}, {"id": 2, "tags": ["a", "a"]}, {"id": 3, "tags": "a"},
          {"id": 4, "tags": [5, null]}, {"id": 5}, {"id": 6, "tags": ["A", "ab"]}])");
  EXPECT_THAT(ids(collection->getByTag("a")), ElementsAre(1, 2));
  EXPECT_THAT(collection->getByTag("c"), IsEmpty());
  for (const Value& wrong : {Value(), Value(nullptr), Value(5)}) {
    EXPECT_THAT(collection->getByTag(wrong), IsEmpty());
  }
}

TEST(TernDestinationCollection, getByKeywordFindsThoseWhoseKeywordsContainTheText) {
  CapturedLog log;
  const auto collection = filled<TernDestinationCollection>(
      R"([{"id": 1, "keywords": ["x", "a"]}, {"id": 2, "keywords": ["a", "a"]}, {"id": 3, "keywords": "a"},
          {"id": 4, "keywords": [5, null]}, {"id": 5}, {"id": 6, "keywords": ["A", "ab"]}])");
  EXPECT_THAT(ids(collection->getByKeyword("a")), ElementsAre(1, 2));
  EXPECT_THAT(collection->getByKeyword("c"), IsEmpty());
  for (const Value& wrong : {Value(), Value(nullptr), Value(5)}) {
    EXPECT_THAT(collection->getByKeyword(wrong), IsEmpty());
  }
}

TEST(TernDestinationCollection, getByUnitNumberFindsEveryEqualText) {
  CapturedLog log;
  const auto collection = filled<TernDestinationCollection>(
      R"([{"id": 1, "unitNumber": "a"}, {"id": 2, "unitNumber": "b"}, {"id": 3, "unitNumber": "a"},
          {"id": 4, "unitNumber": 5}, {"id": 5}, {"id": 6, "unitNumber": "A"}, {"id": 7, "unitNumber": null}])");
  EXPECT_THAT(ids(collection->getByUnitNumber("a")), ElementsAre(1, 3));
  EXPECT_THAT(collection->getByUnitNumber("c"), IsEmpty());
  for (const Value& wrong : {Value(), Value(nullptr), Value(5), Value::list({"a"})}) {
    EXPECT_THAT(collection->getByUnitNumber(wrong), IsEmpty());
  }
}

std::shared_ptr<TernDestinationCollection> places() {
  return filled<TernDestinationCollection>(
      R"([{"id": 1, "locations": [{"mapId": 5, "waypointIds": [51, 52]}]},
          {"id": 2, "locations": [{"mapId": 6, "waypointIds": [61]}, {"mapId": 5}, {"mapId": 6, "waypointIds": [61]}]},
          {"id": 3},
          {"id": 4, "locations": [{"mapId": 7, "waypointIds": 61}]}])");
}

TEST(TernDestinationCollection, getByMapListsOneOnceForEachLocationOnIt) {
  CapturedLog log;
  EXPECT_THAT(ids(places()->getByMap(made<TernMap>(R"({"id": 6})"))), ElementsAre(2, 2));
  EXPECT_THAT(ids(places()->getByMap(made<TernMap>(R"({"id": 5})"))), ElementsAre(1, 2));
  EXPECT_THAT(places()->getByMap(made<TernMap>(R"({"id": 9})")), IsEmpty());
  EXPECT_THAT(places()->getByMap(nullptr), IsEmpty());
}

TEST(TernDestinationCollection, getByFloorIsGetByMapOfItsMap) {
  CapturedLog log;
  EXPECT_THAT(ids(places()->getByFloor(made<TernFloor>(R"({"map": {"id": 6}})"))),
              ElementsAre(2, 2));
  EXPECT_THAT(places()->getByFloor(nullptr), IsEmpty());
}

TEST(TernDestinationCollection, aFloorWhoseMapIsNullHasNoDestinations) {
  CapturedLog log;
  EXPECT_THAT(places()->getByFloor(made<TernFloor>(R"({"id": 1, "map": null})")), IsEmpty());
  EXPECT_THAT(places()->getByFloor(made<TernFloor>(R"({"id": 1})")), IsEmpty());
}

TEST(TernDestinationCollection, getByBuildingListsOneOnceForEachLocationAndFloor) {
  CapturedLog log;
  const auto building = made<TernBuilding>(
      R"({"floors": {"items": [{"id": 1, "map": {"id": 6}}, {"id": 2, "map": {"id": 5}}, {"id": 3, "map": {"id": 5}}]}})");
  EXPECT_THAT(ids(places()->getByBuilding(building)), ElementsAre(1, 1, 2, 2, 2, 2));
  EXPECT_THAT(places()->getByBuilding(made<TernBuilding>("{}")), IsEmpty());
  EXPECT_THAT(places()->getByBuilding(nullptr), IsEmpty());
}

TEST(TernDestinationCollection, getByWaypointListsOneOnceForEachLocationThatNamesIt) {
  CapturedLog log;
  EXPECT_THAT(ids(places()->getByWaypoint(made<TernWaypoint>(R"({"id": 61})"))), ElementsAre(2, 2));
  EXPECT_THAT(ids(places()->getByWaypoint(made<TernWaypoint>(R"({"id": 51})"))), ElementsAre(1));
  EXPECT_THAT(places()->getByWaypoint(made<TernWaypoint>("{}")), IsEmpty());
  EXPECT_THAT(places()->getByWaypoint(nullptr), IsEmpty());
}

}  // namespace
}  // namespace tern::test
