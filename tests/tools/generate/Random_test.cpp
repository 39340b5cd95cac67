#include "tools/generate/Random.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <array>
#include <vector>

namespace tern::generate {
namespace {

TEST(GenerateRandom, sameSeedGivesTheSameNumbersEverywhere) {
  Random random(1);
  std::vector<int> numbers;
  for (int i = 0; i < 6; ++i) numbers.push_back(random.below(1000));
  EXPECT_THAT(numbers, testing::ElementsAre(102, 263, 777, 796, 736, 220));
}

TEST(GenerateRandom, streamsOfOneSeedDiffer) {
  EXPECT_NE(Random(1, 0).next(), Random(1, 1).next());
  EXPECT_NE(Random(1, 1, 0).next(), Random(1, 1, 1).next());
  EXPECT_NE(Random(1, 0, 1).next(), Random(1, 1, 0).next());
}

TEST(GenerateRandom, belowABoundUnderOneIsZero) {
  Random random(1);
  EXPECT_EQ(random.below(0), 0);
  EXPECT_EQ(random.below(-5), 0);
}

RC_GTEST_PROP(GenerateRandom, numbersStayBetweenTheirBounds, (std::uint64_t seed)) {
  const int least = *rc::gen::inRange(-1000, 1000);
  const int most = *rc::gen::inRange(least, 2000);
  Random random(seed);
  for (int i = 0; i < 50; ++i) {
    const int number = random.between(least, most);
    RC_ASSERT(number >= least && number <= most);
  }
}

TEST(GenerateRandom, everyNumberBelowABoundTurnsUp) {
  Random random(5);
  std::array<int, 7> seen{};
  for (int i = 0; i < 700; ++i) ++seen[static_cast<std::size_t>(random.below(7))];
  EXPECT_THAT(seen, testing::Each(testing::Gt(50)));
}

TEST(GenerateRandom, pickNeverTakesAWeightOfZero) {
  Random random(9);
  constexpr std::array<int, 4> weights{0, 3, 0, 1};
  std::array<int, 4> seen{};
  for (int i = 0; i < 400; ++i) ++seen[static_cast<std::size_t>(random.pick(weights))];
  EXPECT_EQ(seen[0], 0);
  EXPECT_EQ(seen[2], 0);
  EXPECT_GT(seen[1], seen[3]);
  EXPECT_GT(seen[3], 0);
}

RC_GTEST_PROP(GenerateRandom, shuffleKeepsEveryItem, (std::uint64_t seed, std::vector<int> items)) {
  std::vector<int> shuffled = items;
  Random(seed).shuffle(shuffled);
  std::sort(items.begin(), items.end());
  std::sort(shuffled.begin(), shuffled.end());
  RC_ASSERT(items == shuffled);
}

}  // namespace
}  // namespace tern::generate
