#include "TernCoreKit/model/collections/TernMapLabelInstances.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/CapturedLog.hpp"
#include "tests/support/MadeRecords.hpp"

namespace tern::test {
namespace {

using testing::ElementsAre;

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
