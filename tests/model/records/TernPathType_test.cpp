#include "TernCoreKit/model/records/TernPathType.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "TernCoreKit/model/collections/TernUriCollection.hpp"
#include "TernCoreKit/model/records/TernWaypoint.hpp"
#include "tests/support/RecordChecks.hpp"

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

TEST(TernPathType, aCopyHasNoWaypoints) {
  const auto record = std::make_shared<TernPathType>();
  const auto a = std::make_shared<TernWaypoint>();
  record->addWaypoints({a});
  EXPECT_THAT(record->copyWithZone()->waypoints, testing::IsEmpty());
}

}  // namespace
}  // namespace tern::test
