#include "TernCoreKit/model/records/TernMapLabelInstance.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/RecordChecks.hpp"

namespace tern::test {
namespace {

TEST(TernMapLabelInstance, keepsEveryFieldAsTheDocumentGivesItAndCopiesThoseItShould) {
  expectPlainFields<TernMapLabelInstance>({{"id", &TernMapLabelInstance::id, true},
                                           {"externalId", &TernMapLabelInstance::externalId, true},
                                           {"position", &TernMapLabelInstance::position, true},
                                           {"name", &TernMapLabelInstance::name, true},
                                           {"mapId", &TernMapLabelInstance::mapId, true},
                                           {"scale", &TernMapLabelInstance::scale, true},
                                           {"skew", &TernMapLabelInstance::skew, true},
                                           {"trans", &TernMapLabelInstance::trans, true},
                                           {"rotation", &TernMapLabelInstance::rotation, true},
                                           {"allLevels", &TernMapLabelInstance::allLevels, true}});
}

TEST(TernMapLabelInstance, anUnknownKeyStopsItAndIsLogged) {
  expectStopAtUnknownKey<TernMapLabelInstance>("TernMapLabelInstance", "allLevels",
                                               &TernMapLabelInstance::allLevels);
}

}  // namespace
}  // namespace tern::test
