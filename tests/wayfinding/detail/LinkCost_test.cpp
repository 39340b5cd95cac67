#include "TernCoreKit/wayfinding/detail/LinkCost.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace tern::detail {
namespace {

constexpr float infinity = std::numeric_limits<float>::infinity();

constexpr FloorPoint ground{0, 0, 0, 1};
constexpr FloorPoint groundFarOff{300, 400, 0, 1};
constexpr FloorPoint upstairs{0, 0, 100, 1};

constexpr Passage walk{.isWalking = true, .weight = 2};
constexpr Passage lift{.isWalking = false, .weight = 7};

LinkCost costOf(const FloorPoint& from, const FloorPoint& to, const Passage& passage) {
  const auto cost = linkCost(from, to, passage);
  EXPECT_TRUE(cost);
  return cost.value_or(LinkCost{-1, -1});
}

TEST(LinkCost, straightLineRunsThroughSpace) {
  EXPECT_EQ(straightLine(ground, groundFarOff), 500.0F);
  EXPECT_EQ(straightLine({1, 2, 3}, {3, 5, 9}), 7.0F);
  EXPECT_EQ(straightLine(ground, ground), 0.0F);
}

// Squared in single precision this would be infinite.
TEST(LinkCost, straightLineIsComputedInDoublePrecision) {
  EXPECT_EQ(straightLine({3e30F, 0, 0}, {0, 4e30F, 0}), 5e30F);
}

TEST(LinkCost, walkCostsItsLengthTimesItsWeight) {
  EXPECT_EQ(costOf(ground, groundFarOff, walk).cost, 1000.0F);
  EXPECT_EQ(costOf(ground, groundFarOff, walk).distance, 500.0F);
}

TEST(LinkCost, anyOtherPassageCostsItsWeightWhateverItsLength) {
  EXPECT_EQ(costOf(ground, groundFarOff, lift).cost, 7.0F);
  EXPECT_EQ(costOf(ground, groundFarOff, lift).distance, 1.0F);
  EXPECT_EQ(costOf(ground, ground, lift).cost, 7.0F);
}

TEST(LinkCost, climbIsMultipliedByItsHeightOverTheVerticalWeight) {
  EXPECT_EQ(costOf(ground, upstairs, lift).cost, 7.0F * 101);
  EXPECT_EQ(costOf(upstairs, ground, lift).cost, 7.0F * 101);
  EXPECT_EQ(costOf(ground, upstairs, {.weight = 7, .verticalWeight = 3}).cost, 7.0F * 26);
  EXPECT_EQ(costOf(ground, upstairs, {.isWalking = true, .weight = 1, .verticalWeight = 1}).cost,
            5100.0F);
}

TEST(LinkCost, climbWithAVerticalWeightOfMinusOneCostsAsMuchAsALevelLink) {
  EXPECT_EQ(costOf(ground, upstairs, {.weight = 7, .verticalWeight = -1}).cost, 7.0F);
}

TEST(LinkCost, climbOfInfiniteHeightHasNoVerticalFactor) {
  EXPECT_EQ(costOf(ground, {0, 0, infinity, 1}, lift).cost, 7.0F);
}

TEST(LinkCost, multiplierOfThePlaceReachedAppliesOnTheLevelOnly) {
  const FloorPoint preferred{0, 0, 0, -1};
  EXPECT_EQ(costOf(ground, preferred, lift).cost, -7.0F);
  EXPECT_EQ(costOf(preferred, ground, lift).cost, 7.0F);
  EXPECT_EQ(costOf(ground, {0, 0, 100, 0}, lift).cost, 707.0F);
  EXPECT_EQ(costOf(ground, {300, 400, 0, 0}, walk).cost, 0.0F);
  EXPECT_EQ(costOf(ground, {300, 400, 0, 0}, walk).distance, 500.0F);
}

TEST(LinkCost, directionOneLeadsOnlyUpward) {
  EXPECT_TRUE(linkCost(ground, upstairs, {.direction = 1, .weight = 7}));
  EXPECT_FALSE(linkCost(upstairs, ground, {.direction = 1, .weight = 7}));
}

TEST(LinkCost, directionTwoLeadsOnlyDownward) {
  EXPECT_FALSE(linkCost(ground, upstairs, {.direction = 2, .weight = 7}));
  EXPECT_TRUE(linkCost(upstairs, ground, {.direction = 2, .weight = 7}));
}

TEST(LinkCost, anyOtherDirectionLeadsBothWays) {
  for (const std::int64_t direction : {0, 3, -1}) {
    EXPECT_TRUE(linkCost(ground, upstairs, {.direction = direction}));
    EXPECT_TRUE(linkCost(upstairs, ground, {.direction = direction}));
  }
}

TEST(LinkCost, directionMeansNothingOnTheLevel) {
  EXPECT_TRUE(linkCost(ground, groundFarOff, {.direction = 1}));
  EXPECT_TRUE(linkCost(ground, groundFarOff, {.direction = 2}));
}

TEST(LinkCost, infiniteWeightTimesNoLengthIsNotANumber) {
  EXPECT_TRUE(std::isnan(costOf(ground, ground, {.isWalking = true, .weight = infinity}).cost));
}

// 0.1 * 3 differs from 0.3 in the last place of single precision, and so would another order.
TEST(LinkCost, isMultipliedInSinglePrecisionFromTheInside) {
  const Passage over{.weight = 0.1F, .verticalWeight = 2};
  EXPECT_EQ(costOf(ground, upstairs, over).cost, (1.0F + 100.0F / 3.0F) * 0.1F);
}

}  // namespace
}  // namespace tern::detail
