#include "TernCoreKit/model/collections/TernPathCollection.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "TernCoreKit/model/records/TernPathType.hpp"
#include "TernCoreKit/model/records/TernWaypoint.hpp"
#include "tests/support/CapturedLog.hpp"
#include "tests/support/MadeRecords.hpp"

namespace tern::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

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
