#include "TernCoreKit/wayfinding/detail/GridGraph.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <limits>

#include "TernCoreKit/model/records/TernPath.hpp"
#include "TernCoreKit/model/records/TernPathType.hpp"
#include "TernCoreKit/model/records/TernWaypoint.hpp"
#include "TernCoreKit/wayfinding/detail/GridNodes.hpp"
#include "tests/support/VenueLists.hpp"

namespace tern::detail {
namespace {

using test::builtNodes;
using test::pathOver;
using test::rowOfWaypoints;
using test::VenueLists;
using testing::ElementsAre;

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
  const auto nodes = builtNodes(lists);
  EXPECT_EQ(nodes->graph.find(2), Position{1});
  EXPECT_EQ(nodes->graph.find(4), noPosition);
}

TEST(GridGraph, findsAllNodesOfIdsInTheOrderOfTheWaypoints) {
  VenueLists lists = rowOfWaypoints(3);
  lists.waypoints.push_back(lists.waypoints[1]);
  const auto nodes = builtNodes(lists);
  const std::vector<std::int64_t> ids = {3, 2, 7, 3};
  EXPECT_THAT(nodes->graph.findAll(ids), ElementsAre(Position{1}, Position{2}, Position{3}));
}

TEST(GridGraph, ranksBelowTheLimitAreThoseTheLevelAdmits) {
  VenueLists lists = rowOfWaypoints(2);
  lists.pathTypes = {pathType(1, 0), pathType(2, 100), pathType(3, -5), pathType(4, 100)};
  for (const std::int64_t type : {1, 2, 3, 4}) lists.paths.push_back(pathOver({1, 2}, type));
  const auto nodes = builtNodes(lists);
  EXPECT_EQ(nodes->graph.rankLimit(-6), TypeRank{0});
  EXPECT_EQ(nodes->graph.rankLimit(-5), TypeRank{1});
  EXPECT_EQ(nodes->graph.rankLimit(0), TypeRank{2});
  EXPECT_EQ(nodes->graph.rankLimit(99), TypeRank{2});
  EXPECT_EQ(nodes->graph.rankLimit(100), TypeRank{4});
  EXPECT_EQ(nodes->graph.rankLimit(std::numeric_limits<std::int64_t>::max()), TypeRank{4});
  EXPECT_EQ(nodes->graph.rankLimit(std::numeric_limits<std::int64_t>::min()), TypeRank{0});
}

TEST(GridGraph, neighbourIdsAreThoseOfNodesThatThereAre) {
  VenueLists lists = rowOfWaypoints(2);
  lists.paths = {pathOver({1, 99, 2})};
  EXPECT_THAT(builtNodes(lists)->graph.neighborIds(Position{0}), ElementsAre(2));
}

// Paths of two waypoints are kept without a note of where their ends begin.
TEST(GridGraph, edgesKnowTheirEndsWhateverPathsStandInFrontOfThem) {
  VenueLists lists = rowOfWaypoints(4);
  lists.paths = {pathOver({1, 2}), pathOver({2, 3}), pathOver({4, 1, 3}),
                 pathOver({4}),    pathOver({}),     pathOver({3, 4})};
  const auto nodes = builtNodes(lists);
  std::vector<std::vector<std::int64_t>> ends;
  for (PathIndex path{0}; numberOf(path) < lists.paths.size(); ++path) {
    ends.push_back(nodes->graph.edgeOver(path).nodes);
  }
  EXPECT_THAT(ends, ElementsAre(ElementsAre(1, 2), ElementsAre(2, 3), ElementsAre(4, 1, 3),
                                ElementsAre(4), ElementsAre(), ElementsAre(3, 4)));
}

TEST(GridGraph, distancesAddUpAlongTheWayThatTheSearchCame) {
  const auto nodes = builtNodes(test::corridor(4));
  {
    SearchTurn turn(*nodes);
    const std::int64_t goals[] = {4};
    ASSERT_EQ(turn.search({1, goals, 0}, turn.links()), Position{3});
    const auto route = turn.routeTo(Position{3});
    EXPECT_THAT(turn.distances(route), ElementsAre(std::nullopt, 1, 2, 3));
    for (std::size_t i = 1; i < 4; ++i) EXPECT_EQ(turn.progress(route[i]).parent, route[i - 1]);
  }
  const Position nodesAsked[] = {Position{3}, Position{0}, Position{1}, Position{3}};
  EXPECT_THAT(nodes->distances(nodesAsked), ElementsAre(3, std::nullopt, 1, 3));
  nodes->clearProgress(Position{1});
  EXPECT_THAT(nodes->distances(nodesAsked), ElementsAre(3, std::nullopt, std::nullopt, 3));
  EXPECT_THAT(nodes->chainTo(Position{3}), ElementsAre(Position{3}, Position{2}, Position{1}));
}

}  // namespace
}  // namespace tern::detail
