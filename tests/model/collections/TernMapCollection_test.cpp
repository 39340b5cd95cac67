#include "TernCoreKit/model/collections/TernMapCollection.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "TernCoreKit/model/collections/TernFloorCollection.hpp"
#include "TernCoreKit/model/collections/TernWaypointCollection.hpp"
#include "TernCoreKit/model/records/TernAmenity.hpp"
#include "TernCoreKit/model/records/TernBuilding.hpp"
#include "TernCoreKit/model/records/TernDestination.hpp"
#include "tests/support/CapturedLog.hpp"
#include "tests/support/MadeRecords.hpp"

namespace tern::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// Map 1 without waypoints, map 2 with waypoints 21 to 24, map 3 with waypoints 31 and 32.
std::shared_ptr<TernMapCollection> threeMaps() {
  return filled<TernMapCollection>(R"([{"id": 1},
      {"id": 2, "waypoints": {"items": [
          {"id": 21, "associations": {"destinations": [5, 5], "amenities": []}},
          {"id": 22, "associations": {"destinations": [6], "amenities": [7]}},
          {"id": 23, "associations": [5]},
          {"id": 24}]}},
      {"id": 3, "waypoints": {"items": [
          {"id": 31, "associations": {"destinations": 5, "amenities": [7, 8]}},
          {"id": 32, "associations": {"destinations": [9, 5]}}]}}])");
}

TEST(TernMapCollection, getAllWaypointsGoesFromMapToMap) {
  CapturedLog log;
  EXPECT_THAT(ids(threeMaps()->getAllWaypoints()), ElementsAre(21, 22, 23, 24, 31, 32));
  EXPECT_THAT(TernMapCollection().getAllWaypoints(), IsEmpty());
}

TEST(TernMapCollection, waypointsWithSomethingToReach) {
  CapturedLog log;
  EXPECT_THAT(ids(threeMaps()->getWaypointsWithDestinations()), ElementsAre(21, 22, 32));
  EXPECT_THAT(ids(threeMaps()->getWaypointsWithAmenities()), ElementsAre(22, 31));
}

TEST(TernMapCollection, waypointsOfADestination) {
  CapturedLog log;
  const auto maps = threeMaps();
  EXPECT_THAT(ids(maps->getWaypointsByDestination(made<TernDestination>(R"({"id": 5})"))),
              ElementsAre(21, 32));
  EXPECT_THAT(maps->getWaypointsByDestination(made<TernDestination>(R"({"id": 4})")), IsEmpty());
  EXPECT_THAT(maps->getWaypointsByDestination(made<TernDestination>("{}")), IsEmpty());
  EXPECT_THAT(maps->getWaypointsByDestination(nullptr), IsEmpty());
}

TEST(TernMapCollection, waypointsOfAnAmenity) {
  CapturedLog log;
  const auto maps = threeMaps();
  EXPECT_THAT(ids(maps->getWaypointsByAmenity(made<TernAmenity>(R"({"id": 7})"))),
              ElementsAre(22, 31));
  EXPECT_THAT(maps->getWaypointsByAmenity(made<TernAmenity>(R"({"id": null})")), IsEmpty());
  EXPECT_THAT(maps->getWaypointsByAmenity(nullptr), IsEmpty());
}

TEST(TernMapCollection, waypointsOfAMapAFloorAndABuilding) {
  CapturedLog log;
  const auto maps = threeMaps();
  const auto floor = made<TernFloor>(R"({"map": {"id": 9, "waypoints": {"items": [{"id": 91}]}}})");
  const auto building = made<TernBuilding>(R"({"floors": {"items": [{"id": 1},
      {"id": 2, "map": {"waypoints": {"items": [{"id": 92}, {"id": 93}]}}},
      {"id": 3, "map": {}},
      {"id": 4, "map": {"waypoints": {"items": [{"id": 94}]}}}]}})");
  EXPECT_THAT(ids(maps->getWaypointsByMap(maps->getById(3))), ElementsAre(31, 32));
  EXPECT_THAT(maps->getWaypointsByMap(maps->getById(1)), IsEmpty());
  EXPECT_THAT(maps->getWaypointsByMap(nullptr), IsEmpty());
  EXPECT_THAT(ids(maps->getWaypointsByFloor(floor)), ElementsAre(91));
  EXPECT_THAT(maps->getWaypointsByFloor(made<TernFloor>("{}")), IsEmpty());
  EXPECT_THAT(maps->getWaypointsByFloor(nullptr), IsEmpty());
  EXPECT_THAT(ids(maps->getWaypointsByBuilding(building)), ElementsAre(92, 93, 94));
  EXPECT_THAT(maps->getWaypointsByBuilding(made<TernBuilding>("{}")), IsEmpty());
  EXPECT_THAT(maps->getWaypointsByBuilding(nullptr), IsEmpty());
}

TEST(TernMapCollection, addMapToCollectionReplacesAMapOfThatId) {
  CapturedLog log;
  const auto maps = threeMaps();
  const auto map = made<TernMap>(R"({"id": 2, "externalId": "new"})");
  maps->addMapToCollection(map);
  maps->addMapToCollection(made<TernMap>(R"({"id": 4})"));
  EXPECT_THAT(ids(maps->getAll()), ElementsAre(1, 2, 3, 4));
  EXPECT_EQ(maps->getById(2), map);
}

TEST(TernMapCollection, addMapToCollectionIgnoresNullAndReadsAMissingIdAsZero) {
  TernMapCollection maps;
  maps.addMapToCollection(nullptr);
  EXPECT_EQ(maps.getCount(), 0U);
  const auto map = std::make_shared<TernMap>();
  maps.addMapToCollection(map);
  EXPECT_EQ(maps.getById(0), map);
}

}  // namespace
}  // namespace tern::test
