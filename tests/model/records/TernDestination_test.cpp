#include "TernCoreKit/model/records/TernDestination.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "TernCoreKit/model/collections/TernUriCollection.hpp"
#include "TernCoreKit/model/records/TernWaypoint.hpp"
#include "tests/support/RecordChecks.hpp"

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

TEST(TernDestination, aCopyHasNoWaypoints) {
  const auto record = std::make_shared<TernDestination>();
  const auto a = std::make_shared<TernWaypoint>();
  record->addWaypoints({a});
  EXPECT_THAT(record->copyWithZone()->waypoints, testing::IsEmpty());
}

}  // namespace
}  // namespace tern::test
