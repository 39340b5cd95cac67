#include "TernCoreKit/model/collections/TernPathCollection.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "TernCoreKit/model/records/TernPathType.hpp"
#include "TernCoreKit/model/records/TernWaypoint.hpp"
#include "tests/support/RecordChecks.hpp"

namespace tern::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(TernPathCollection, aCopyIsOfTheSameKindWithTheSameRecords) {
  CapturedLog log;
  const auto collection = filled<TernPathCollection>(R"([{"id": 2}, {"id": 1}])");
  const std::shared_ptr<TernPathCollection> copy = collection->copyWithZone();
  EXPECT_EQ(copy->getAll(), collection->getAll());
  copy->create(parsed(R"({"id": 3})"));
  EXPECT_THAT(ids(copy->getAll()), ElementsAre(2, 1, 3));
  EXPECT_THAT(ids(collection->getAll()), ElementsAre(2, 1));
}

TEST(TernPathCollection, getByNameFindsEveryEqualText) {
  CapturedLog log;
  const auto collection = filled<TernPathCollection>(
      R"([{"id": 1, "name": "a"}, {"id": 2, "name": "b"}, {"id": 3, "name": "a"},
          {"id": 4, "name": 5}, {"id": 5}, {"id": 6, "name": "A"}, {"id": 7, "name": null}])");
  EXPECT_THAT(ids(collection->getByName("a")), ElementsAre(1, 3));
  EXPECT_THAT(collection->getByName("c"), IsEmpty());
  for (const Value& wrong : {Value(), Value(nullptr), Value(5), Value::list({"a"})}) {
    EXPECT_THAT(collection->getByName(wrong), IsEmpty());
  }
}

TEST(TernPathCollection, getByDirectionComparesNumbersAndReadsAbsentAsZero) {
  CapturedLog log;
  const auto collection = filled<TernPathCollection>(
      R"([{"id": 1, "direction": 2}, {"id": 2, "direction": 2.0}, {"id": 3, "direction": 2.5}, {"id": 4},
          {"id": 5, "direction": 0}])");
  EXPECT_THAT(ids(collection->getByDirection(2)), ElementsAre(1, 2));
  EXPECT_THAT(ids(collection->getByDirection(0)), ElementsAre(4, 5));
  EXPECT_THAT(collection->getByDirection(-1), IsEmpty());
}

TEST(TernPathCollection, getByPathTypeTakesTheIdInThirtyTwoBits) {
  CapturedLog log;
  const auto paths = filled<TernPathCollection>(
      R"([{"id": 1, "pathTypeId": 3}, {"id": 2, "pathTypeId": 4}, {"id": 3, "pathTypeId": 3}, {"id": 4}])");
  EXPECT_THAT(ids(paths->getByPathType(made<TernPathType>(R"({"id": 3})"))), ElementsAre(1, 3));
  EXPECT_THAT(ids(paths->getByPathType(made<TernPathType>(R"({"id": 4294967299})"))),
              ElementsAre(1, 3));
  EXPECT_THAT(paths->getByPathType(made<TernPathType>(R"({"id": 9})")), IsEmpty());
  EXPECT_THAT(paths->getByPathType(nullptr), IsEmpty());
}

TEST(TernPathCollection, getByWaypointFindsThePathsThatJoinIt) {
  CapturedLog log;
  const auto paths = filled<TernPathCollection>(
      R"([{"id": 1, "waypointIds": [7, 8]}, {"id": 2, "waypointIds": [8, 9]}, {"id": 3, "waypointIds": [9, 7, 7]},
          {"id": 4, "waypointIds": 7}, {"id": 5}, {"id": 6, "waypointIds": ["7", null, 7.0]}])");
  EXPECT_THAT(ids(paths->getByWaypoint(made<TernWaypoint>(R"({"id": 7})"))), ElementsAre(1, 3, 6));
  EXPECT_THAT(paths->getByWaypoint(made<TernWaypoint>("{}")), IsEmpty());
  EXPECT_THAT(paths->getByWaypoint(nullptr), IsEmpty());
}

}  // namespace
}  // namespace tern::test
