#include "TernCoreKit/model/records/TernPosition.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/RecordChecks.hpp"

namespace tern::test {
namespace {

TEST(TernPosition, keepsEveryFieldAsTheDocumentGivesItAndCopiesThoseItShould) {
  expectPlainFields<TernPosition>({{"topLeft", &TernPosition::topLeft, true},
                                   {"bottomRight", &TernPosition::bottomRight, true}});
}

TEST(TernPosition, anUnknownKeyStopsItAndIsLogged) {
  expectStopAtUnknownKey<TernPosition>("TernPosition", "bottomRight", &TernPosition::bottomRight);
}

}  // namespace
}  // namespace tern::test
