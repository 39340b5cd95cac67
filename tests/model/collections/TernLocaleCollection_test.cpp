#include "TernCoreKit/model/collections/TernLocaleCollection.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/RecordChecks.hpp"

namespace tern::test {
namespace {

using testing::ElementsAre;

TEST(TernLocaleCollection, aCopyIsOfTheSameKindWithTheSameRecords) {
  CapturedLog log;
  const auto collection = filled<TernLocaleCollection>(R"([{"id": 2}, {"id": 1}])");
  const std::shared_ptr<TernLocaleCollection> copy = collection->copyWithZone();
  EXPECT_EQ(copy->getAll(), collection->getAll());
  copy->create(parsed(R"({"id": 3})"));
  EXPECT_THAT(ids(copy->getAll()), ElementsAre(2, 1, 3));
  EXPECT_THAT(ids(collection->getAll()), ElementsAre(2, 1));
}

TEST(TernLocaleCollection, getByNameFindsTheFirstInAnyCase) {
  CapturedLog log;
  const auto locales = filled<TernLocaleCollection>(
      R"([{"id": 1, "name": 5}, {"id": 2, "name": "En-GB"}, {"id": 3, "name": "en-gb"}, {"id": 4}])");
  EXPECT_EQ(idOf(locales->getByName("EN-gb")), 2);
  EXPECT_EQ(locales->getByName("fr"), nullptr);
  for (const Value& wrong : {Value(), Value(nullptr), Value(5)}) {
    EXPECT_EQ(locales->getByName(wrong), nullptr);
  }
}

TEST(TernLocaleCollection, getByLocaleCodeFindsTheFirstInAnyCase) {
  CapturedLog log;
  const auto locales = filled<TernLocaleCollection>(
      R"([{"id": 1, "localeCode": 5}, {"id": 2, "localeCode": "En-GB"}, {"id": 3, "localeCode": "en-gb"}, {"id": 4}])");
  EXPECT_EQ(idOf(locales->getByLocaleCode("EN-gb")), 2);
  EXPECT_EQ(locales->getByLocaleCode("fr"), nullptr);
  for (const Value& wrong : {Value(), Value(nullptr), Value(5)}) {
    EXPECT_EQ(locales->getByLocaleCode(wrong), nullptr);
  }
}

}  // namespace
}  // namespace tern::test
