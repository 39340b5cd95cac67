#include "TernCoreKit/wayfinding/detail/Graph.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "TernCoreKit/model/records/TernPath.hpp"
#include "TernCoreKit/model/records/TernPathType.hpp"
#include "TernCoreKit/model/records/TernWaypoint.hpp"
#include "tests/support/VenueLists.hpp"

namespace tern::detail {
namespace {

using test::builtNodes;
using test::corridor;
using test::pathOver;
using test::rowOfWaypoints;
using test::VenueLists;
using testing::ElementsAre;

TEST(Graph, venueWithoutWaypointsHasAnEmptyGraph) {
  VenueLists lists;
  lists.paths = {pathOver({1, 2})};
  const auto nodes = builtNodes(lists);
  const GridGraph& grid = nodes->graph;
  EXPECT_EQ(grid.graph.nodeCount(), 0U);
  EXPECT_EQ(grid.graph.links.size(), 0U);
  EXPECT_EQ(grid.find(1), noPosition);
}

TEST(Graph, linksOfANodeStandOneBehindTheOtherInTheOrderOfThePaths) {
  VenueLists lists = rowOfWaypoints(4);
  lists.paths = {pathOver({3, 4}), pathOver({4, 1, 2}), pathOver({1, 3})};
  const auto nodes = builtNodes(lists);
  const GridGraph& grid = nodes->graph;
  EXPECT_THAT(grid.neighborIds(grid.find(1)), ElementsAre(4, 2, 3));
}

TEST(Graph, knowsWhetherAllCostsAreFiniteAndNoneNegative) {
  VenueLists lists = corridor(3);
  EXPECT_TRUE(builtNodes(lists)->graph.graph.costsArePlain);
  lists.pathTypes[0]->weight = 1e308;
  EXPECT_FALSE(builtNodes(lists)->graph.graph.costsArePlain);
  lists.pathTypes[0]->weight = -1;
  EXPECT_FALSE(builtNodes(lists)->graph.graph.costsArePlain);
}

TEST(Graph, pathThatNamesAWaypointTwiceLinksToItTwice) {
  VenueLists lists = rowOfWaypoints(2);
  lists.paths = {pathOver({1, 2, 2, 1})};
  const auto nodes = builtNodes(lists);
  const GridGraph& grid = nodes->graph;
  EXPECT_THAT(grid.neighborIds(grid.find(1)), ElementsAre(2, 2));
  EXPECT_THAT(grid.neighborIds(grid.find(2)), ElementsAre(1, 1));
  EXPECT_EQ(nodes->edges(grid.find(1)).size(), 1U);
}

TEST(Graph, onlyTheExitItselfHasTheEdgeToTheOtherVenue) {
  VenueLists lists = rowOfWaypoints(2);
  lists.isForMultiVenue = true;
  lists.waypoints[0]->externalId = "exit:2";
  const auto nodes = builtNodes(lists);
  const GridGraph& grid = nodes->graph;
  EXPECT_THAT(grid.neighborIds(grid.find(1)), ElementsAre(2));
  EXPECT_THAT(grid.neighborIds(grid.find(2)), ElementsAre());
}

TEST(Graph, linkToAWaypointThatNoGraphHasLeadsNowhereAndNeverOpens) {
  VenueLists lists = rowOfWaypoints(1);
  lists.paths = {pathOver({1, 99})};
  const auto nodes = builtNodes(lists);
  const Link& link = nodes->graph.graph.links[LinkIndex{0}];
  EXPECT_EQ(link.target, noPosition);
  EXPECT_EQ(link.rank, none<TypeRank>);
}

TEST(Graph, onewayLinksLeaveNoGaps) {
  const auto venue = test::drawVenue({.floors = {{.lines = {"A"}}, {.lines = {"B"}}},
                                      .paths = {"A>B stairs up"},
                                      .pathTypes = {{.name = "stairs"}}});
  const auto nodes = builtNodes(test::listsOf(venue));
  const Graph& graph = nodes->graph.graph;
  EXPECT_EQ(graph.linksOf(Position{0}).size(), 1U);
  EXPECT_TRUE(graph.linksOf(Position{1}).empty());
  EXPECT_EQ(graph.links.size(), 1U);
}

}  // namespace
}  // namespace tern::detail
