#include "TernCoreKit/model/records/TernVenueDestination.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "TernCoreKit/model/collections/TernDestinationCollection.hpp"
#include "tests/support/RecordChecks.hpp"

namespace tern::test {
namespace {

TEST(TernVenueDestination, keepsEveryFieldAsTheDocumentGivesItAndCopiesThoseItShould) {
  expectPlainFields<TernVenueDestination>({{"venueId", &TernVenueDestination::venueId, true}});
}

TEST(TernVenueDestination, anUnknownKeyStopsItAndIsLogged) {
  expectStopAtUnknownKey<TernVenueDestination>("TernVenueDestination", "venueId",
                                               &TernVenueDestination::venueId);
}

TEST(TernVenueDestination, aMapUnderDestinationsBecomesACollection) {
  expectNestedCollection("destinations", &TernVenueDestination::destinations, Carried::yes);
}

}  // namespace
}  // namespace tern::test
