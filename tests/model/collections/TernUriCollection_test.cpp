#include "TernCoreKit/model/collections/TernUriCollection.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/RecordChecks.hpp"

namespace tern::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(TernUriCollection, aCopyIsOfTheSameKindWithTheSameRecords) {
  CapturedLog log;
  const auto collection = filled<TernUriCollection>(R"([{"id": 2}, {"id": 1}])");
  const std::shared_ptr<TernUriCollection> copy = collection->copyWithZone();
  EXPECT_EQ(copy->getAll(), collection->getAll());
  copy->create(parsed(R"({"id": 3})"));
  EXPECT_THAT(ids(copy->getAll()), ElementsAre(2, 1, 3));
  EXPECT_THAT(ids(collection->getAll()), ElementsAre(2, 1));
}

TEST(TernUriCollection, getByMimeTypeFindsEveryEqualText) {
  CapturedLog log;
  const auto collection = filled<TernUriCollection>(
      R"([{"id": 1, "mimeType": "a"}, {"id": 2, "mimeType": "b"}, {"id": 3, "mimeType": "a"},
          {"id": 4, "mimeType": 5}, {"id": 5}, {"id": 6, "mimeType": "A"}, {"id": 7, "mimeType": null}])");
  EXPECT_THAT(ids(collection->getByMimeType("a")), ElementsAre(1, 3));
  EXPECT_THAT(collection->getByMimeType("c"), IsEmpty());
  for (const Value& wrong : {Value(), Value(nullptr), Value(5), Value::list({"a"})}) {
    EXPECT_THAT(collection->getByMimeType(wrong), IsEmpty());
  }
}

TEST(TernUriCollection, getByResourceTypeFindsEveryEqualText) {
  CapturedLog log;
  const auto collection = filled<TernUriCollection>(
      R"([{"id": 1, "resourceType": "a"}, {"id": 2, "resourceType": "b"}, {"id": 3, "resourceType": "a"},
          {"id": 4, "resourceType": 5}, {"id": 5}, {"id": 6, "resourceType": "A"}, {"id": 7, "resourceType": null}])");
  EXPECT_THAT(ids(collection->getByResourceType("a")), ElementsAre(1, 3));
  EXPECT_THAT(collection->getByResourceType("c"), IsEmpty());
  for (const Value& wrong : {Value(), Value(nullptr), Value(5), Value::list({"a"})}) {
    EXPECT_THAT(collection->getByResourceType(wrong), IsEmpty());
  }
}

}  // namespace
}  // namespace tern::test
