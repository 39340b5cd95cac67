#include "TernCoreKit/model/TernAmenity.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "TernCoreKit/model/TernLocation.hpp"
#include "TernCoreKit/model/TernUriCollection.hpp"
#include "TernCoreKit/model/TernWaypoint.hpp"
#include "tests/model/RecordChecks.hpp"

namespace tern::test {
namespace {

TEST(TernAmenity, keepsEveryFieldAsTheDocumentGivesItAndCopiesThoseItShould) {
  expectPlainFields<TernAmenity>({{"id", &TernAmenity::id, true},
                                  {"externalId", &TernAmenity::externalId, true},
                                  {"customerId", &TernAmenity::customerId, true},
                                  {"name", &TernAmenity::name, true},
                                  {"description", &TernAmenity::description, true},
                                  {"status", &TernAmenity::status, true},
                                  {"displayOrder", &TernAmenity::displayOrder, true},
                                  {"primaryUriId", &TernAmenity::primaryUriId, true},
                                  {"extensors", &TernAmenity::extensors, true},
                                  {"keywords", &TernAmenity::keywords, true},
                                  {"svg", &TernAmenity::svg, true}});
}

TEST(TernAmenity, anUnknownKeyStopsItAndIsLogged) {
  expectStopAtUnknownKey<TernAmenity>("TernAmenity", "svg", &TernAmenity::svg);
}

TEST(TernAmenity, aMapUnderUrisBecomesACollection) {
  expectNestedCollection("uris", &TernAmenity::uris, Carried::yes);
}

TEST(TernAmenity, withoutLocationsTheListIsEmpty) {
  CapturedLog log;
  EXPECT_TRUE(made<TernAmenity>(R"({"id": 1})")->locations.empty());
  EXPECT_TRUE(made<TernAmenity>(R"({"locations": null})")->locations.empty());
}

TEST(TernAmenity, locationsComeInTheirOrder) {
  CapturedLog log;
  const auto record = made<TernAmenity>(
      R"({"locations": [{"mapId": 4, "waypointIds": [1]}, {"mapId": 3}], "name": "x"})");
  ASSERT_EQ(record->locations.size(), 2U);
  EXPECT_EQ(record->locations[0]->mapId, Value(4));
  EXPECT_EQ(record->locations[0]->waypointIds, Value::list({1}));
  EXPECT_EQ(record->locations[1]->mapId, Value(3));
  EXPECT_EQ(record->name, Value("x"));
  EXPECT_EQ(record->copyWithZone()->locations, record->locations);
}

TEST(TernAmenity, locationsThatAreNoListAreLoggedAndEmpty) {
  for (const Value& value : {Value(5), Value("here"), Value::map({{"mapId", 1}})}) {
    CapturedLog log;
    const auto record = TernAmenity::initWithDictionary(Value::map(
        {{"locations", value}, {"uris", Value::map({{"items", Value::list()}})}, {"name", "x"}}));
    EXPECT_TRUE(record->locations.empty());
    EXPECT_EQ(record->name, Value("x"));
    // What would be made after the locations.
    EXPECT_EQ(static_cast<bool>(record->uris), false);
    EXPECT_THAT(log.take(),
                testing::ElementsAre("Tern SDK: \"locations\" of a record is not a list"));
  }
}

TEST(TernAmenity, aLocationThatIsNoMapIsLoggedAndEmpty) {
  CapturedLog log;
  const auto record = made<TernAmenity>(R"({"locations": [7, {"mapId": 3}]})");
  ASSERT_EQ(record->locations.size(), 2U);
  EXPECT_TRUE(record->locations[0]->mapId.isAbsent());
  EXPECT_EQ(record->locations[1]->mapId, Value(3));
  EXPECT_THAT(log.take(),
              testing::ElementsAre("Tern SDK: the document of TernLocation is not a map"));
}

TEST(TernAmenity, waypointsAreNotReadFromTheDocument) {
  CapturedLog log;
  const auto record = made<TernAmenity>(R"({"waypoints": [{"id": 1}], "name": "x"})");
  EXPECT_TRUE(record->waypoints.empty());
  EXPECT_EQ(record->name, Value("x"));
}

TEST(TernAmenity, addWaypointsReplacesTheList) {
  const auto record = std::make_shared<TernAmenity>();
  const auto a = std::make_shared<TernWaypoint>();
  const auto b = std::make_shared<TernWaypoint>();
  record->addWaypoints({a});
  record->addWaypoints({b, a, b});
  EXPECT_THAT(record->waypoints, testing::ElementsAre(b, a, b));
  EXPECT_THAT(record->copyWithZone()->waypoints, testing::ElementsAre(b, a, b));
}

}  // namespace
}  // namespace tern::test
