#include "TernCoreKit/model/collections/TernDestinationCollection.hpp"

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

std::shared_ptr<TernDestinationCollection> locatedDestinations() {
  return filled<TernDestinationCollection>(
      R"([{"id": 1, "locations": [{"mapId": 5, "waypointIds": [51, 52]}]},
          {"id": 2, "locations": [{"mapId": 6, "waypointIds": [61]}, {"mapId": 5}, {"mapId": 6, "waypointIds": [61]}]},
          {"id": 3},
          {"id": 4, "locations": [{"mapId": 7, "waypointIds": 61}]}])");
}

TEST(TernDestinationCollection, getByMapListsOneOnceForEachLocationOnIt) {
  CapturedLog log;
  EXPECT_THAT(ids(locatedDestinations()->getByMap(made<TernMap>(R"({"id": 6})"))),
              ElementsAre(2, 2));
  EXPECT_THAT(ids(locatedDestinations()->getByMap(made<TernMap>(R"({"id": 5})"))),
              ElementsAre(1, 2));
  EXPECT_THAT(locatedDestinations()->getByMap(made<TernMap>(R"({"id": 9})")), IsEmpty());
  EXPECT_THAT(locatedDestinations()->getByMap(nullptr), IsEmpty());
}

TEST(TernDestinationCollection, getByFloorIsGetByMapOfItsMap) {
  CapturedLog log;
  EXPECT_THAT(ids(locatedDestinations()->getByFloor(made<TernFloor>(R"({"map": {"id": 6}})"))),
              ElementsAre(2, 2));
  EXPECT_THAT(locatedDestinations()->getByFloor(nullptr), IsEmpty());
}

TEST(TernDestinationCollection, aFloorWhoseMapIsNullHasNoDestinations) {
  CapturedLog log;
  EXPECT_THAT(locatedDestinations()->getByFloor(made<TernFloor>(R"({"id": 1, "map": null})")),
              IsEmpty());
  EXPECT_THAT(locatedDestinations()->getByFloor(made<TernFloor>(R"({"id": 1})")), IsEmpty());
}

TEST(TernDestinationCollection, getByBuildingListsOneOnceForEachLocationAndFloor) {
  CapturedLog log;
  const auto building = made<TernBuilding>(
      R"({"floors": {"items": [{"id": 1, "map": {"id": 6}}, {"id": 2, "map": {"id": 5}}, {"id": 3, "map": {"id": 5}}]}})");
  EXPECT_THAT(ids(locatedDestinations()->getByBuilding(building)), ElementsAre(1, 1, 2, 2, 2, 2));
  EXPECT_THAT(locatedDestinations()->getByBuilding(made<TernBuilding>("{}")), IsEmpty());
  EXPECT_THAT(locatedDestinations()->getByBuilding(nullptr), IsEmpty());
}

TEST(TernDestinationCollection, getByWaypointListsOneOnceForEachLocationThatNamesIt) {
  CapturedLog log;
  EXPECT_THAT(ids(locatedDestinations()->getByWaypoint(made<TernWaypoint>(R"({"id": 61})"))),
              ElementsAre(2, 2));
  EXPECT_THAT(ids(locatedDestinations()->getByWaypoint(made<TernWaypoint>(R"({"id": 51})"))),
              ElementsAre(1));
  EXPECT_THAT(locatedDestinations()->getByWaypoint(made<TernWaypoint>("{}")), IsEmpty());
  EXPECT_THAT(locatedDestinations()->getByWaypoint(nullptr), IsEmpty());
}

}  // namespace
}  // namespace tern::test
