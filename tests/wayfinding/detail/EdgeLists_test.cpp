#include "TernCoreKit/wayfinding/detail/EdgeLists.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "TernCoreKit/model/records/TernPath.hpp"
#include "tests/support/CapturedLog.hpp"
#include "tests/support/VenueLists.hpp"

namespace tern::detail {
namespace {

using test::builtNodes;
using test::CapturedLog;
using test::pathOver;
using test::rowOfWaypoints;
using test::VenueLists;
using testing::ElementsAre;

std::vector<std::int64_t> numbersTo(std::int64_t last) {
  std::vector<std::int64_t> numbers;
  for (std::int64_t number = 1; number <= last; ++number) numbers.push_back(number);
  return numbers;
}

TEST(EdgeLists, pathOfAThousandWaypointsLinksEachToEachOther) {
  VenueLists lists = rowOfWaypoints(1000);
  lists.paths = {pathOver(numbersTo(1000))};
  const auto nodes = builtNodes(lists);
  const GridGraph& grid = nodes->graph;
  EXPECT_EQ(grid.graph.links.size(), 1000U * 999U);
  EXPECT_TRUE(grid.bounds.unlinked.empty());
}

// Nine million links of one path would be quadratic in what was given.
TEST(EdgeLists, pathOfThreeThousandWaypointsIsLoggedAndNotWalkedOn) {
  CapturedLog log;
  VenueLists lists = rowOfWaypoints(3000);
  lists.paths = {pathOver({1, 2}), pathOver(numbersTo(3000)), pathOver({2, 3})};
  lists.paths[1]->id = 77;
  const auto nodes = builtNodes(lists);
  const GridGraph& grid = nodes->graph;
  EXPECT_EQ(grid.graph.links.size(), 4U);
  EXPECT_THAT(grid.bounds.unlinked, ElementsAre(PathIndex{1}));
  EXPECT_EQ(nodes->edges(grid.find(1)).size(), 2U) << "it still touches its waypoints";
  EXPECT_THAT(log.take(),
              ElementsAre("Tern SDK: path 77 joins too many waypoints to be walked on"));
}

TEST(EdgeLists, pathOfAMillionIdsOfWhichTwoAreKnownIsWalkedOn) {
  VenueLists lists = rowOfWaypoints(2);
  std::vector<std::int64_t> ids = numbersTo(1'000'000);
  lists.paths = {pathOver(ids)};
  const auto nodes = builtNodes(lists);
  const GridGraph& grid = nodes->graph;
  EXPECT_EQ(grid.graph.links.size(), 2U * 999'999U);
  EXPECT_EQ(grid.neighborIds(grid.find(1)), std::vector<std::int64_t>({2}));
}

TEST(EdgeLists, pathThatNamesTwoWaypointsHalfAMillionTimesIsWalkedOn) {
  VenueLists lists = rowOfWaypoints(2);
  std::vector<std::int64_t> ids;
  for (int i = 0; i < 500'000; ++i) ids.insert(ids.end(), {1, 2});
  lists.paths = {pathOver(ids)};
  EXPECT_EQ(builtNodes(lists)->graph.graph.links.size(), 1'000'000U);
}

TEST(EdgeLists, pathOfAMillionIdsThatManyWaypointsShareIsLoggedAndNotWalkedOn) {
  CapturedLog log;
  VenueLists lists = rowOfWaypoints(1000);
  lists.paths = {pathOver(numbersTo(1'000'000))};
  EXPECT_EQ(builtNodes(lists)->graph.graph.links.size(), 0U);
  EXPECT_THAT(log.take(), ElementsAre("Tern SDK: path 1 joins too many waypoints to be walked on"));
}

// Each of them would have all of the paths as edges of its own.
TEST(EdgeLists, waypointsThatRepeatAnIdTooOftenAreLoggedAndLeftWithoutEdges) {
  CapturedLog log;
  constexpr std::size_t count = 70'000;
  VenueLists lists = rowOfWaypoints(2);
  lists.waypoints.resize(count, lists.waypoints[0]);
  lists.paths.resize(count, pathOver({1, 2}));
  const auto nodes = builtNodes(lists);
  const GridGraph& grid = nodes->graph;
  EXPECT_LT(grid.edges.paths.size(), 100 * count);
  EXPECT_LT(grid.graph.links.size(), 100 * count);
  EXPECT_EQ(nodes->edges(grid.find(1)).size(), count);
  EXPECT_TRUE(nodes->edges(Position{count - 1}).empty());
  EXPECT_EQ(log.take().size(), 1U);
}

}  // namespace
}  // namespace tern::detail
