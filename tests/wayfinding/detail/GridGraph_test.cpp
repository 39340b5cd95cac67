#include "TernCoreKit/wayfinding/detail/GridGraph.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

#include "TernCoreKit/model/records/TernPath.hpp"
#include "TernCoreKit/model/records/TernPathType.hpp"
#include "TernCoreKit/model/records/TernWaypoint.hpp"
#include "TernCoreKit/wayfinding/detail/GraphBuilder.hpp"
#include "tests/support/VenueLists.hpp"

namespace tern::detail {
namespace {

using test::builtGraph;
using test::pathOver;
using test::rowOfWaypoints;
using test::VenueLists;
using testing::ElementsAre;

// The ids of a node's neighbours whose links no block keeps shut.
std::vector<std::int64_t> openNeighbours(const GridGraph& grid, std::int64_t id) {
  const NodeState& node = grid.graph.states[grid.find(id)];
  std::vector<std::int64_t> open;
  for (std::uint32_t i = node.firstLink; i < node.endLink; ++i) {
    const Link& link = grid.graph.links[i];
    if ((link.gate & Link::blockedBit) == 0) open.push_back(grid.facts(link.target).nodeId);
  }
  return open;
}

std::shared_ptr<TernPathType> pathType(std::int64_t id, std::int64_t accessibility) {
  auto type = std::make_shared<TernPathType>();
  type->id = id;
  type->accessibility = accessibility;
  type->weight = 1;
  return type;
}

TEST(GridGraph, findsTheFirstNodeOfAnId) {
  VenueLists lists = rowOfWaypoints(3);
  lists.waypoints.push_back(lists.waypoints[1]);
  const auto grid = builtGraph(lists);
  EXPECT_EQ(grid->find(2), grid->positionOf[1]);
  EXPECT_EQ(grid->find(4), noPosition);
}

TEST(GridGraph, findsAllNodesOfIdsInTheOrderOfTheWaypoints) {
  VenueLists lists = rowOfWaypoints(3);
  lists.waypoints.push_back(lists.waypoints[1]);
  const auto grid = builtGraph(lists);
  const std::vector<std::int64_t> ids = {3, 2, 7, 3};
  EXPECT_THAT(grid->findAll(ids),
              ElementsAre(grid->positionOf[1], grid->positionOf[2], grid->positionOf[3]));
}

TEST(GridGraph, gatesBelowTheLimitAreThoseTheLevelAdmits) {
  VenueLists lists = rowOfWaypoints(2);
  lists.pathTypes = {pathType(1, 0), pathType(2, 100), pathType(3, -5), pathType(4, 100)};
  for (const std::int64_t type : {1, 2, 3, 4}) lists.paths.push_back(pathOver({1, 2}, type));
  const auto grid = builtGraph(lists);
  EXPECT_EQ(grid->gateLimit(-6), 0U);
  EXPECT_EQ(grid->gateLimit(-5), 1U);
  EXPECT_EQ(grid->gateLimit(0), 2U);
  EXPECT_EQ(grid->gateLimit(99), 2U);
  EXPECT_EQ(grid->gateLimit(100), 4U);
  EXPECT_EQ(grid->gateLimit(std::numeric_limits<std::int64_t>::max()), 4U);
  EXPECT_EQ(grid->gateLimit(std::numeric_limits<std::int64_t>::min()), 0U);
}

TEST(GridGraph, blockShutsEveryLinkToTheOther) {
  VenueLists lists = rowOfWaypoints(3);
  lists.paths = {pathOver({1, 2}), pathOver({1, 3}), pathOver({2, 1})};
  const auto grid = builtGraph(lists);
  grid->blockEdges(grid->find(1), 2, true);
  EXPECT_THAT(openNeighbours(*grid, 1), ElementsAre(3));
  EXPECT_THAT(openNeighbours(*grid, 2), ElementsAre(1, 1));
  grid->blockEdges(grid->find(1), 2, false);
  EXPECT_THAT(openNeighbours(*grid, 1), ElementsAre(2, 3, 2));
}

// The search asks the first edge that joins the neighbour, whichever edge a link belongs to.
TEST(GridGraph, markOfTheFirstEdgeDecidesForAllLinks) {
  VenueLists lists = rowOfWaypoints(3);
  lists.paths = {pathOver({1, 2, 3}), pathOver({1, 2})};
  const auto grid = builtGraph(lists);
  grid->blockEdges(grid->find(1), 3, true);
  EXPECT_TRUE(grid->isEdgeBlocked(grid->find(1), 2));
  EXPECT_FALSE(grid->edges(grid->find(1)).at(1).blocked);
  EXPECT_THAT(openNeighbours(*grid, 1), ElementsAre());
}

TEST(GridGraph, marksOfANodeWithManyLinksFollowTheSameRule) {
  constexpr std::int64_t count = 40;
  VenueLists lists = rowOfWaypoints(count);
  lists.paths = {pathOver({1, 2, 3}), pathOver({2, 1})};
  for (std::int64_t id = 4; id <= count; ++id) lists.paths.push_back(pathOver({1, id}));
  const auto grid = builtGraph(lists);
  grid->blockEdges(grid->find(1), 3, true);
  grid->blockEdges(grid->find(1), 7, true);
  const auto open = openNeighbours(*grid, 1);
  EXPECT_EQ(open.size(), static_cast<std::size_t>(count - 4));
  EXPECT_THAT(open, testing::Each(testing::AllOf(testing::Gt(3), testing::Ne(7))));
  grid->blockEdges(grid->find(1), std::nullopt, false);
  EXPECT_EQ(openNeighbours(*grid, 1).size(), static_cast<std::size_t>(count));
}

// The path names it 5, its record says 0: no edge joins 0, so none can be blocked towards it.
TEST(GridGraph, linkToAnIdThatNoEdgeJoinsStaysOpen) {
  for (const std::int64_t count : {8, 40}) {
    VenueLists lists = rowOfWaypoints(static_cast<std::size_t>(count));
    lists.waypoints[4]->id = 0;
    for (std::int64_t id = 2; id <= count; ++id) lists.paths.push_back(pathOver({1, id}));
    const auto grid = builtGraph(lists);
    grid->blockEdges(grid->find(1), std::nullopt, true);
    EXPECT_THAT(openNeighbours(*grid, 1), ElementsAre(0));
  }
}

TEST(GridGraph, waypointsOfOneIdHaveMarksOfTheirOwn) {
  VenueLists lists = rowOfWaypoints(2);
  lists.waypoints.push_back(lists.waypoints[0]);
  lists.paths = {pathOver({1, 2})};
  const auto grid = builtGraph(lists);
  grid->blockEdges(grid->positionOf[2], std::nullopt, true);
  EXPECT_FALSE(grid->isEdgeBlocked(grid->positionOf[0], 2));
  EXPECT_TRUE(grid->isEdgeBlocked(grid->positionOf[2], 2));
}

TEST(GridGraph, untouchedNodeHasNoProgress) {
  const auto grid = builtGraph(test::corridor(2));
  const NodeProgress progress = grid->progress(grid->find(1));
  EXPECT_FALSE(progress.visited);
  EXPECT_FALSE(progress.closed);
  EXPECT_EQ(progress.score, 0);
  EXPECT_EQ(progress.distance, std::nullopt);
  EXPECT_EQ(progress.parent, noPosition);
  EXPECT_EQ(progress.usedEdgeTypeId, -1);
}

TEST(GridGraph, neighbourIdsAreThoseOfNodesThatThereAre) {
  VenueLists lists = rowOfWaypoints(2);
  lists.paths = {pathOver({1, 99, 2})};
  EXPECT_THAT(builtGraph(lists)->neighborIds(0), ElementsAre(2));
}

}  // namespace
}  // namespace tern::detail
