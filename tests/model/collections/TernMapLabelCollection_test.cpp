#include "TernCoreKit/model/collections/TernMapLabelCollection.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cstdint>
#include <utility>
#include <vector>

#include "TernCoreKit/model/collections/TernMapLabelInstances.hpp"
#include "TernCoreKit/model/records/TernMap.hpp"
#include "tests/support/CapturedLog.hpp"
#include "tests/support/MadeRecords.hpp"

namespace tern::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(TernMapLabelCollection, getByMapListsALabelOnceForEachInstanceOnItOrOnAllLevels) {
  CapturedLog log;
  const auto labels = filled<TernMapLabelCollection>(
      R"([{"id": 1, "mapLabelInstances": {"items": [{"id": 11, "mapId": 5}, {"id": 12, "mapId": 5}]}},
          {"id": 2, "mapLabelInstances": {"items": [{"id": 21, "mapId": 6}]}},
          {"id": 3, "mapLabelInstances": {"items": [{"id": 31, "mapId": 6, "allLevels": true}]}},
          {"id": 4}, {"id": 5, "mapLabelInstances": []}])");
  EXPECT_THAT(ids(labels->getByMap(made<TernMap>(R"({"id": 5})"))), ElementsAre(1, 1, 3));
  EXPECT_THAT(ids(labels->getByMap(made<TernMap>(R"({"id": 9})"))), ElementsAre(3));
  EXPECT_THAT(labels->getByMap(nullptr), IsEmpty());
}

TEST(TernMapLabelCollection, labelsAreToldApartByTheirImage) {
  CapturedLog log;
  const auto labels = filled<TernMapLabelCollection>(
      R"([{"id": 1, "svg": "<svg/>"}, {"id": 2}, {"id": 3, "svg": null}, {"id": 4, "svg": ""}])");
  EXPECT_THAT(ids(labels->getLabelsWithImage()), ElementsAre(1, 4));
  EXPECT_THAT(ids(labels->getLabelsWithoutImage()), ElementsAre(2, 3));
}

RC_GTEST_PROP(TernMapLabelCollection, labelsOfAMapAreThoseOfAScanOfTheirInstances, ()) {
  const std::int64_t mapId = *rc::gen::inRange(0, 4);
  TernMapLabelCollection labels;
  std::vector<std::int64_t> expected;
  for (std::int64_t id = *rc::gen::inRange(0, 5); id > 0; --id) {
    Value instances = Value::list();
    for (std::int64_t each = *rc::gen::inRange(0, 4); each > 0; --each) {
      const std::int64_t on = *rc::gen::inRange(0, 4);
      const bool onAllLevels = *rc::gen::arbitrary<bool>();
      instances.append(Value::map({{"id", each}, {"mapId", on}, {"allLevels", onAllLevels}}));
      if (on == mapId || onAllLevels) expected.push_back(id);
    }
    Value batch = Value::map({{"items", std::move(instances)}});
    labels.create(Value::map({{"id", id}, {"mapLabelInstances", std::move(batch)}}));
  }
  const auto map = TernMap::initWithDictionary(Value::map({{"id", mapId}}));
  RC_ASSERT(ids(labels.getByMap(map)) == expected);
}

}  // namespace
}  // namespace tern::test
