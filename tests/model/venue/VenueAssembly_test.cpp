#include "TernCoreKit/model/venue/VenueAssembly.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "TernCoreKit/model/collections/TernAmenityCollection.hpp"
#include "TernCoreKit/model/collections/TernBuildingCollection.hpp"
#include "TernCoreKit/model/collections/TernDestinationCollection.hpp"
#include "TernCoreKit/model/collections/TernFloorCollection.hpp"
#include "TernCoreKit/model/collections/TernMapCollection.hpp"
#include "TernCoreKit/model/collections/TernPathTypeCollection.hpp"
#include "TernCoreKit/model/collections/TernWaypointCollection.hpp"
#include "TernCoreKit/model/venue/TernActiveVenue.hpp"
#include "tests/support/CapturedLog.hpp"
#include "tests/support/FailingAllocation.hpp"
#include "tests/support/MadeRecords.hpp"

namespace tern::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using Venue = std::shared_ptr<TernActiveVenue>;

Venue venueWithTwoBuildings() {
  return made<TernActiveVenue>(R"({"id": 7, "buildings": {"items": [{"id": 1}, {"id": 2}]}})");
}

// A building of one floor, whose map has the waypoints 10 * map, 10 * map + 1.
std::string buildingDocument(int id, int floor, int map) {
  const std::string first = std::to_string(map * 10);
  const std::string second = std::to_string(map * 10 + 1);
  return R"({"id": )" + std::to_string(id) + R"(, "floors": {"items": [{"id": )" +
         std::to_string(floor) + R"(, "buildingId": 99, "map": {"id": )" + std::to_string(map) +
         R"(, "waypoints": {"items": [{"id": )" + first + R"(}, {"id": )" + second + "}]}}}]}}";
}

TEST(VenueAssembly, aBuildingsFloorsAndMapsBecomeTheVenues) {
  CapturedLog log;
  const auto venue = venueWithTwoBuildings();
  addBuilding(*venue, 2, parsed(buildingDocument(2, 20, 5)));
  EXPECT_THAT(ids(venue->buildings->getAll()), ElementsAre(1, 2));
  EXPECT_THAT(ids(venue->buildings->getAllFloors()), ElementsAre(20));
  EXPECT_THAT(ids(venue->maps->getAll()), ElementsAre(5));
  EXPECT_EQ(venue->maps->getById(5), venue->buildings->getAllFloors()[0]->map.record());
  EXPECT_THAT(ids(venue->maps->getAllWaypoints()), ElementsAre(50, 51));
}

TEST(VenueAssembly, floorsAreMarkedWithTheBuildingThatWasAskedFor) {
  const auto venue = venueWithTwoBuildings();
  addBuilding(*venue, 2, parsed(buildingDocument(2, 20, 5)));
  EXPECT_EQ(venue->buildings->getAllFloors().at(0)->buildingId, Value(2));
}

TEST(VenueAssembly, anAnswerForAnotherBuildingIsAddedUnderItsOwnId) {
  const auto venue = venueWithTwoBuildings();
  addBuilding(*venue, 2, parsed(buildingDocument(3, 20, 5)));
  EXPECT_THAT(ids(venue->buildings->getAll()), ElementsAre(1, 2, 3));
  EXPECT_EQ(venue->buildings->getById(3)->floors->getById(20)->buildingId, Value(2));
}

TEST(VenueAssembly, mapsOfSeveralBuildingsGatherInTheirOrder) {
  const auto venue = venueWithTwoBuildings();
  addBuilding(*venue, 2, parsed(buildingDocument(2, 20, 5)));
  addBuilding(*venue, 1, parsed(buildingDocument(1, 10, 4)));
  EXPECT_THAT(ids(venue->maps->getAll()), ElementsAre(5, 4));
}

TEST(VenueAssembly, aBuildingThatIsLoadedAgainTakesThePlaceOfItself) {
  const auto venue = venueWithTwoBuildings();
  addBuilding(*venue, 1, parsed(buildingDocument(1, 10, 4)));
  addBuilding(*venue, 1, parsed(buildingDocument(1, 11, 4)));
  EXPECT_THAT(ids(venue->buildings->getAllFloors()), ElementsAre(11));
  EXPECT_EQ(venue->maps->getById(4), venue->buildings->getAllFloors()[0]->map.record());
}

TEST(VenueAssembly, theDefaultFloorOfTheLastAnswerIsThatOfEveryBuilding) {
  const auto venue = venueWithTwoBuildings();
  addBuilding(*venue, 1, parsed(R"({"id": 1, "defaultFloorId": 5, "floors": {"items": []}})"));
  addBuilding(*venue, 2, parsed(R"({"id": 2, "defaultFloorId": 6, "floors": {"items": []}})"));
  EXPECT_EQ(venue->buildings->getById(1)->floors->defaultFloorId, Value(6));
  EXPECT_EQ(venue->buildings->getById(2)->floors->defaultFloorId, Value(6));
  EXPECT_EQ(venue->buildings->getById(1)->defaultFloorId, Value(5));
}

TEST(VenueAssembly, anAnswerWithoutADefaultFloorLeavesThoseThatAre) {
  const auto venue = venueWithTwoBuildings();
  addBuilding(*venue, 1, parsed(R"({"id": 1, "defaultFloorId": 5, "floors": {"items": []}})"));
  addBuilding(*venue, 2, parsed(R"({"id": 2, "floors": {"items": []}})"));
  EXPECT_EQ(venue->buildings->getById(1)->floors->defaultFloorId, Value(5));
  EXPECT_EQ(venue->buildings->getById(2)->floors->defaultFloorId, Value(nullptr));
}

const char* const placesDocument = R"({"buildings": {"items": [{"id": 1}, {"id": 2}]},
  "amenities": {"items": [{"id": 1, "locations": [{"mapId": 4, "waypointIds": [41, 40]}]}]},
  "destinations": {"items": [{"id": 2, "locations": [{"mapId": 5, "waypointIds": [51, 99]},
      {"mapId": 4, "waypointIds": [40, 51]}, {"mapId": 77, "waypointIds": [40]}]}]},
  "pathTypes": {"items": [{"id": 3, "locations": [{"mapId": 5, "waypointIds": [50, 50]}]},
      {"id": 4}]}})";

TEST(VenueAssembly, placesGetTheWaypointsThatTheirLocationsName) {
  const auto venue = made<TernActiveVenue>(placesDocument);
  addBuilding(*venue, 1, parsed(buildingDocument(1, 10, 4)));
  addBuilding(*venue, 2, parsed(buildingDocument(2, 20, 5)));
  attachWaypoints(*venue);
  EXPECT_THAT(ids(venue->amenities->getById(1)->waypoints), ElementsAre(41, 40));
  // Only what lies on the location's own map, in the order of the locations.
  EXPECT_THAT(ids(venue->destinations->getById(2)->waypoints), ElementsAre(51, 40));
  EXPECT_THAT(ids(venue->pathTypes->getById(3)->waypoints), ElementsAre(50, 50));
  EXPECT_THAT(venue->pathTypes->getById(4)->waypoints, IsEmpty());
  EXPECT_EQ(venue->amenities->getById(1)->waypoints[1],
            venue->maps->getById(4)->waypoints->getById(40));
}

TEST(VenueAssembly, aPlaceWithoutAnyWaypointKeepsWhatItHas) {
  const auto venue = made<TernActiveVenue>(placesDocument);
  const auto old = made<TernWaypoint>(R"({"id": 1})");
  venue->amenities->getById(1)->addWaypoints({old});
  venue->destinations->getById(2)->addWaypoints({old});
  addBuilding(*venue, 2, parsed(buildingDocument(2, 20, 5)));
  attachWaypoints(*venue);
  EXPECT_THAT(venue->amenities->getById(1)->waypoints, ElementsAre(old));
  EXPECT_THAT(ids(venue->destinations->getById(2)->waypoints), ElementsAre(51));
}

TEST(VenueAssembly, whatTheDocumentHasOfTheWrongKindIsLeftOut) {
  for (const Value& odd : oddValuesAndMaps()) {
    CapturedLog log;
    const std::vector<Value> answers = {
        odd, Value::map({{"id", 1}, {"floors", odd}}),
        Value::map({{"id", 1}, {"defaultFloorId", odd}, {"floors", Value::map({{"items", odd}})}}),
        Value::map({{"id", 1}, {"floors", Value::map({{"items", Value::list({odd})}})}})};
    for (const Value& answer : answers) {
      const auto venue = venueWithTwoBuildings();
      addBuilding(*venue, 1, answer);
      attachWaypoints(*venue);
      venue->loadGridData();
      EXPECT_THAT(venue->maps->getAllWaypoints(), IsEmpty());
    }
    log.take();
  }
}

TEST(VenueAssembly, locationsOfTheWrongKindNameNothing) {
  for (const Value& odd : oddValuesAndMaps()) {
    CapturedLog log;
    const auto venue = TernActiveVenue::initWithDictionary(Value::map(
        {{"buildings", Value::map({{"items", Value::list()}})},
         {"destinations",
          Value::map(
              {{"items", Value::list({Value::map({{"id", 1}, {"locations", odd}}),
                                      Value::map({{"id", 2},
                                                  {"locations",
                                                   Value::list({odd, Value::map({{"mapId", odd}}),
                                                                Value::map({{"mapId", 4},
                                                                            {"waypointIds",
                                                                             odd}})})}})})}})}}));
    addBuilding(*venue, 1, parsed(buildingDocument(1, 10, 4)));
    attachWaypoints(*venue);
    EXPECT_THAT(venue->destinations->getById(2)->waypoints, IsEmpty());
    log.take();
  }
}

TEST(VenueAssembly, aBuildingComesInWholeOrNotAtAllWhateverAllocationFails) {
  CapturedLog log;
  Venue venue;
  Value document;
  const auto renew = [&] {
    venue = venueWithTwoBuildings();
    addBuilding(*venue, 1, parsed(buildingDocument(1, 10, 4)));
    document = parsed(buildingDocument(2, 20, 5));
  };
  renew();
  const int failed = forFailingAllocations(
      FailingAllocation::Reach::thread, [&] { addBuilding(*venue, 2, std::move(document)); },
      [&] {
        const bool isIn = venue->buildings->getAllFloors().size() == 2;
        if (isIn) {
          ASSERT_THAT(ids(venue->maps->getAll()), ElementsAre(4, 5));
        } else {
          ASSERT_THAT(ids(venue->maps->getAll()), ElementsAre(4));
          ASSERT_THAT(ids(venue->buildings->getAll()), ElementsAre(1, 2));
        }
        log.take();
        renew();
      },
      Throwing::badAlloc);
  EXPECT_GT(failed, 10);
}

TEST(VenueAssembly, allPlacesGetTheirWaypointsOrNoneWhateverAllocationFails) {
  Venue venue;
  const auto renew = [&] {
    venue = made<TernActiveVenue>(
        R"({"id": 7, "buildings": {"items": [{"id": 1}]},
            "destinations": {"items": [{"id": 1, "locations": [{"mapId": 5, "waypointIds": [50]}]}]},
            "amenities": {"items": [{"id": 1, "locations": [{"mapId": 5, "waypointIds": [51]}]}]}})");
    addBuilding(*venue, 1, parsed(buildingDocument(1, 10, 5)));
  };
  renew();
  const int failed = forFailingAllocations(
      FailingAllocation::Reach::thread, [&] { attachWaypoints(*venue); },
      [&] {
        ASSERT_EQ(venue->destinations->getById(1)->waypoints.size(),
                  venue->amenities->getById(1)->waypoints.size());
        renew();
      },
      Throwing::badAlloc);
  EXPECT_GE(failed, 4);
}

TEST(VenueAssembly, aVenueWithoutBuildingsTakesNone) {
  CapturedLog log;
  for (const Value& odd : oddValues()) {
    const auto venue = TernActiveVenue::initWithDictionary(Value::map({{"buildings", odd}}));
    addBuilding(*venue, 1, parsed(buildingDocument(1, 10, 4)));
    attachWaypoints(*venue);
    EXPECT_EQ(venue->buildings.plain(), odd);
    EXPECT_EQ(venue->maps->getCount(), 0U);
  }
}

RC_GTEST_PROP(VenueAssembly, aPlaceGetsTheWaypointsOfAScanOfItsLocations, ()) {
  const CapturedLog log;
  const auto venue = made<TernActiveVenue>(placesDocument);
  // Maps 4 and 5 with the waypoints 40, 41, 50 and 51.
  addBuilding(*venue, 1, parsed(buildingDocument(1, 10, 4)));
  addBuilding(*venue, 2, parsed(buildingDocument(2, 20, 5)));
  const auto anyWaypoint = rc::gen::element<std::int64_t>(40, 41, 50, 51, 60);
  Value locations = Value::list();
  std::vector<std::int64_t> expected;
  for (int left = *rc::gen::inRange(0, 4); left > 0; --left) {
    const std::int64_t mapId = *rc::gen::inRange(4, 7);
    Value waypointIds = Value::list();
    for (int more = *rc::gen::inRange(0, 4); more > 0; --more) {
      const std::int64_t id = *anyWaypoint;
      waypointIds.append(id);
      if (id / 10 == mapId && mapId < 6) expected.push_back(id);
    }
    locations.append(Value::map({{"mapId", mapId}, {"waypointIds", std::move(waypointIds)}}));
  }
  venue->amenities->create(Value::map({{"id", 9}, {"locations", std::move(locations)}}));
  attachWaypoints(*venue);
  RC_ASSERT(ids(venue->amenities->getById(9)->waypoints) == expected);
}

}  // namespace
}  // namespace tern::test
