#include "TernCoreKit/wayfinding/detail/StandaloneNodes.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tern::detail {
namespace {

using testing::ElementsAre;

constexpr Position only{0};

TernASEdge edgeOver(std::vector<std::int64_t> nodes) {
  return TernASEdge::initASEdge(1, std::move(nodes), 1, 1, 0, 0, 0);
}

TernNeighbor linkTo(Value id) {
  TernNeighbor neighbor;
  neighbor.neighborId = std::move(id);
  return neighbor;
}

// A node with edges to 2, to 3, and to both, and links to these and to nowhere.
StandaloneNodes oneNode() {
  StandaloneNode node;
  node.facts.nodeId = 1;
  node.facts.mapId = 9;
  node.progress.visited = true;
  node.distance = 7;
  node.progress.score = 5;
  node.edges = {edgeOver({1, 2}), edgeOver({3, 1}), edgeOver({1, 2, 3})};
  node.neighbors = {linkTo(2), linkTo(3), linkTo({})};
  return StandaloneNodes(Indexed<Position, StandaloneNode>{node});
}

std::vector<bool> marks(const StandaloneNodes& nodes) {
  std::vector<bool> marks;
  for (const TernASEdge& edge : nodes.edges(only)) marks.push_back(edge.blocked);
  return marks;
}

TEST(StandaloneNodes, holdWhatTheyAreMadeOf) {
  const StandaloneNodes nodes = oneNode();
  EXPECT_EQ(nodes.facts(only).nodeId, 1);
  EXPECT_EQ(nodes.facts(only).mapId, 9);
  EXPECT_EQ(nodes.progress(only).score, 5);
  EXPECT_EQ(nodes.distances({&only, 1}).front(), 7);
  EXPECT_EQ(nodes.edges(only).size(), 3U);
  EXPECT_EQ(nodes.neighbors(only).size(), 3U);
}

TEST(StandaloneNodes, absentNeighbourIdReadsAsZero) {
  EXPECT_THAT(oneNode().neighborIds(only), ElementsAre(2, 3, 0));
}

TEST(StandaloneNodes, blockEveryEdgeThatJoinsTheOther) {
  StandaloneNodes nodes = oneNode();
  nodes.blockEdges(only, 2, true);
  EXPECT_THAT(marks(nodes), ElementsAre(true, false, true));
  nodes.blockEdges(only, 2, false);
  EXPECT_THAT(marks(nodes), ElementsAre(false, false, false));
}

TEST(StandaloneNodes, blockAllEdgesWhenNoneIsNamed) {
  StandaloneNodes nodes = oneNode();
  nodes.blockEdges(only, std::nullopt, true);
  EXPECT_THAT(marks(nodes), ElementsAre(true, true, true));
}

TEST(StandaloneNodes, firstEdgeThatJoinsTheOtherIsTheOneAsked) {
  StandaloneNodes nodes = oneNode();
  nodes.blockEdges(only, 2, true);
  EXPECT_TRUE(nodes.isEdgeBlocked(only, 2));
  EXPECT_FALSE(nodes.isEdgeBlocked(only, 3)) << "the third edge is blocked, the second is not";
  EXPECT_FALSE(nodes.isEdgeBlocked(only, 4));
}

TEST(StandaloneNodes, clearingForgetsProgressAlone) {
  StandaloneNodes nodes = oneNode();
  nodes.blockEdges(only, 2, true);
  nodes.clearProgress(only);
  EXPECT_FALSE(nodes.progress(only).visited);
  EXPECT_FALSE(nodes.distances({&only, 1}).front());
  EXPECT_EQ(nodes.progress(only).score, 0);
  EXPECT_EQ(nodes.progress(only).usedEdgeTypeId, -1);
  EXPECT_TRUE(nodes.isEdgeBlocked(only, 2));
}

}  // namespace
}  // namespace tern::detail
