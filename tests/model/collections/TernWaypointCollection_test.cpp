#include "TernCoreKit/model/collections/TernWaypointCollection.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "TernCoreKit/model/records/TernAmenity.hpp"
#include "TernCoreKit/model/records/TernDestination.hpp"
#include "tests/support/CapturedLog.hpp"
#include "tests/support/MadeRecords.hpp"

namespace tern::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// Asks for the waypoints of a place whose locations name them in every way.
template <class Place, class Query>
void expectOnceForEachLocation(Query query) {
  CapturedLog log;
  const auto waypoints = filled<TernWaypointCollection>(
      R"([{"id": 1, "mapId": 5}, {"id": 2, "mapId": 5}, {"id": 3, "mapId": 6}, {"id": 4}, {"id": 5, "mapId": null},
          {"mapId": 5}])");
  const auto place = made<Place>(R"({"locations": [
      {"mapId": 6, "waypointIds": [3, 1]}, {"mapId": 5, "waypointIds": [2, 1, 1]},
      {"mapId": 5, "waypointIds": [2]}, {"waypointIds": [1, 4, 5]}, {"mapId": 5},
      {"mapId": 0, "waypointIds": [4, 5, 0, null, "1"]}]})");
  EXPECT_THAT(ids((*waypoints.*query)(place)), ElementsAre(1, 2, 2, 3));
  EXPECT_THAT((*waypoints.*query)(made<Place>("{}")), IsEmpty());
  EXPECT_THAT((*waypoints.*query)(nullptr), IsEmpty());
}

TEST(TernWaypointCollection, getByDestinationListsAWaypointOnceForEachLocationThatNamesIt) {
  expectOnceForEachLocation<TernDestination>(&TernWaypointCollection::getByDestination);
}

TEST(TernWaypointCollection, getByAmenityListsAWaypointOnceForEachLocationThatNamesIt) {
  expectOnceForEachLocation<TernAmenity>(&TernWaypointCollection::getByAmenity);
}

}  // namespace
}  // namespace tern::test
