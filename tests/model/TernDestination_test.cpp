#include "TernCoreKit/model/TernDestination.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "TernCoreKit/model/TernLocation.hpp"
#include "TernCoreKit/model/TernUriCollection.hpp"
#include "TernCoreKit/model/TernWaypoint.hpp"
#include "tests/model/RecordChecks.hpp"

namespace tern::test {
namespace {

TEST(TernDestination, keepsEveryFieldAsTheDocumentGivesItAndCopiesThoseItShould) {
  expectPlainFields<TernDestination>({{"id", &TernDestination::id, true},
                                      {"externalId", &TernDestination::externalId, true},
                                      {"unitNumber", &TernDestination::unitNumber, true},
                                      {"name", &TernDestination::name, true},
                                      {"description", &TernDestination::description, true},
                                      {"primaryUri", &TernDestination::primaryUri, true},
                                      {"localeCode", &TernDestination::localeCode, true},
                                      {"extensors", &TernDestination::extensors, true},
                                      {"categoryIds", &TernDestination::categoryIds, true},
                                      {"keywords", &TernDestination::keywords, true},
                                      {"tags", &TernDestination::tags, true},
                                      {"displayMode", &TernDestination::displayMode, true},
                                      {"status", &TernDestination::status, false},
                                      {"svg", &TernDestination::svg, false}});
}

TEST(TernDestination, anUnknownKeyStopsItAndIsLogged) {
  expectStopAtUnknownKey<TernDestination>("TernDestination", "svg", &TernDestination::svg);
}

TEST(TernDestination, aMapUnderUrisBecomesACollection) {
  expectNestedCollection("uris", &TernDestination::uris, Carried::yes);
}

TEST(TernDestination, withoutLocationsTheListIsEmpty) {
  CapturedLog log;
  EXPECT_TRUE(made<TernDestination>(R"({"id": 1})")->locations.empty());
  EXPECT_TRUE(made<TernDestination>(R"({"locations": null})")->locations.empty());
}

TEST(TernDestination, locationsComeInTheirOrder) {
  CapturedLog log;
  const auto record = made<TernDestination>(
      R"({"locations": [{"mapId": 4, "waypointIds": [1]}, {"mapId": 3}], "name": "x"})");
  ASSERT_EQ(record->locations.size(), 2U);
  EXPECT_EQ(record->locations[0]->mapId, Value(4));
  EXPECT_EQ(record->locations[0]->waypointIds, Value::list({1}));
  EXPECT_EQ(record->locations[1]->mapId, Value(3));
  EXPECT_EQ(record->name, Value("x"));
  EXPECT_EQ(record->copyWithZone()->locations, record->locations);
}

TEST(TernDestination, locationsThatAreNoListAreLoggedAndEmpty) {
  for (const Value& value : {Value(5), Value("here"), Value::map({{"mapId", 1}})}) {
    CapturedLog log;
    const auto record = TernDestination::initWithDictionary(Value::map(
        {{"locations", value}, {"uris", Value::map({{"items", Value::list()}})}, {"name", "x"}}));
    EXPECT_TRUE(record->locations.empty());
    EXPECT_EQ(record->name, Value("x"));
    // What would be made before the locations.
    EXPECT_EQ(static_cast<bool>(record->uris), true);
    EXPECT_THAT(log.take(),
                testing::ElementsAre("Tern SDK: \"locations\" of a record is not a list"));
  }
}

TEST(TernDestination, aLocationThatIsNoMapIsLoggedAndEmpty) {
  CapturedLog log;
  const auto record = made<TernDestination>(R"({"locations": [7, {"mapId": 3}]})");
  ASSERT_EQ(record->locations.size(), 2U);
  EXPECT_TRUE(record->locations[0]->mapId.isAbsent());
  EXPECT_EQ(record->locations[1]->mapId, Value(3));
  EXPECT_THAT(log.take(),
              testing::ElementsAre("Tern SDK: the document of TernLocation is not a map"));
}

TEST(TernDestination, waypointsAreNotReadFromTheDocument) {
  CapturedLog log;
  const auto record = made<TernDestination>(R"({"waypoints": [{"id": 1}], "name": "x"})");
  EXPECT_TRUE(record->waypoints.empty());
  EXPECT_EQ(record->name, Value("x"));
}

TEST(TernDestination, addWaypointsReplacesTheList) {
  const auto record = std::make_shared<TernDestination>();
  const auto a = std::make_shared<TernWaypoint>();
  const auto b = std::make_shared<TernWaypoint>();
  record->addWaypoints({a});
  record->addWaypoints({b, a, b});
  EXPECT_THAT(record->waypoints, testing::ElementsAre(b, a, b));
  EXPECT_THAT(record->copyWithZone()->waypoints, testing::IsEmpty());
}

}  // namespace
}  // namespace tern::test
