#include "TernCoreKit/wayfinding/detail/StandaloneNodes.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tern::detail {
namespace {

using testing::ElementsAre;

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
  node.progress.score = 5;
  node.edges = {edgeOver({1, 2}), edgeOver({3, 1}), edgeOver({1, 2, 3})};
  node.neighbors = {linkTo(2), linkTo(3), linkTo({})};
  return StandaloneNodes({node});
}

std::vector<bool> marks(const StandaloneNodes& nodes) {
  std::vector<bool> marks;
  for (const TernASEdge& edge : nodes.edges(0)) marks.push_back(edge.blocked);
  return marks;
}

TEST(StandaloneNodes, holdWhatTheyAreMadeOf) {
  const StandaloneNodes nodes = oneNode();
  EXPECT_EQ(nodes.facts(0).nodeId, 1);
  EXPECT_EQ(nodes.facts(0).mapId, 9);
  EXPECT_EQ(nodes.progress(0).score, 5);
  EXPECT_EQ(nodes.edges(0).size(), 3U);
  EXPECT_EQ(nodes.neighbors(0).size(), 3U);
}

TEST(StandaloneNodes, absentNeighbourIdReadsAsZero) {
  EXPECT_THAT(oneNode().neighborIds(0), ElementsAre(2, 3, 0));
}

TEST(StandaloneNodes, blockEveryEdgeThatJoinsTheOther) {
  StandaloneNodes nodes = oneNode();
  nodes.blockEdges(0, 2, true);
  EXPECT_THAT(marks(nodes), ElementsAre(true, false, true));
  nodes.blockEdges(0, 2, false);
  EXPECT_THAT(marks(nodes), ElementsAre(false, false, false));
}

TEST(StandaloneNodes, blockAllEdgesWhenNoneIsNamed) {
  StandaloneNodes nodes = oneNode();
  nodes.blockEdges(0, std::nullopt, true);
  EXPECT_THAT(marks(nodes), ElementsAre(true, true, true));
}

TEST(StandaloneNodes, firstEdgeThatJoinsTheOtherIsTheOneAsked) {
  StandaloneNodes nodes = oneNode();
  nodes.blockEdges(0, 2, true);
  EXPECT_TRUE(nodes.isEdgeBlocked(0, 2));
  EXPECT_FALSE(nodes.isEdgeBlocked(0, 3)) << "the third edge is blocked, the second is not";
  EXPECT_FALSE(nodes.isEdgeBlocked(0, 4));
}

TEST(StandaloneNodes, clearingForgetsProgressAlone) {
  StandaloneNodes nodes = oneNode();
  nodes.blockEdges(0, 2, true);
  nodes.clearProgress(0);
  EXPECT_FALSE(nodes.progress(0).visited);
  EXPECT_EQ(nodes.progress(0).score, 0);
  EXPECT_EQ(nodes.progress(0).usedEdgeTypeId, -1);
  EXPECT_TRUE(nodes.isEdgeBlocked(0, 2));
}

}  // namespace
}  // namespace tern::detail
