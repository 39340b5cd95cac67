#include "TernCoreKit/model/collections/TernAmenityCollection.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "TernCoreKit/model/collections/TernFloorCollection.hpp"
#include "TernCoreKit/model/records/TernBuilding.hpp"
#include "TernCoreKit/model/records/TernMap.hpp"
#include "TernCoreKit/model/records/TernWaypoint.hpp"
#include "tests/support/CapturedLog.hpp"
#include "tests/support/MadeRecords.hpp"

namespace tern::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::shared_ptr<TernAmenityCollection> places() {
  return filled<TernAmenityCollection>(
      R"([{"id": 1, "locations": [{"mapId": 5, "waypointIds": [51, 52]}]},
          {"id": 2, "locations": [{"mapId": 6, "waypointIds": [61]}, {"mapId": 5}, {"mapId": 6, "waypointIds": [61]}]},
          {"id": 3},
          {"id": 4, "locations": [{"mapId": 7, "waypointIds": 61}]}])");
}

TEST(TernAmenityCollection, getByWaypointFollowsItsAssociations) {
  CapturedLog log;
  const auto waypoint =
      made<TernWaypoint>(R"({"associations": {"amenities": [4, 99, 2, 4], "destinations": [1]}})");
  EXPECT_THAT(ids(places()->getByWaypoint(waypoint)), ElementsAre(4, 2, 4));
  EXPECT_THAT(places()->getByWaypoint(made<TernWaypoint>(R"({"associations": [1]})")), IsEmpty());
  EXPECT_THAT(places()->getByWaypoint(nullptr), IsEmpty());
}

TEST(TernAmenityCollection, getByMapListsOneOnceForEachLocationOnIt) {
  CapturedLog log;
  EXPECT_THAT(ids(places()->getByMap(made<TernMap>(R"({"id": 6})"))), ElementsAre(2, 2));
  EXPECT_THAT(places()->getByMap(nullptr), IsEmpty());
}

TEST(TernAmenityCollection, aMapWithoutIdIsLogged) {
  CapturedLog log;
  EXPECT_THAT(places()->getByMap(made<TernMap>("{}")), IsEmpty());
  EXPECT_THAT(log.take(), ElementsAre("Error: Map id is not set."));
}

TEST(TernAmenityCollection, aFloorWithoutMapIsLogged) {
  CapturedLog log;
  EXPECT_THAT(ids(places()->getByFloor(made<TernFloor>(R"({"map": {"id": 5}})"))),
              ElementsAre(1, 2));
  EXPECT_THAT(places()->getByFloor(nullptr), IsEmpty());
  EXPECT_THAT(log.take(), IsEmpty());
  EXPECT_THAT(places()->getByFloor(made<TernFloor>(R"({"map": null})")), IsEmpty());
  EXPECT_THAT(log.take(), ElementsAre("Error: Floor map is null."));
}

TEST(TernAmenityCollection, getByBuildingGoesFromFloorToFloor) {
  CapturedLog log;
  const auto building = made<TernBuilding>(
      R"({"floors": {"items": [{"id": 1, "map": {"id": 6}}, {"id": 2, "map": {"id": 5}}, {"id": 3, "map": {"id": 5}}]}})");
  EXPECT_THAT(ids(places()->getByBuilding(building)), ElementsAre(2, 2, 1, 2, 1, 2));
  EXPECT_THAT(places()->getByBuilding(nullptr), IsEmpty());
}

TEST(TernAmenityCollection, aFloorWithoutMapDoesNotStopTheBuilding) {
  CapturedLog log;
  const auto building =
      made<TernBuilding>(R"({"floors": {"items": [{"id": 1}, {"id": 2, "map": {"id": 6}}]}})");
  EXPECT_THAT(ids(places()->getByBuilding(building)), ElementsAre(2, 2));
  EXPECT_THAT(log.take(), ElementsAre("Error: Floor map is null."));
}

TEST(TernAmenityCollection, aBuildingWithoutFloorsIsLogged) {
  CapturedLog log;
  EXPECT_THAT(places()->getByBuilding(made<TernBuilding>("{}")), IsEmpty());
  EXPECT_THAT(log.take(), ElementsAre("Error: Floor is null in building."));
}

}  // namespace
}  // namespace tern::test
