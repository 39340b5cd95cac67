#include "TernCoreKit/model/TernVenueDestination.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "TernCoreKit/model/TernDestinationCollection.hpp"
#include "tests/model/RecordChecks.hpp"

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
