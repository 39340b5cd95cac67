#include "TernCoreKit/model/records/TernLocale.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/RecordChecks.hpp"

namespace tern::test {
namespace {

TEST(TernLocale, keepsEveryFieldAsTheDocumentGivesItAndCopiesThoseItShould) {
  expectPlainFields<TernLocale>({{"id", &TernLocale::id, true},
                                 {"externalId", &TernLocale::externalId, true},
                                 {"name", &TernLocale::name, true},
                                 {"localeCode", &TernLocale::localeCode, true}});
}

TEST(TernLocale, anUnknownKeyStopsItAndIsLogged) {
  expectStopAtUnknownKey<TernLocale>("TernLocale", "localeCode", &TernLocale::localeCode);
}

}  // namespace
}  // namespace tern::test
