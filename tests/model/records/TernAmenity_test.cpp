#include "TernCoreKit/model/records/TernAmenity.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "TernCoreKit/model/collections/TernUriCollection.hpp"
#include "TernCoreKit/model/records/TernWaypoint.hpp"
#include "tests/support/RecordChecks.hpp"

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

TEST(TernAmenity, aCopyHasTheWaypoints) {
  const auto record = std::make_shared<TernAmenity>();
  const auto a = std::make_shared<TernWaypoint>();
  record->addWaypoints({a});
  EXPECT_THAT(record->copyWithZone()->waypoints, testing::ElementsAre(a));
}

}  // namespace
}  // namespace tern::test
