#include "tools/import/ways/WayNet.hpp"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>
#include <vector>

#include "tests/tools/import/ways/MadeArea.hpp"
#include "tests/tools/import/ways/PlainWalks.hpp"
#include "tools/import/ways/PlaneGeometry.hpp"

namespace tern::imports {
namespace {

RC_GTEST_PROP(WayNet, thinnedWaysAreHardlyLongerAndUsedOnesNotAtAll, ()) {
  const MadeArea made = madeArea(*rc::gen::arbitrary<std::uint32_t>(), 2, 6);
  const Sight sight = sightIn({made.area}, made.places);
  const std::vector<StraightWay> thin = thinned(sight, 1.02);
  const Lengths before = walks(sight.nodes.size(), sight.ways, sight.nodes.size());
  const Lengths after = walks(sight.nodes.size(), thin, sight.nodes.size());
  for (std::size_t i = 0; i < before.size(); ++i) {
    for (std::size_t k = 0; k < i; ++k) {
      RC_ASSERT(before[i][k] == after[i][k] || after[i][k] <= before[i][k] * 1.02 + 1e-9);
    }
  }
  const auto kept = usedOf(sight.nodes.size(), thin, made.places.size());
  const Lengths used = walks(sight.nodes.size(), kept, made.places.size());
  for (std::size_t i = 0; i < made.places.size(); ++i) {
    for (std::size_t k = 0; k < i; ++k) RC_ASSERT(used[i][k] <= after[i][k] + 1e-9);
  }
}

TEST(WayNet, ofTwoWaysAlongsideEachOtherOneIsKept) {
  // A long triangle, whose longest side is hardly shorter than the two others.
  const Sight sight{{{0, 0}, {5, 0.1}, {10, 0}},
                    {{0, 1, std::hypot(5, 0.1)}, {1, 2, std::hypot(5, 0.1)}, {0, 2, 10}}};
  EXPECT_EQ(thinned(sight, 1.02).size(), 2U);
  EXPECT_EQ(thinned(sight, 1).size(), 3U);
}

TEST(WayNet, thinningEndsWhereMoreWaysBetweenStopsAreKeptThanWanted) {
  // Ways from the middle of a wheel, of which none stands for another.
  Sight sight{{{0, 0}}, {}};
  for (std::uint32_t i = 1; i <= 8; ++i) {
    sight.nodes.push_back({std::cos(i), std::sin(i)});
    sight.ways.push_back({0, i, 1});
  }
  EXPECT_EQ(thinned(sight, 1.02, 9, 8).size(), 8U);
  EXPECT_EQ(thinned(sight, 1.02, 9, 5).size(), 6U);
  EXPECT_EQ(thinned(sight, 1.02, 4, 5).size(), 8U) << "three of the ends alone are stops";
}

TEST(WayNet, whatNoShortestWalkTakesIsLeftOut) {
  const std::vector<Point> nodes{{0, 0}, {10, 0}, {5, 5}, {5, 1}};
  const double away = std::hypot(5, 5);
  const double near = std::hypot(5, 1);
  const std::vector<StraightWay> ways{{0, 2, away}, {2, 1, away}, {0, 3, near}, {3, 1, near}};
  const auto used = usedOf(nodes.size(), ways, 2);
  ASSERT_EQ(used.size(), 2U);
  EXPECT_EQ(used[0].to, 3U);
  EXPECT_EQ(used[1].from, 3U);
}

}  // namespace
}  // namespace tern::imports
