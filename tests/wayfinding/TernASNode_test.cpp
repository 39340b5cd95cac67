#include "TernCoreKit/wayfinding/TernASNode.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "TernCoreKit/model/records/TernWaypoint.hpp"
#include "TernCoreKit/wayfinding/TernASGrid.hpp"
#include "TernCoreKit/wayfinding/TernASSearch.hpp"
#include "tests/support/VenueLists.hpp"

namespace tern::test {
namespace {

using testing::ElementsAre;

TernASNode handMade() {
  TernNeighbor neighbor;
  neighbor.neighborId = 8;
  return TernASNode::initASNode(7, 1.25, 2.5, 100, 3,
                                {TernASEdge::initASEdge(17, {7, 8}, 1, 1, 0, 0, 0)}, {neighbor});
}

TernRoute routeThrough(const std::shared_ptr<TernASGrid>& grid, std::int64_t start,
                       std::int64_t end) {
  TernASSearch search;
  search.grid = grid;
  return search.search(start, end, 0).value();
}

void expectUntouched(const TernASNode& node) {
  EXPECT_FALSE(node.visited());
  EXPECT_FALSE(node.closed());
  EXPECT_EQ(node.f(), 0);
  EXPECT_EQ(node.g(), 0);
  EXPECT_EQ(node.h(), 0);
  EXPECT_EQ(node.distance(), std::nullopt);
  EXPECT_EQ(node.parent(), std::nullopt);
  EXPECT_EQ(node.usedEdgeTypeId(), -1);
}

TEST(TernASNode, madeByHandHoldsWhatItIsMadeOfAndIsUntouched) {
  const TernASNode node = handMade();
  EXPECT_EQ(node.nodeId(), 7);
  EXPECT_EQ(node.x(), 1.25);
  EXPECT_EQ(node.y(), 2.5);
  EXPECT_EQ(node.z(), 100);
  EXPECT_EQ(node.mapId(), 3);
  EXPECT_EQ(node.edges().at(0).edgeId, Value(17));
  EXPECT_EQ(node.neighbors().at(0).neighborId, Value(8));
  expectUntouched(node);
}

TEST(TernASNode, refersToOneNodeHoweverOftenItIsCopied) {
  const TernASNode node = handMade();
  const TernASNode same = node;
  EXPECT_EQ(node, same);
  EXPECT_FALSE(node == handMade());
}

TEST(TernASNode, readsWhatTheLastSearchWroteWheneverItWasFetched) {
  const auto grid = corridor(3).makeGrid();
  const TernASNode fetchedBefore = grid->getNodeById(3).value();
  routeThrough(grid, 1, 3);
  EXPECT_EQ(fetchedBefore.f(), 2);
  EXPECT_EQ(fetchedBefore.g(), 2);
  EXPECT_EQ(fetchedBefore.h(), 0);
  EXPECT_EQ(fetchedBefore.distance(), 2.0F);
  EXPECT_TRUE(fetchedBefore.visited());
  EXPECT_FALSE(fetchedBefore.closed()) << "a goal is found before it is expanded";
  EXPECT_EQ(fetchedBefore.usedEdgeTypeId(), 1);
  EXPECT_EQ(fetchedBefore.parent(), grid->getNodeById(2));
  EXPECT_TRUE(grid->getNodeById(2)->closed());
}

TEST(TernASNode, startOfASearchHasNeitherDistanceNorParent) {
  const auto grid = corridor(3).makeGrid();
  routeThrough(grid, 1, 3);
  const TernASNode start = grid->getNodeById(1).value();
  EXPECT_TRUE(start.closed());
  EXPECT_FALSE(start.visited());
  EXPECT_EQ(start.distance(), std::nullopt);
  EXPECT_EQ(start.parent(), std::nullopt);
  EXPECT_EQ(start.usedEdgeTypeId(), -1);
}

TEST(TernASNode, resetForgetsTheSearchOfThatNodeAlone) {
  const auto grid = corridor(3).makeGrid();
  routeThrough(grid, 1, 3);
  TernASNode middle = grid->getNodeById(2).value();
  middle.reset();
  expectUntouched(middle);
  EXPECT_EQ(grid->getNodeById(3)->f(), 2);
}

TEST(TernASNode, copyCarriesItsWholeChainOfPredecessors) {
  const auto grid = corridor(4).makeGrid();
  const TernASNode end = routeThrough(grid, 1, 4).back().points.back();
  const TernASNode copy = end.copyWithZone();
  EXPECT_FALSE(copy == end);
  EXPECT_EQ(copy.nodeId(), 4);
  EXPECT_EQ(copy.edges().size(), 1U);
  EXPECT_EQ(copy.neighbors().size(), 1U);
  std::vector<std::int64_t> chain;
  for (auto at = std::optional(copy); at; at = at->parent()) chain.push_back(at->nodeId());
  EXPECT_THAT(chain, ElementsAre(4, 3, 2, 1));
}

TEST(TernASNode, copyDoesNotChangeWhenTheGridIsSearchedAgain) {
  const auto grid = corridor(4).makeGrid();
  const TernASNode copy = routeThrough(grid, 1, 4).back().points.back().copyWithZone();
  routeThrough(grid, 3, 1);
  EXPECT_EQ(copy.f(), 3);
  EXPECT_EQ(copy.distance(), 3.0F);
  EXPECT_EQ(copy.parent()->f(), 2);
  EXPECT_EQ(grid->getNodeById(4)->f(), 1) << "the search went both ways";
}

TEST(TernASNode, blockingTheCopyLeavesTheGridOpen) {
  const auto grid = corridor(2).makeGrid();
  const TernASNode original = grid->getNodeById(1).value();
  const TernASNode copy = original.copyWithZone();
  grid->shouldBlockExitFromNode(copy, true);
  EXPECT_TRUE(copy.edges().at(0).blocked);
  EXPECT_FALSE(original.edges().at(0).blocked);
  EXPECT_EQ(routeThrough(grid, 1, 2).size(), 1U);
}

TEST(TernASNode, copiesWithoutParentsKeepScoresButNoChain) {
  const auto grid = corridor(4).makeGrid();
  const auto copies = TernASNode::copiesWithoutParents(routeThrough(grid, 1, 4).at(0).points);
  routeThrough(grid, 4, 1);
  ASSERT_EQ(copies.size(), 4U);
  EXPECT_EQ(copies[3].nodeId(), 4);
  EXPECT_EQ(copies[3].f(), 3);
  EXPECT_EQ(copies[3].usedEdgeTypeId(), 1);
  EXPECT_EQ(copies[3].parent(), std::nullopt);
}

TEST(TernASNode, outlivesItsGrid) {
  auto grid = corridor(3).makeGrid();
  const TernRoute route = routeThrough(grid, 1, 3);
  grid.reset();
  const TernASNode end = route.back().points.back();
  EXPECT_EQ(end.nodeId(), 3);
  EXPECT_EQ(end.f(), 2);
  EXPECT_EQ(end.parent()->nodeId(), 2);
  EXPECT_EQ(end.edges().at(0).nodes, std::vector<std::int64_t>({2, 3}));
}

// A copy that kept the one it was made of would end by as many calls as there are copies.
TEST(TernASNode, aCopyOfACopyKeepsNoneOfThoseBefore) {
  const auto grid = corridor(3).makeGrid();
  std::optional<TernASNode> copy = routeThrough(grid, 1, 3).back().points.back().copyWithZone();
  grid->shouldBlockExitFromNode(*copy, true);
  for (int i = 0; i < 300'000; ++i) copy = copy->copyWithZone();
  routeThrough(grid, 3, 1);
  EXPECT_EQ(copy->f(), 2);
  EXPECT_EQ(copy->parent()->nodeId(), 2);
  EXPECT_TRUE(copy->edges().at(0).blocked);
  EXPECT_FALSE(grid->getNodeById(3)->edges().at(0).blocked);
  copy.reset();
}

// A chain copied by recursion would run out of stack.
TEST(TernASNode, copiesAChainOfTwoHundredThousandPredecessors) {
  constexpr std::int64_t count = 200'000;
  const auto grid = corridor(count).makeGrid();
  const TernASNode copy = routeThrough(grid, 1, count).back().points.back().copyWithZone();
  std::int64_t length = 0;
  for (auto at = std::optional(copy); at; at = at->parent()) ++length;
  EXPECT_EQ(length, count);
}

}  // namespace
}  // namespace tern::test
