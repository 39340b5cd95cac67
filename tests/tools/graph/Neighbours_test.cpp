#include "tools/graph/Neighbours.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tern::graph {
namespace {

using testing::ElementsAre;

Digraph around(std::uint32_t count, const std::vector<Link>& links) {
  return neighboursIn(digraphOf(count, links));
}

TEST(Neighbours, areThoseOfLinksEitherWayOnceEach) {
  const Digraph neighbours = around(3, {{0, 1}, {1, 0}, {2, 1}});
  EXPECT_THAT(neighbours.targets, ElementsAre(1, 0, 2, 1));
  EXPECT_THAT(neighbours.first, ElementsAre(0, 1, 3, 4));
}

TEST(Neighbours, stopsOfOneLiftDoWithoutEachOfThem) {
  const Digraph lift = around(4, {{0, 1}, {0, 2}, {1, 2}, {2, 3}});
  EXPECT_TRUE(areJoinedWithout(lift, 0));
  EXPECT_TRUE(areJoinedWithout(lift, 3));
}

TEST(Neighbours, landingBetweenTwoFlightsIsNotDoneWithout) {
  EXPECT_FALSE(areJoinedWithout(around(3, {{0, 1}, {1, 2}}), 1));
}

// Whatever the order of their numbers is.
TEST(Neighbours, chainOfStopsHangsTogether) {
  const Digraph lift = around(5, {{0, 1}, {0, 2}, {0, 3}, {0, 4}, {1, 3}, {3, 2}, {2, 4}});
  EXPECT_TRUE(areJoinedWithout(lift, 0));
}

TEST(Neighbours, nodeWithoutLinksAndHubOfManyAreNoStops) {
  std::vector<Link> links;
  for (std::uint32_t node = 1; node <= 201; ++node) {
    links.emplace_back(0, node);
    links.emplace_back(node, node % 201 + 1);
  }
  const Digraph hub = around(203, links);
  EXPECT_FALSE(areJoinedWithout(hub, 0));
  EXPECT_FALSE(areJoinedWithout(hub, 202));
}

}  // namespace
}  // namespace tern::graph
