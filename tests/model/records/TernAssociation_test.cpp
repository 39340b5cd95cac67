#include "TernCoreKit/model/records/TernAssociation.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/RecordChecks.hpp"

namespace tern::test {
namespace {

TEST(TernAssociation, keepsEveryFieldAsTheDocumentGivesItAndCopiesThoseItShould) {
  expectPlainFields<TernAssociation>({{"id", &TernAssociation::id, true},
                                      {"externalId", &TernAssociation::externalId, true},
                                      {"destinations", &TernAssociation::destinations, true},
                                      {"amenities", &TernAssociation::amenities, true}});
}

TEST(TernAssociation, anUnknownKeyStopsItAndIsLogged) {
  expectStopAtUnknownKey<TernAssociation>("TernAssociation", "amenities",
                                          &TernAssociation::amenities);
}

}  // namespace
}  // namespace tern::test
