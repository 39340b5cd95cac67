#include "tools/graph/Standing.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tern::graph {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(Standing, graphWithoutNodesHasNoCore) { EXPECT_THAT(standingIn({}).core, IsEmpty()); }

TEST(Standing, largestWeakPartIsTheMainland) {
  const Standing standing = standingIn(digraphOf(5, {{0, 1}, {2, 3}, {3, 4}}));
  EXPECT_FALSE(standing.isOnMainland(0));
  EXPECT_FALSE(standing.isOnMainland(1));
  EXPECT_TRUE(standing.isOnMainland(2));
}

// 0 leads to the core of 1 and 2, and that to 3.
TEST(Standing, nodesAreReachedFromTheCoreOrReturnToIt) {
  const Standing standing = standingIn(digraphOf(4, {{0, 1}, {1, 2}, {2, 1}, {2, 3}}));
  EXPECT_THAT(standing.core, ElementsAre(1, 2));
  EXPECT_THAT(standing.reached, ElementsAre(false, true, true, true));
  EXPECT_THAT(standing.returns, ElementsAre(true, true, true, false));
}

// The largest part that hangs together may lie beside the mainland.
TEST(Standing, coreLiesOnTheMainland) {
  const Standing standing = standingIn(digraphOf(5, {{0, 1}, {1, 0}, {2, 3}, {3, 4}}));
  ASSERT_EQ(standing.core.size(), 1U);
  EXPECT_GE(standing.core.front(), 2U);
}

}  // namespace
}  // namespace tern::graph
