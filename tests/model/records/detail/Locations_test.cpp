#include "TernCoreKit/model/records/detail/Locations.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <type_traits>
#include <vector>

#include "TernCoreKit/model/collections/TernUriCollection.hpp"
#include "TernCoreKit/model/records/TernAmenity.hpp"
#include "TernCoreKit/model/records/TernDestination.hpp"
#include "TernCoreKit/model/records/TernLocation.hpp"
#include "TernCoreKit/model/records/TernPathType.hpp"
#include "TernCoreKit/model/records/TernWaypoint.hpp"
#include "tests/support/CapturedLog.hpp"
#include "tests/support/MadeRecords.hpp"

namespace tern::test {
namespace {

using Locations = std::vector<std::shared_ptr<TernLocation>>;

TEST(Locations, takesOneForEachElement) {
  CapturedLog log;
  Value document = parsed(R"({"locations": [{"mapId": 1}, {"mapId": 2}], "id": 7})");
  Locations locations;
  EXPECT_TRUE(detail::takeLocations(document, locations));
  ASSERT_EQ(locations.size(), 2U);
  EXPECT_EQ(locations[1]->mapId, Value(2));
  EXPECT_EQ(document["id"], Value(7));
}

TEST(Locations, noneIsNoFailure) {
  CapturedLog log;
  for (const char* text : {"{}", R"({"locations": null})", R"({"locations": []})"}) {
    Value document = parsed(text);
    Locations locations;
    EXPECT_TRUE(detail::takeLocations(document, locations));
    EXPECT_TRUE(locations.empty());
  }
}

TEST(Locations, aValueThatIsNoListIsAFailure) {
  for (const char* text :
       {R"({"locations": 5})", R"({"locations": {}})", R"({"locations": "a"})"}) {
    CapturedLog log;
    Value document = parsed(text);
    Locations locations;
    EXPECT_FALSE(detail::takeLocations(document, locations));
    EXPECT_TRUE(locations.empty());
    EXPECT_THAT(log.take(),
                testing::ElementsAre("Tern SDK: \"locations\" of a record is not a list"));
  }
}

// What is placed on maps by its locations.
template <class Record>
class PlacedRecord : public testing::Test {};
using PlacedRecords = testing::Types<TernAmenity, TernDestination, TernPathType>;
TYPED_TEST_SUITE(PlacedRecord, PlacedRecords);

TYPED_TEST(PlacedRecord, withoutLocationsTheListIsEmpty) {
  CapturedLog log;
  EXPECT_TRUE(made<TypeParam>(R"({"id": 1})")->locations.empty());
  EXPECT_TRUE(made<TypeParam>(R"({"locations": null})")->locations.empty());
}

TYPED_TEST(PlacedRecord, locationsComeInTheirOrder) {
  CapturedLog log;
  const auto record = made<TypeParam>(
      R"({"locations": [{"mapId": 4, "waypointIds": [1]}, {"mapId": 3}], "name": "x"})");
  ASSERT_EQ(record->locations.size(), 2U);
  EXPECT_EQ(record->locations[0]->mapId, Value(4));
  EXPECT_EQ(record->locations[0]->waypointIds, Value::list({1}));
  EXPECT_EQ(record->locations[1]->mapId, Value(3));
  EXPECT_EQ(record->name, Value("x"));
  EXPECT_EQ(record->copyWithZone()->locations, record->locations);
}

TYPED_TEST(PlacedRecord, locationsThatAreNoListAreLoggedAndEmpty) {
  // An amenity's locations come before its resources, which are then not made.
  constexpr bool hasUris = !std::is_same_v<TypeParam, TernAmenity>;
  for (const Value& value : {Value(5), Value("here"), Value::map({{"mapId", 1}})}) {
    CapturedLog log;
    const auto record = TypeParam::initWithDictionary(Value::map(
        {{"locations", value}, {"uris", Value::map({{"items", Value::list()}})}, {"name", "x"}}));
    EXPECT_TRUE(record->locations.empty());
    EXPECT_EQ(record->name, Value("x"));
    EXPECT_EQ(static_cast<bool>(record->uris), hasUris);
    EXPECT_THAT(log.take(),
                testing::ElementsAre("Tern SDK: \"locations\" of a record is not a list"));
  }
}

TYPED_TEST(PlacedRecord, aLocationThatIsNoMapIsLoggedAndEmpty) {
  CapturedLog log;
  const auto record = made<TypeParam>(R"({"locations": [7, {"mapId": 3}]})");
  ASSERT_EQ(record->locations.size(), 2U);
  EXPECT_TRUE(record->locations[0]->mapId.isAbsent());
  EXPECT_EQ(record->locations[1]->mapId, Value(3));
  EXPECT_THAT(log.take(),
              testing::ElementsAre("Tern SDK: the document of TernLocation is not a map"));
}

TYPED_TEST(PlacedRecord, waypointsAreNotReadFromTheDocument) {
  CapturedLog log;
  const auto record = made<TypeParam>(R"({"waypoints": [{"id": 1}], "name": "x"})");
  EXPECT_TRUE(record->waypoints.empty());
  EXPECT_EQ(record->name, Value("x"));
}

TYPED_TEST(PlacedRecord, addWaypointsReplacesTheList) {
  const auto record = std::make_shared<TypeParam>();
  const auto a = std::make_shared<TernWaypoint>();
  const auto b = std::make_shared<TernWaypoint>();
  record->addWaypoints({a});
  record->addWaypoints({b, a, b});
  EXPECT_THAT(record->waypoints, testing::ElementsAre(b, a, b));
}

TYPED_TEST(PlacedRecord, aCopyHasTheWaypointsOfAnAmenityOnly) {
  const auto record = std::make_shared<TypeParam>();
  record->addWaypoints({std::make_shared<TernWaypoint>()});
  const bool isAmenity = std::is_same_v<TypeParam, TernAmenity>;
  EXPECT_EQ(record->copyWithZone()->waypoints,
            isAmenity ? record->waypoints : decltype(record->waypoints)());
}

}  // namespace
}  // namespace tern::test
