#include "TernCoreKit/model/collections/TernVenueCollection.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/CapturedLog.hpp"
#include "tests/support/MadeRecords.hpp"

namespace tern::test {
namespace {

using testing::ElementsAre;

TEST(TernVenueCollection, aBatchFillsItsFields) {
  CapturedLog log;
  const auto venues = batch<TernVenueCollection>(
      R"({"items": [{"id": 9}, {"id": 12}], "defaultId": 12, "loadedVenueCount": 2, "other": 1})");
  EXPECT_EQ(venues->defaultId, Value(12));
  EXPECT_EQ(venues->loadedVenueCount, Value(2));
  EXPECT_EQ(idOf(venues->getDefault()), 12);
}

TEST(TernVenueCollection, aBatchWithoutItsFieldsLeavesThem) {
  const auto venues = batch<TernVenueCollection>(R"({"items": [], "defaultId": 12})");
  venues->createBatch(parsed(R"({"items": []})"));
  EXPECT_EQ(venues->defaultId, Value(12));
}

TEST(TernVenueCollection, getDefaultTakesTheIdAsText) {
  const auto venues = filled<TernVenueCollection>(R"([{"id": 12}])");
  venues->defaultId = "12";
  EXPECT_EQ(idOf(venues->getDefault()), 12);
  venues->defaultId = 1.2e1;
  EXPECT_EQ(idOf(venues->getDefault()), 12);
  venues->defaultId = 13;
  EXPECT_EQ(venues->getDefault(), nullptr);
}

TEST(TernVenueCollection, withoutDefaultIdThereIsNoDefault) {
  const auto venues = filled<TernVenueCollection>(R"([{"id": 0}, {"id": 1}])");
  EXPECT_EQ(venues->getDefault(), nullptr);
  venues->defaultId = nullptr;
  EXPECT_EQ(venues->getDefault(), nullptr);
}

TEST(TernVenueCollection, aCopyDoesNotCarryItsFields) {
  const auto venues = batch<TernVenueCollection>(R"({"items": [{"id": 9}], "defaultId": 9})");
  EXPECT_TRUE(venues->copyWithZone()->defaultId.isAbsent());
}

}  // namespace
}  // namespace tern::test
