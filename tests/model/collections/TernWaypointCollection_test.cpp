#include "TernCoreKit/model/collections/TernWaypointCollection.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "TernCoreKit/model/records/TernAmenity.hpp"
#include "TernCoreKit/model/records/TernDestination.hpp"
#include "tests/support/RecordChecks.hpp"

namespace tern::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(TernWaypointCollection, aCopyIsOfTheSameKindWithTheSameRecords) {
  CapturedLog log;
  const auto collection = filled<TernWaypointCollection>(R"([{"id": 2}, {"id": 1}])");
  const std::shared_ptr<TernWaypointCollection> copy = collection->copyWithZone();
  EXPECT_EQ(copy->getAll(), collection->getAll());
  copy->create(parsed(R"({"id": 3})"));
  EXPECT_THAT(ids(copy->getAll()), ElementsAre(2, 1, 3));
  EXPECT_THAT(ids(collection->getAll()), ElementsAre(2, 1));
}

TEST(TernWaypointCollection, getByDestinationListsAWaypointOnceForEachLocationThatNamesIt) {
  CapturedLog log;
  const auto waypoints = filled<TernWaypointCollection>(
      R"([{"id": 1, "mapId": 5}, {"id": 2, "mapId": 5}, {"id": 3, "mapId": 6}, {"id": 4}, {"id": 5, "mapId": null},
          {"mapId": 5}])");
  const auto place = made<TernDestination>(R"({"locations": [
      {"mapId": 6, "waypointIds": [3, 1]}, {"mapId": 5, "waypointIds": [2, 1, 1]},
      {"mapId": 5, "waypointIds": [2]}, {"waypointIds": [1, 4, 5]}, {"mapId": 5},
      {"mapId": 0, "waypointIds": [4, 5, 0, null, "1"]}]})");
  EXPECT_THAT(ids(waypoints->getByDestination(place)), ElementsAre(1, 2, 2, 3));
  EXPECT_THAT(waypoints->getByDestination(made<TernDestination>("{}")), IsEmpty());
  EXPECT_THAT(waypoints->getByDestination(nullptr), IsEmpty());
}

TEST(TernWaypointCollection, getByAmenityListsAWaypointOnceForEachLocationThatNamesIt) {
  CapturedLog log;
  const auto waypoints = filled<TernWaypointCollection>(
      R"([{"id": 1, "mapId": 5}, {"id": 2, "mapId": 5}, {"id": 3, "mapId": 6}, {"id": 4}, {"id": 5, "mapId": null},
          {"mapId": 5}])");
  const auto place = made<TernAmenity>(R"({"locations": [
      {"mapId": 6, "waypointIds": [3, 1]}, {"mapId": 5, "waypointIds": [2, 1, 1]},
      {"mapId": 5, "waypointIds": [2]}, {"waypointIds": [1, 4, 5]}, {"mapId": 5},
      {"mapId": 0, "waypointIds": [4, 5, 0, null, "1"]}]})");
  EXPECT_THAT(ids(waypoints->getByAmenity(place)), ElementsAre(1, 2, 2, 3));
  EXPECT_THAT(waypoints->getByAmenity(made<TernAmenity>("{}")), IsEmpty());
  EXPECT_THAT(waypoints->getByAmenity(nullptr), IsEmpty());
}

}  // namespace
}  // namespace tern::test
