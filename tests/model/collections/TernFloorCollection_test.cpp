#include "TernCoreKit/model/collections/TernFloorCollection.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>
#include <vector>

#include "TernCoreKit/model/records/TernDestination.hpp"
#include "TernCoreKit/model/records/TernMap.hpp"
#include "tests/support/CapturedLog.hpp"
#include "tests/support/MadeRecords.hpp"

namespace tern::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(TernFloorCollection, keepsEachOrderFromTheFirstCallForItOn) {
  const auto floors = filled<TernFloorCollection>(R"([{"id": 1, "level": 3, "preference": 1},
      {"id": 2, "level": 1, "preference": 2}])");
  EXPECT_FALSE(floors->preferencesArray() || floors->levelsArray() || floors->elevationsArray());
  floors->getAllSortedByLevel();
  EXPECT_FALSE(floors->preferencesArray() || floors->elevationsArray());
  EXPECT_EQ(*floors->levelsArray(), floors->getAllSortedByLevel());
  EXPECT_EQ(*floors->levelsArray(), (std::vector{floors->getById(2), floors->getById(1)}));
}

TEST(TernFloorCollection, defaultFloorIdIsNullAtFirstAndFilledByABatch) {
  CapturedLog log;
  EXPECT_TRUE(TernFloorCollection().defaultFloorId.isNull());
  EXPECT_EQ(batch<TernFloorCollection>(R"({"items": [], "defaultFloorId": 4})")->defaultFloorId,
            Value(4));
}

TEST(TernFloorCollection, getDefaultIsTheFloorOfTheDefaultIdOrElseOfTheFirstKey) {
  const auto floors = filled<TernFloorCollection>(R"([{"id": 9}, {"id": 10}, {"id": 4}])");
  EXPECT_EQ(idOf(floors->getDefault()), 10);
  floors->defaultFloorId = 4;
  EXPECT_EQ(idOf(floors->getDefault()), 4);
  for (const char* number : {"9.0", "9e0"}) {
    floors->defaultFloorId = parsed(number);
    EXPECT_EQ(idOf(floors->getDefault()), 9) << number;
  }
  floors->defaultFloorId = 5;
  EXPECT_EQ(floors->getDefault(), nullptr);
  EXPECT_EQ(TernFloorCollection().getDefault(), nullptr);
}

TEST(TernFloorCollection, getByLevelFindsTheFirstInThirtyTwoBits) {
  const auto floors = filled<TernFloorCollection>(
      R"([{"id": 1, "level": 4294967298}, {"id": 2, "level": 2}, {"id": 3, "level": null},
          {"id": 4, "level": -1.5}, {"id": 5}])");
  EXPECT_EQ(idOf(floors->getByLevel(2)), 1);
  EXPECT_EQ(idOf(floors->getByLevel(-2147483648LL)), 3);
  EXPECT_EQ(idOf(floors->getByLevel(-1)), 4);
  EXPECT_EQ(idOf(floors->getByLevel(0)), 5);
  EXPECT_EQ(floors->getByLevel(7), nullptr);
}

TEST(TernFloorCollection, getByMapFindsTheFirstThatShowsAMapOfThatId) {
  CapturedLog log;
  const auto floors = filled<TernFloorCollection>(
      R"([{"id": 1}, {"id": 2, "map": {}}, {"id": 3, "map": {"id": 6}}, {"id": 4, "map": {"id": 6}}])");
  EXPECT_EQ(idOf(floors->getByMap(made<TernMap>(R"({"id": 6})"))), 3);
  EXPECT_EQ(floors->getByMap(made<TernMap>(R"({"id": 0})")), nullptr);
  EXPECT_EQ(floors->getByMap(made<TernMap>("{}")), nullptr);
  EXPECT_EQ(floors->getByMap(made<TernMap>(R"({"id": null})")), nullptr);
  EXPECT_EQ(floors->getByMap(nullptr), nullptr);
}

TEST(TernFloorCollection, getByDestinationListsAFloorOnceForEachLocationOnItsMap) {
  CapturedLog log;
  const auto floors = filled<TernFloorCollection>(
      R"([{"id": 1, "map": {"id": 5}}, {"id": 2}, {"id": 3, "map": {"id": 6}}, {"id": 4, "map": {"id": 7}}])");
  const auto destination = made<TernDestination>(
      R"({"locations": [{"mapId": 6}, {"mapId": 5}, {"mapId": 6}, {"mapId": 99}]})");
  EXPECT_THAT(ids(floors->getByDestination(destination)), ElementsAre(1, 3, 3));
  EXPECT_THAT(floors->getByDestination(made<TernDestination>("{}")), IsEmpty());
  EXPECT_THAT(floors->getByDestination(nullptr), IsEmpty());
}

TEST(TernFloorCollection, sortsByPreferenceLevelAndElevationEqualOnesInTheirOrder) {
  const auto floors = filled<TernFloorCollection>(
      R"([{"id": 1, "preference": 3, "level": 0, "elevation": 2.5},
          {"id": 2, "preference": 1, "level": -1, "elevation": 2.5},
          {"id": 3, "preference": 3, "level": null, "elevation": -4},
          {"id": 4, "preference": "x", "level": 1.5}])");
  EXPECT_THAT(ids(floors->getAllSortedByPreference()), ElementsAre(4, 2, 1, 3));
  EXPECT_THAT(ids(floors->getAllSortedByLevel()), ElementsAre(3, 2, 1, 4));
  EXPECT_THAT(ids(floors->getAllSortedByElevation()), ElementsAre(3, 4, 1, 2));
  EXPECT_THAT(ids(floors->allFloors()), ElementsAre(1, 2, 3, 4));
  EXPECT_EQ(*floors->preferencesArray(), floors->getAllSortedByPreference());
  EXPECT_EQ(*floors->elevationsArray(), floors->getAllSortedByElevation());
}

TEST(TernFloorCollection, aNumberThatIsNoneSortsAsZero) {
  const auto floors =
      filled<TernFloorCollection>(R"([{"id": 1, "level": 1}, {"id": 2}, {"id": 3, "level": -1}])");
  floors->findById(2)->level = std::numeric_limits<double>::quiet_NaN();
  EXPECT_THAT(ids(floors->getAllSortedByLevel()), ElementsAre(3, 2, 1));
}

TEST(TernFloorCollection, aSortedListIsFrozenByTheFirstCall) {
  const auto floors =
      filled<TernFloorCollection>(R"([{"id": 1, "level": 2}, {"id": 2, "level": 1}])");
  EXPECT_THAT(ids(floors->getAllSortedByLevel()), ElementsAre(2, 1));
  floors->create(parsed(R"({"id": 3, "level": 0})"));
  EXPECT_THAT(ids(floors->getAllSortedByLevel()), ElementsAre(2, 1));
  EXPECT_THAT(ids(floors->getAllSortedByElevation()), ElementsAre(1, 2, 3));
  EXPECT_THAT(ids(floors->allFloors()), ElementsAre(1, 2, 3));
  EXPECT_THAT(ids(floors->copyWithZone()->getAllSortedByLevel()), ElementsAre(3, 2, 1));
}

TEST(TernFloorCollection, theSortedListOfAnEmptyCollectionIsFrozenToo) {
  TernFloorCollection floors;
  EXPECT_THAT(floors.getAllSortedByLevel(), IsEmpty());
  floors.create(parsed(R"({"id": 3})"));
  EXPECT_THAT(floors.getAllSortedByLevel(), IsEmpty());
}

}  // namespace
}  // namespace tern::test
