#include "TernCoreKit/optimisation/TernTSP.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <bit>
#include <cstdint>
#include <limits>
#include <numeric>
#include <random>
#include <vector>

#include "bench/LiteralTour.hpp"
#include "tests/support/CapturedLog.hpp"
#include "tests/support/FailingAllocation.hpp"

namespace tern {
namespace {

using bench::LiteralTour;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr double infiniteCost = std::numeric_limits<double>::infinity();
constexpr double notANumber = std::numeric_limits<double>::quiet_NaN();

TEST(TernTSP, withoutPlacesTourIsTheStartAndCostInfinite) {
  const auto [tour, cost] = TernTSP::solve({});
  EXPECT_THAT(tour, ElementsAre(0));
  EXPECT_EQ(cost, infiniteCost);
}

TEST(TernTSP, withOnePlaceTourIsTheStartAndCostInfinite) {
  const auto [tour, cost] = TernTSP::solve({{0}});
  EXPECT_THAT(tour, ElementsAre(0));
  EXPECT_EQ(cost, infiniteCost);
}

TEST(TernTSP, twoPlacesCostTheLegThatIsWalked) {
  const auto [tour, cost] = TernTSP::solve({{0, 7}, {99, 0}});
  EXPECT_THAT(tour, ElementsAre(0, 1));
  EXPECT_EQ(cost, 7);
}

TEST(TernTSP, noWayBackIsCounted) {
  const auto [tour, cost] = TernTSP::solve({{0, 1, 10}, {1, 0, 1}, {10, 1, 0}});
  EXPECT_THAT(tour, ElementsAre(0, 1, 2));
  EXPECT_EQ(cost, 2);
}

TEST(TernTSP, ofEquallyShortOrdersTheLowerLastPlaceWins) {
  EXPECT_THAT(TernTSP::solve({{0, 1, 1}, {1, 0, 1}, {1, 1, 0}}).tour, ElementsAre(0, 2, 1));
  const TernTSP::Matrix allOne(5, std::vector<double>(5, 1));
  EXPECT_THAT(TernTSP::solve(allOne).tour, ElementsAre(0, 4, 3, 2, 1));
}

TEST(TernTSP, asymmetricLengthsAreWeighedBackwardsWhenTheOrderIsRebuilt) {
  // Over 1 and 2 to 3 it is 1 + 1 + 1, over 2 and 1 it is 1 + 1 + 5; but seen from 3 the leg to 2
  // weighs 100 and that to 1 only 50.
  const auto [tour, cost] =
      TernTSP::solve({{0, 1, 1, 50}, {50, 0, 1, 5}, {50, 1, 0, 1}, {50, 50, 100, 0}});
  EXPECT_THAT(tour, ElementsAre(0, 2, 1, 3));
  EXPECT_EQ(cost, 3);
}

TEST(TernTSP, missingCellsAreZeroAndSurplusOnesIgnored) {
  const auto [tour, cost] = TernTSP::solve({{0, 3, 5, 9}, {}, {0, 0.5, 0, 9, 9}});
  EXPECT_THAT(tour, ElementsAre(0, 1, 2));
  EXPECT_EQ(cost, 3);
}

TEST(TernTSP, unreachablePlacesComeInTheTourAtInfiniteCost) {
  const TernTSP::Matrix apart(4, std::vector<double>(4, infiniteCost));
  const auto [tour, cost] = TernTSP::solve(apart);
  EXPECT_THAT(tour, ElementsAre(0, 3, 2, 1));
  EXPECT_EQ(cost, infiniteCost);
}

TEST(TernTSP, mostStopsAreSolved) {
  // Round numbers along a line, the places shuffled by a step that is coprime to their number.
  const std::size_t count = TernTSP::mostStops;
  const auto at = [&](std::size_t place) { return static_cast<double>(place * 5 % count); };
  TernTSP::Matrix line(count, std::vector<double>(count));
  for (std::size_t i = 0; i < count; ++i) {
    for (std::size_t j = 0; j < count; ++j) line[i][j] = std::abs(at(i) - at(j));
  }
  const auto [tour, cost] = TernTSP::solve(line);
  EXPECT_EQ(cost, static_cast<double>(count - 1));
  for (std::size_t step = 0; step < count; ++step) {
    EXPECT_EQ(at(tour[step]), static_cast<double>(step));
  }
}

TEST(TernTSP, morePlacesThanThatAreRefusedAndLogged) {
  test::CapturedLog log;
  const std::size_t count = TernTSP::mostStops + 1;
  const auto [tour, cost] = TernTSP::solve(TernTSP::Matrix(count, std::vector<double>(count, 1)));
  EXPECT_THAT(tour, ElementsAre(0));
  EXPECT_EQ(cost, infiniteCost);
  EXPECT_THAT(log.take(), ElementsAre("Tern SDK: a tour of 23 stops is not solved, only of 22"));
}

TEST(TernTSP, withoutMemoryTheTourIsTheStartOrEmptyAndNothingIsThrown) {
  test::CapturedLog log;
  const TernTSP::Matrix line = {{0, 1, 10}, {1, 0, 1}, {10, 1, 0}};
  const TernTSP::Matrix tooMany(TernTSP::mostStops + 1);
  for (const TernTSP::Matrix& lengths : {TernTSP::Matrix(), line, tooMany}) {
    const TernTSP::Result solved = TernTSP::solve(lengths);
    log.take();
    TernTSP::Result result;
    const int failed = test::forFailingAllocations(
        test::FailingAllocation::Reach::thread,
        [&] { EXPECT_NO_THROW(result = TernTSP::solve(lengths)); },
        [&] {
          log.take();
          const bool isSolved = result.tour == solved.tour && result.cost == solved.cost;
          const bool isNone = result.tour.empty() || result.tour == std::vector<std::size_t>{0};
          ASSERT_TRUE(isSolved || (isNone && result.cost == infiniteCost))
              << testing::PrintToString(result.tour);
        });
    EXPECT_GE(failed, 2);
  }
}

TEST(TernTSP, notIntIsTrueForPlacesOutsideTheSubset) {
  EXPECT_FALSE(TernTSP::notInt(0, 0b101));
  EXPECT_TRUE(TernTSP::notInt(1, 0b101));
  EXPECT_FALSE(TernTSP::notInt(31, 0x80000000));
  EXPECT_TRUE(TernTSP::notInt(32, 0xFFFFFFFF));
}

TEST(TernTSP, combinationsComeInOrderOfTheirLowestPlaces) {
  EXPECT_THAT(TernTSP::combinations(2, 3), ElementsAre(0b011, 0b101, 0b110));
  EXPECT_THAT(TernTSP::combinations(0, 3), ElementsAre(0));
  EXPECT_THAT(TernTSP::combinations(3, 3), ElementsAre(0b111));
  EXPECT_THAT(TernTSP::combinations(1, 32).back(), 0x80000000);
  EXPECT_THAT(TernTSP::combinations(4, 3), IsEmpty());
  EXPECT_THAT(TernTSP::combinations(-1, 3), IsEmpty());
  EXPECT_THAT(TernTSP::combinations(1, 33), IsEmpty());
}

TEST(TernTSP, combinationsAreAllSubsetsOfTheirSizeEachOnce) {
  for (int places = 0; places <= 10; ++places) {
    for (int size = 0; size <= places; ++size) {
      std::vector<std::uint32_t> expected;
      for (std::uint32_t subset = 0; subset < 1U << places; ++subset) {
        if (std::popcount(subset) == size) expected.push_back(subset);
      }
      EXPECT_THAT(TernTSP::combinations(size, places), testing::UnorderedElementsAreArray(expected))
          << size << " of " << places;
    }
  }
}

TEST(TernTSP, combinationAddsToTheGivenSetFromThePositionOn) {
  std::vector<std::uint32_t> subsets = {7};
  TernTSP::combination(0b1, 2, 1, 4, subsets);
  EXPECT_THAT(subsets, ElementsAre(7, 0b101, 0b1001));
}

// Every cell is one of the choices, so that few of them make many ties.
TernTSP::Matrix randomMatrix(std::size_t count, const std::vector<double>& choices) {
  TernTSP::Matrix lengths(count, std::vector<double>(count));
  for (auto& row : lengths) {
    for (double& cell : row) cell = *rc::gen::elementOf(choices);
  }
  return lengths;
}

// In halves, so that sums are exact in any order.
TernTSP::Matrix symmetricMatrix(std::size_t count) {
  TernTSP::Matrix lengths(count, std::vector<double>(count));
  for (std::size_t i = 0; i < count; ++i) {
    for (std::size_t j = 0; j < i; ++j) {
      lengths[i][j] = lengths[j][i] = *rc::gen::inRange(-20, 2000) / 2.0;
    }
  }
  return lengths;
}

double lengthOf(const std::vector<std::size_t>& tour, const TernTSP::Matrix& lengths) {
  double length = 0;
  for (std::size_t i = 1; i < tour.size(); ++i) length += lengths[tour[i - 1]][tour[i]];
  return length;
}

RC_GTEST_PROP(TernTSPProperty, noOrderOfAllPlacesIsShorter, ()) {
  const TernTSP::Matrix lengths = symmetricMatrix(*rc::gen::inRange<std::size_t>(2, 9));
  std::vector<std::size_t> order(lengths.size());
  std::iota(order.begin(), order.end(), 0U);
  double best = infiniteCost;
  do {
    best = std::min(best, lengthOf(order, lengths));
  } while (std::next_permutation(order.begin() + 1, order.end()));
  const auto [tour, cost] = TernTSP::solve(lengths);
  RC_ASSERT(cost == best);
  RC_ASSERT(lengthOf(tour, lengths) == best);
  RC_ASSERT(tour[0] == 0U);
  RC_ASSERT(std::is_permutation(tour.begin(), tour.end(), order.begin(), order.end()));
}

bool isSame(const TernTSP::Result& a, const TernTSP::Result& b) {
  return a.tour == b.tour &&
         std::bit_cast<std::uint64_t>(a.cost) == std::bit_cast<std::uint64_t>(b.cost);
}

RC_GTEST_PROP(TernTSPProperty, isTheLiteralSolverToTheLastBit, ()) {
  const std::vector<std::vector<double>> kinds = {
      {1, 2, 3},
      {0.0, -0.0, 1e-300, 5e-324},
      {-1, 0.1, 0.2, 0.3, 7.25, 1e16},
      {1, infiniteCost, -1, 2},
      {1, infiniteCost, -infiniteCost, notANumber, 1e308, -1e308}};
  const TernTSP::Matrix lengths =
      randomMatrix(*rc::gen::inRange<std::size_t>(0, 10), *rc::gen::elementOf(kinds));
  RC_ASSERT(isSame(TernTSP::solve(lengths), LiteralTour::solve(lengths)));
}

TEST(TernTSP, isTheLiteralSolverForManyPlacesToo) {
  std::mt19937_64 random(20260302);
  for (const std::size_t count : {11U, 12U, 13U, 14U}) {
    TernTSP::Matrix lengths(count, std::vector<double>(count));
    for (auto& row : lengths) {
      for (double& cell : row) cell = static_cast<double>(random() % 100'000) / 7;
    }
    EXPECT_TRUE(isSame(TernTSP::solve(lengths), LiteralTour::solve(lengths))) << count;
  }
}

}  // namespace
}  // namespace tern
