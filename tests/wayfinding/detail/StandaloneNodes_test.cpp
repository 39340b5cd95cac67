#include "TernCoreKit/wayfinding/detail/StandaloneNodes.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tern::detail {
namespace {

using testing::ElementsAre;

constexpr Position theNode{0};

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
  for (const TernASEdge& edge : nodes.edges(theNode)) marks.push_back(edge.blocked);
  return marks;
}

TEST(StandaloneNodes, holdWhatTheyAreMadeOf) {
  const StandaloneNodes nodes = oneNode();
  EXPECT_EQ(nodes.facts(theNode).nodeId, 1);
  EXPECT_EQ(nodes.facts(theNode).mapId, 9);
  EXPECT_EQ(nodes.progress(theNode).score, 5);
  EXPECT_EQ(nodes.distances({&theNode, 1}).front(), 7);
  EXPECT_EQ(nodes.edges(theNode).size(), 3U);
  EXPECT_EQ(nodes.neighbors(theNode).size(), 3U);
}

TEST(StandaloneNodes, absentNeighbourIdReadsAsZero) {
  EXPECT_THAT(oneNode().neighborIds(theNode), ElementsAre(2, 3, 0));
}

TEST(StandaloneNodes, blockEveryEdgeThatJoinsTheOther) {
  StandaloneNodes nodes = oneNode();
  nodes.blockEdges(theNode, 2, true);
  EXPECT_THAT(marks(nodes), ElementsAre(true, false, true));
  nodes.blockEdges(theNode, 2, false);
  EXPECT_THAT(marks(nodes), ElementsAre(false, false, false));
}

TEST(StandaloneNodes, blockAllEdgesWhenNoneIsNamed) {
  StandaloneNodes nodes = oneNode();
  nodes.blockEdges(theNode, std::nullopt, true);
  EXPECT_THAT(marks(nodes), ElementsAre(true, true, true));
}

TEST(StandaloneNodes, firstEdgeThatJoinsTheOtherIsTheOneAsked) {
  StandaloneNodes nodes = oneNode();
  nodes.blockEdges(theNode, 2, true);
  EXPECT_TRUE(nodes.isEdgeBlocked(theNode, 2));
  EXPECT_FALSE(nodes.isEdgeBlocked(theNode, 3)) << "the third edge is blocked, the second is not";
  EXPECT_FALSE(nodes.isEdgeBlocked(theNode, 4));
}

TEST(StandaloneNodes, clearingForgetsProgressAlone) {
  StandaloneNodes nodes = oneNode();
  nodes.blockEdges(theNode, 2, true);
  nodes.clearProgress(theNode);
  EXPECT_FALSE(nodes.progress(theNode).visited);
  EXPECT_FALSE(nodes.distances({&theNode, 1}).front());
  EXPECT_EQ(nodes.progress(theNode).score, 0);
  EXPECT_EQ(nodes.progress(theNode).usedEdgeTypeId, -1);
  EXPECT_TRUE(nodes.isEdgeBlocked(theNode, 2));
}

}  // namespace
}  // namespace tern::detail
