#include "TernCoreKit/model/TernPathType.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "TernCoreKit/model/TernLocation.hpp"
#include "TernCoreKit/model/TernUriCollection.hpp"
#include "TernCoreKit/model/TernWaypoint.hpp"
#include "tests/model/RecordChecks.hpp"

namespace tern::test {
namespace {

TEST(TernPathType, keepsEveryFieldAsTheDocumentGivesItAndCopiesThoseItShould) {
  expectPlainFields<TernPathType>({{"id", &TernPathType::id, true},
                                   {"externalId", &TernPathType::externalId, true},
                                   {"name", &TernPathType::name, true},
                                   {"description", &TernPathType::description, true},
                                   {"accessibility", &TernPathType::accessibility, true},
                                   {"verticalWeight", &TernPathType::verticalWeight, true},
                                   {"speed", &TernPathType::speed, true},
                                   {"maxFloors", &TernPathType::maxFloors, true},
                                   {"weight", &TernPathType::weight, true},
                                   {"direction", &TernPathType::direction, true},
                                   {"svg", &TernPathType::svg, true}});
}

TEST(TernPathType, anUnknownKeyStopsItAndIsLogged) {
  expectStopAtUnknownKey<TernPathType>("TernPathType", "svg", &TernPathType::svg);
}

TEST(TernPathType, aMapUnderUrisBecomesACollection) {
  expectNestedCollection("uris", &TernPathType::uris, Carried::yes);
}

TEST(TernPathType, withoutLocationsTheListIsEmpty) {
  CapturedLog log;
  EXPECT_TRUE(made<TernPathType>(R"({"id": 1})")->locations.empty());
  EXPECT_TRUE(made<TernPathType>(R"({"locations": null})")->locations.empty());
}

TEST(TernPathType, locationsComeInTheirOrder) {
  CapturedLog log;
  const auto record = made<TernPathType>(
      R"({"locations": [{"mapId": 4, "waypointIds": [1]}, {"mapId": 3}], "name": "x"})");
  ASSERT_EQ(record->locations.size(), 2U);
  EXPECT_EQ(record->locations[0]->mapId, Value(4));
  EXPECT_EQ(record->locations[0]->waypointIds, Value::list({1}));
  EXPECT_EQ(record->locations[1]->mapId, Value(3));
  EXPECT_EQ(record->name, Value("x"));
  EXPECT_EQ(record->copyWithZone()->locations, record->locations);
}

TEST(TernPathType, locationsThatAreNoListAreLoggedAndEmpty) {
  for (const Value& value : {Value(5), Value("here"), Value::map({{"mapId", 1}})}) {
    CapturedLog log;
    const auto record = TernPathType::initWithDictionary(Value::map(
        {{"locations", value}, {"uris", Value::map({{"items", Value::list()}})}, {"name", "x"}}));
    EXPECT_TRUE(record->locations.empty());
    EXPECT_EQ(record->name, Value("x"));
    // What would be made before the locations.
    EXPECT_EQ(static_cast<bool>(record->uris), true);
    EXPECT_THAT(log.take(),
                testing::ElementsAre("Tern SDK: \"locations\" of a record is not a list"));
  }
}

TEST(TernPathType, aLocationThatIsNoMapIsLoggedAndEmpty) {
  CapturedLog log;
  const auto record = made<TernPathType>(R"({"locations": [7, {"mapId": 3}]})");
  ASSERT_EQ(record->locations.size(), 2U);
  EXPECT_TRUE(record->locations[0]->mapId.isAbsent());
  EXPECT_EQ(record->locations[1]->mapId, Value(3));
  EXPECT_THAT(log.take(),
              testing::ElementsAre("Tern SDK: the document of TernLocation is not a map"));
}

TEST(TernPathType, waypointsAreNotReadFromTheDocument) {
  CapturedLog log;
  const auto record = made<TernPathType>(R"({"waypoints": [{"id": 1}], "name": "x"})");
  EXPECT_TRUE(record->waypoints.empty());
  EXPECT_EQ(record->name, Value("x"));
}

TEST(TernPathType, addWaypointsReplacesTheList) {
  const auto record = std::make_shared<TernPathType>();
  const auto a = std::make_shared<TernWaypoint>();
  const auto b = std::make_shared<TernWaypoint>();
  record->addWaypoints({a});
  record->addWaypoints({b, a, b});
  EXPECT_THAT(record->waypoints, testing::ElementsAre(b, a, b));
  EXPECT_THAT(record->copyWithZone()->waypoints, testing::IsEmpty());
}

}  // namespace
}  // namespace tern::test
