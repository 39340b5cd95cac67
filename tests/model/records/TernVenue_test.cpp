#include "TernCoreKit/model/records/TernVenue.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "TernCoreKit/model/records/TernPosition.hpp"
#include "tests/support/RecordChecks.hpp"

namespace tern::test {
namespace {

TEST(TernVenue, keepsEveryFieldAsTheDocumentGivesItAndCopiesThoseItShould) {
  expectPlainFields<TernVenue>({{"id", &TernVenue::id, true},
                                {"externalId", &TernVenue::externalId, true},
                                {"name", &TernVenue::name, true},
                                {"mapId", &TernVenue::mapId, true},
                                {"bbox", &TernVenue::bbox, true},
                                {"status", &TernVenue::status, false},
                                {"customerId", &TernVenue::customerId, false}});
}

TEST(TernVenue, anUnknownKeyStopsItAndIsLogged) {
  expectStopAtUnknownKey<TernVenue>("TernVenue", "customerId", &TernVenue::customerId);
}

TEST(TernVenue, aMapUnderCoordinatesBecomesARecord) {
  expectNestedRecord("coordinates", &TernVenue::coordinates, Carried::yes);
}

TEST(TernVenue, coordinatesAreAPosition) {
  const auto venue =
      made<TernVenue>(R"({"coordinates": {"topLeft": [1, 2], "bottomRight": [3, 4]}})");
  ASSERT_TRUE(venue->coordinates);
  EXPECT_EQ(venue->coordinates->topLeft, Value::list({1, 2}));
  EXPECT_EQ(venue->copyWithZone()->coordinates->bottomRight, Value::list({3, 4}));
}

}  // namespace
}  // namespace tern::test
