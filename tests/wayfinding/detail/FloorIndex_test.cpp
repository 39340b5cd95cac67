#include "TernCoreKit/wayfinding/detail/FloorIndex.hpp"

#include <gtest/gtest.h>

#include "TernCoreKit/model/collections/TernFloorCollection.hpp"
#include "TernCoreKit/model/records/TernMap.hpp"

namespace tern::detail {
namespace {

Value floorOf(int id, int mapId, Value level = {}, Value preference = {}) {
  Value floor = Value::map({{"id", id}, {"map", Value::map({{"id", mapId}})}});
  if (!level.isAbsent()) floor.set("level", std::move(level));
  if (!preference.isAbsent()) floor.set("preference", std::move(preference));
  return floor;
}

std::shared_ptr<TernBuilding> building(std::initializer_list<Value> floors) {
  return TernBuilding::initWithDictionary(
      Value::map({{"floors", Value::map({{"items", Value::list(floors)}})}}));
}

float heightOf(Value level) {
  return FloorIndex({building({floorOf(1, 5, std::move(level))})}, 100).find(5).z;
}

std::int32_t multiplierOf(Value preference) {
  return FloorIndex({building({floorOf(1, 5, 0, std::move(preference))})}, 100).find(5).multiplier;
}

TEST(FloorIndex, unknownMapLiesAtHeightZeroWithMultiplierOne) {
  for (const FloorIndex& index :
       {FloorIndex(), FloorIndex({building({floorOf(1, 5, 3, -2)})}, 100)}) {
    EXPECT_EQ(index.find(6).z, 0);
    EXPECT_EQ(index.find(6).multiplier, 1);
    EXPECT_EQ(index.find(6).floor, nullptr);
  }
}

TEST(FloorIndex, firstFloorThatShowsAMapCounts) {
  const FloorIndex index({building({floorOf(1, 5, 1), floorOf(2, 6, 2), floorOf(3, 5, 3)}),
                          building({floorOf(4, 6, 4), floorOf(5, 7, 5)})},
                         100);
  EXPECT_EQ(index.find(5).floor->id, Value(1));
  EXPECT_EQ(index.find(6).floor->id, Value(2));
  EXPECT_EQ(index.find(7).floor->id, Value(5));
  EXPECT_EQ(index.find(5).z, 100);
  EXPECT_EQ(index.find(7).z, 500);
}

TEST(FloorIndex, heightIsTheLevelTimesTheScale) {
  EXPECT_EQ(heightOf(2), 200);
  EXPECT_EQ(heightOf(-1), -100);
  EXPECT_EQ(heightOf(1.75), 100) << "a level is a whole number";
  EXPECT_EQ(heightOf({}), 0);
}

TEST(FloorIndex, nullLevelLiesFarBelowWithoutWrapping) {
  EXPECT_EQ(heightOf(nullptr), -214748364800.0F);
}

TEST(FloorIndex, absurdLevelsDoNotOverflow) {
  EXPECT_EQ(heightOf(std::int64_t{9'000'000'000'000'000'000}), 9e20F);
  EXPECT_EQ(heightOf(1e300), 9.223372036854775807e20F);
}

TEST(FloorIndex, preferenceMakesTheMultiplier) {
  EXPECT_EQ(multiplierOf({}), 1);
  EXPECT_EQ(multiplierOf(0), 1);
  EXPECT_EQ(multiplierOf(nullptr), 1);
  EXPECT_EQ(multiplierOf(-2), -1);
  EXPECT_EQ(multiplierOf(-1), 0);
  EXPECT_EQ(multiplierOf(1), 0);
  EXPECT_EQ(multiplierOf(2), 0);
  EXPECT_EQ(multiplierOf(-3), 0);
}

TEST(FloorIndex, floorWithoutAMapShowsTheMapOfIdZero) {
  const FloorIndex index({building({Value::map({{"id", 1}, {"level", 2}})})}, 100);
  EXPECT_EQ(index.find(0).z, 200);
}

TEST(FloorIndex, buildingWithoutFloorsHasNone) {
  const FloorIndex index(
      {TernBuilding::initWithDictionary(Value::map({{"id", 1}})), building({floorOf(1, 5, 1)})},
      100);
  EXPECT_EQ(index.find(5).z, 100);
}

}  // namespace
}  // namespace tern::detail
