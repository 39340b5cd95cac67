#include "TernCoreKit/wayfinding/detail/GraphBuilder.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>

#include "TernCoreKit/model/records/TernPath.hpp"
#include "TernCoreKit/model/records/TernPathType.hpp"
#include "TernCoreKit/model/records/TernWaypoint.hpp"
#include "tests/support/CapturedLog.hpp"
#include "tests/support/VenueLists.hpp"

namespace tern::detail {
namespace {

using test::builtGraph;
using test::CapturedLog;
using test::corridor;
using test::pathOver;
using test::rowOfWaypoints;
using test::VenueLists;
using testing::ElementsAre;

std::vector<std::int64_t> numbersTo(std::int64_t last) {
  std::vector<std::int64_t> numbers;
  for (std::int64_t number = 1; number <= last; ++number) numbers.push_back(number);
  return numbers;
}

TEST(GraphBuilder, venueWithoutWaypointsHasAnEmptyGraph) {
  VenueLists lists;
  lists.paths = {pathOver({1, 2})};
  const auto grid = builtGraph(lists);
  EXPECT_TRUE(grid->graph.states.empty());
  EXPECT_EQ(grid->linkCount, 0U);
  EXPECT_EQ(grid->find(1), noPosition);
}

TEST(GraphBuilder, everyWaypointHasOnePosition) {
  VenueLists lists = corridor(50);
  std::ranges::reverse(lists.waypoints);
  lists.waypoints.push_back(lists.waypoints[3]);
  const auto grid = builtGraph(lists);
  std::vector<Position> positions = grid->positionOf;
  ASSERT_EQ(positions.size(), 51U);
  for (std::uint32_t place = 0; place < 51; ++place) {
    EXPECT_EQ(grid->placeOf[positions[place]], place);
  }
  std::ranges::sort(positions);
  EXPECT_EQ(std::unique(positions.begin(), positions.end()), positions.end());
}

TEST(GraphBuilder, waypointsListedAlongTheirPathsKeepTheirOrder) {
  VenueLists lists = rowOfWaypoints(4);
  lists.paths = {pathOver({1, 4}), pathOver({4, 2})};
  EXPECT_THAT(builtGraph(lists)->placeOf, ElementsAre(0, 1, 2, 3));
}

TEST(GraphBuilder, waypointsListedFarFromTheirNeighboursAreLaidSideBySide) {
  VenueLists lists = rowOfWaypoints(6000);
  lists.paths = {pathOver({1, 5000}), pathOver({5000, 2500}), pathOver({2500, 6000})};
  const auto grid = builtGraph(lists);
  const std::vector<std::uint32_t> first(grid->placeOf.begin(), grid->placeOf.begin() + 5);
  EXPECT_THAT(first, ElementsAre(0, 4999, 2499, 5999, 1));
}

TEST(GraphBuilder, linksOfANodeStandOneBehindTheOtherInTheOrderOfThePaths) {
  VenueLists lists = rowOfWaypoints(4);
  lists.paths = {pathOver({3, 4}), pathOver({4, 1, 2}), pathOver({1, 3})};
  const auto grid = builtGraph(lists);
  const NodeState& first = grid->graph.states[grid->find(1)];
  std::vector<std::int64_t> targets;
  for (std::uint32_t i = first.firstLink; i < first.endLink; ++i) {
    targets.push_back(grid->facts(grid->graph.links[i].target).nodeId);
  }
  EXPECT_THAT(targets, ElementsAre(4, 2, 3));
}

TEST(GraphBuilder, knowsWhetherAllCostsAreFiniteAndNoneNegative) {
  VenueLists lists = corridor(3);
  EXPECT_TRUE(builtGraph(lists)->graph.costsArePlain);
  lists.pathTypes[0]->weight = 1e308;
  EXPECT_FALSE(builtGraph(lists)->graph.costsArePlain);
  lists.pathTypes[0]->weight = -1;
  EXPECT_FALSE(builtGraph(lists)->graph.costsArePlain);
}

TEST(GraphBuilder, pathThatNamesAWaypointTwiceLinksToItTwice) {
  VenueLists lists = rowOfWaypoints(2);
  lists.paths = {pathOver({1, 2, 2, 1})};
  const auto grid = builtGraph(lists);
  EXPECT_THAT(grid->neighborIds(grid->find(1)), ElementsAre(2, 2));
  EXPECT_THAT(grid->neighborIds(grid->find(2)), ElementsAre(1, 1));
  EXPECT_EQ(grid->edges(grid->find(1)).size(), 1U);
}

TEST(GraphBuilder, onlyTheExitItselfHasTheEdgeToTheOtherVenue) {
  VenueLists lists = rowOfWaypoints(2);
  lists.isForMultiVenue = true;
  lists.waypoints[0]->externalId = "exit:2";
  const auto grid = builtGraph(lists);
  EXPECT_THAT(grid->neighborIds(grid->find(1)), ElementsAre(2));
  EXPECT_THAT(grid->neighborIds(grid->find(2)), ElementsAre());
}

TEST(GraphBuilder, pathOfAThousandWaypointsLinksEachToEachOther) {
  VenueLists lists = rowOfWaypoints(1000);
  lists.paths = {pathOver(numbersTo(1000))};
  const auto grid = builtGraph(lists);
  EXPECT_EQ(grid->linkCount, 1000U * 999U);
  EXPECT_TRUE(grid->unlinkedPaths.empty());
}

// Nine million links of one path would be quadratic in what was given.
TEST(GraphBuilder, pathOfThreeThousandWaypointsIsLoggedAndNotWalkedOn) {
  CapturedLog log;
  VenueLists lists = rowOfWaypoints(3000);
  lists.paths = {pathOver({1, 2}), pathOver(numbersTo(3000)), pathOver({2, 3})};
  lists.paths[1]->id = 77;
  const auto grid = builtGraph(lists);
  EXPECT_EQ(grid->linkCount, 4U);
  EXPECT_THAT(grid->unlinkedPaths, ElementsAre(1));
  EXPECT_EQ(grid->edges(grid->find(1)).size(), 2U) << "it still touches its waypoints";
  EXPECT_THAT(log.take(),
              ElementsAre("Tern SDK: path 77 joins too many waypoints to be walked on"));
}

TEST(GraphBuilder, pathOfAMillionIdsOfWhichTwoAreKnownIsWalkedOn) {
  VenueLists lists = rowOfWaypoints(2);
  std::vector<std::int64_t> ids = numbersTo(1'000'000);
  lists.paths = {pathOver(ids)};
  const auto grid = builtGraph(lists);
  EXPECT_EQ(grid->linkCount, 2U * 999'999U);
  EXPECT_EQ(grid->neighborIds(grid->find(1)), std::vector<std::int64_t>({2}));
}

TEST(GraphBuilder, pathThatNamesTwoWaypointsHalfAMillionTimesIsWalkedOn) {
  VenueLists lists = rowOfWaypoints(2);
  std::vector<std::int64_t> ids;
  for (int i = 0; i < 500'000; ++i) ids.insert(ids.end(), {1, 2});
  lists.paths = {pathOver(ids)};
  EXPECT_EQ(builtGraph(lists)->linkCount, 1'000'000U);
}

TEST(GraphBuilder, pathOfAMillionIdsThatManyWaypointsShareIsLoggedAndNotWalkedOn) {
  CapturedLog log;
  VenueLists lists = rowOfWaypoints(1000);
  lists.paths = {pathOver(numbersTo(1'000'000))};
  EXPECT_EQ(builtGraph(lists)->linkCount, 0U);
  EXPECT_THAT(log.take(), ElementsAre("Tern SDK: path 1 joins too many waypoints to be walked on"));
}

// Each of them would have all of the paths as edges of its own.
TEST(GraphBuilder, waypointsThatRepeatAnIdTooOftenAreLoggedAndLeftWithoutEdges) {
  CapturedLog log;
  constexpr std::size_t count = 70'000;
  VenueLists lists = rowOfWaypoints(2);
  lists.waypoints.resize(count, lists.waypoints[0]);
  lists.paths.resize(count, pathOver({1, 2}));
  const auto grid = builtGraph(lists);
  EXPECT_LT(grid->edgeRefs.size(), 100 * count);
  EXPECT_LT(grid->linkCount, 100 * count);
  EXPECT_EQ(grid->edges(grid->find(1)).size(), count);
  EXPECT_TRUE(grid->edges(grid->positionOf.back()).empty());
  EXPECT_EQ(log.take().size(), 1U);
}

}  // namespace
}  // namespace tern::detail
