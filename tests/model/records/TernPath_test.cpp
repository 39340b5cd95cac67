#include "TernCoreKit/model/records/TernPath.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/RecordChecks.hpp"

namespace tern::test {
namespace {

TEST(TernPath, keepsEveryFieldAsTheDocumentGivesItAndCopiesThoseItShould) {
  expectPlainFields<TernPath>({{"id", &TernPath::id, true},
                               {"externalId", &TernPath::externalId, true},
                               {"pathTypeId", &TernPath::pathTypeId, true},
                               {"name", &TernPath::name, true},
                               {"direction", &TernPath::direction, true},
                               {"waypointIds", &TernPath::waypointIds, true},
                               {"extensors", &TernPath::extensors, false},
                               {"status", &TernPath::status, false}});
}

TEST(TernPath, anUnknownKeyStopsItAndIsLogged) {
  expectStopAtUnknownKey<TernPath>("TernPath", "status", &TernPath::status);
}

}  // namespace
}  // namespace tern::test
