#include "TernCoreKit/model/records/TernLocation.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/CapturedLog.hpp"
#include "tests/support/MadeRecords.hpp"

namespace tern::test {
namespace {

TEST(TernLocation, parsesTheLocationsOfAWholeDocument) {
  CapturedLog log;
  const auto locations = TernLocation::parseLocationsIntoArrayFormDictionary(
      parsed(R"({"id": 1, "locations": [{"mapId": 2}, {"mapId": 2}, {"waypointIds": [3]}]})"));
  ASSERT_EQ(locations.size(), 3U);
  EXPECT_EQ(locations[1]->mapId, Value(2));
  EXPECT_EQ(locations[2]->waypointIds, Value::list({3}));
}

TEST(TernLocation, aDocumentWithoutLocationsGivesNone) {
  CapturedLog log;
  const auto parse = &TernLocation::parseLocationsIntoArrayFormDictionary;
  EXPECT_TRUE(parse(parsed(R"({"id": 1})")).empty());
  EXPECT_TRUE(parse(parsed(R"({"locations": null})")).empty());
  EXPECT_TRUE(parse(parsed(R"({"locations": []})")).empty());
  EXPECT_TRUE(parse(Value()).empty());
}

TEST(TernLocation, locationsThatAreNoListAreLogged) {
  CapturedLog log;
  EXPECT_TRUE(
      TernLocation::parseLocationsIntoArrayFormDictionary(parsed(R"({"locations": 5})")).empty());
  EXPECT_THAT(log.take(),
              testing::ElementsAre("Tern SDK: \"locations\" of a record is not a list"));
}

}  // namespace
}  // namespace tern::test
