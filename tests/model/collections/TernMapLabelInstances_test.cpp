#include "TernCoreKit/model/collections/TernMapLabelInstances.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/RecordChecks.hpp"

namespace tern::test {
namespace {

using testing::ElementsAre;

TEST(TernMapLabelInstances, aCopyIsOfTheSameKindWithTheSameRecords) {
  CapturedLog log;
  const auto collection = filled<TernMapLabelInstances>(R"([{"id": 2}, {"id": 1}])");
  const std::shared_ptr<TernMapLabelInstances> copy = collection->copyWithZone();
  EXPECT_EQ(copy->getAll(), collection->getAll());
  copy->create(parsed(R"({"id": 3})"));
  EXPECT_THAT(ids(copy->getAll()), ElementsAre(2, 1, 3));
  EXPECT_THAT(ids(collection->getAll()), ElementsAre(2, 1));
}

std::shared_ptr<TernMapLabelInstances> instances() {
  return filled<TernMapLabelInstances>(
      R"([{"id": 1, "mapId": 5}, {"id": 2, "mapId": 6, "allLevels": false}, {"id": 3, "mapId": 6, "allLevels": true},
          {"id": 4, "allLevels": 1}, {"id": 5, "mapId": 5, "allLevels": 1}, {"id": 6, "mapId": 6, "allLevels": 2},
          {"id": 7, "mapId": 6, "allLevels": "1"}])");
}

TEST(TernMapLabelInstances, getByMapIdFindsThoseOnTheMapAndOnAllLevels) {
  CapturedLog log;
  EXPECT_THAT(ids(instances()->getByMapId(5)), ElementsAre(1, 3, 4, 5, 6));
  EXPECT_THAT(ids(instances()->getByMapId(9)), ElementsAre(3, 4, 5, 6));
}

TEST(TernMapLabelInstances, getLocationOnAllLevelsTakesOneOrTrue) {
  CapturedLog log;
  EXPECT_THAT(ids(instances()->getLocationOnAllLevels()), ElementsAre(3, 4, 5));
}

}  // namespace
}  // namespace tern::test
