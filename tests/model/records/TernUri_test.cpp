#include "TernCoreKit/model/records/TernUri.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/RecordChecks.hpp"

namespace tern::test {
namespace {

TEST(TernUri, keepsEveryFieldAsTheDocumentGivesItAndCopiesThoseItShould) {
  expectPlainFields<TernUri>({{"id", &TernUri::id, true},
                              {"externalId", &TernUri::externalId, true},
                              {"resourceType", &TernUri::resourceType, true},
                              {"mimeType", &TernUri::mimeType, true},
                              {"path", &TernUri::path, true}});
}

TEST(TernUri, anUnknownKeyStopsItAndIsLogged) {
  expectStopAtUnknownKey<TernUri>("TernUri", "path", &TernUri::path);
}

}  // namespace
}  // namespace tern::test
