#include "TernCoreKit/model/records/TernMapLabel.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "TernCoreKit/model/collections/TernMapLabelInstances.hpp"
#include "TernCoreKit/model/collections/TernUriCollection.hpp"
#include "tests/support/RecordChecks.hpp"

namespace tern::test {
namespace {

TEST(TernMapLabel, keepsEveryFieldAsTheDocumentGivesItAndCopiesThoseItShould) {
  expectPlainFields<TernMapLabel>({{"id", &TernMapLabel::id, false},
                                   {"externalId", &TernMapLabel::externalId, false},
                                   {"name", &TernMapLabel::name, true},
                                   {"svg", &TernMapLabel::svg, true},
                                   {"status", &TernMapLabel::status, false}});
}

TEST(TernMapLabel, anUnknownKeyStopsItAndIsLogged) {
  expectStopAtUnknownKey<TernMapLabel>("TernMapLabel", "status", &TernMapLabel::status);
}

TEST(TernMapLabel, aMapUnderMapLabelInstancesBecomesACollection) {
  expectNestedCollection("mapLabelInstances", &TernMapLabel::mapLabelInstances, Carried::yes);
}

TEST(TernMapLabel, aMapUnderUrisBecomesACollection) {
  expectNestedCollection("uris", &TernMapLabel::uris, Carried::yes);
}

TEST(TernMapLabel, aCopyHasNoId) {
  const auto label = made<TernMapLabel>(R"({"id": 4, "externalId": "e", "name": "Hall"})");
  EXPECT_EQ(label->id, Value(4));
  EXPECT_TRUE(label->copyWithZone()->id.isAbsent());
  EXPECT_EQ(label->copyWithZone()->name, Value("Hall"));
}

}  // namespace
}  // namespace tern::test
