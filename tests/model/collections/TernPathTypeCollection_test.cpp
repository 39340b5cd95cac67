#include "TernCoreKit/model/collections/TernPathTypeCollection.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/RecordChecks.hpp"

namespace tern::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(TernPathTypeCollection, aCopyIsOfTheSameKindWithTheSameRecords) {
  CapturedLog log;
  const auto collection = filled<TernPathTypeCollection>(R"([{"id": 2}, {"id": 1}])");
  const std::shared_ptr<TernPathTypeCollection> copy = collection->copyWithZone();
  EXPECT_EQ(copy->getAll(), collection->getAll());
  copy->create(parsed(R"({"id": 3})"));
  EXPECT_THAT(ids(copy->getAll()), ElementsAre(2, 1, 3));
  EXPECT_THAT(ids(collection->getAll()), ElementsAre(2, 1));
}

TEST(TernPathTypeCollection, getByNameFindsEveryEqualText) {
  CapturedLog log;
  const auto collection = filled<TernPathTypeCollection>(
      R"([{"id": 1, "name": "a"}, {"id": 2, "name": "b"}, {"id": 3, "name": "a"},
          {"id": 4, "name": 5}, {"id": 5}, {"id": 6, "name": "A"}, {"id": 7, "name": null}])");
  EXPECT_THAT(ids(collection->getByName("a")), ElementsAre(1, 3));
  EXPECT_THAT(collection->getByName("c"), IsEmpty());
  for (const Value& wrong : {Value(), Value(nullptr), Value(5), Value::list({"a"})}) {
    EXPECT_THAT(collection->getByName(wrong), IsEmpty());
  }
}

TEST(TernPathTypeCollection, getByDirectionComparesNumbersAndReadsAbsentAsZero) {
  CapturedLog log;
  const auto collection = filled<TernPathTypeCollection>(
      R"([{"id": 1, "direction": 2}, {"id": 2, "direction": 2.0}, {"id": 3, "direction": 2.5}, {"id": 4},
          {"id": 5, "direction": 0}])");
  EXPECT_THAT(ids(collection->getByDirection(2)), ElementsAre(1, 2));
  EXPECT_THAT(ids(collection->getByDirection(0)), ElementsAre(4, 5));
  EXPECT_THAT(collection->getByDirection(-1), IsEmpty());
}

}  // namespace
}  // namespace tern::test
