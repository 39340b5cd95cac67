#include "TernCoreKit/wayfinding/detail/NodeOrder.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "TernCoreKit/model/records/TernPath.hpp"
#include "tests/support/VenueLists.hpp"

namespace tern::detail {
namespace {

using test::builtNodes;
using test::pathOver;
using test::rowOfWaypoints;
using test::VenueLists;
using testing::ElementsAre;

TEST(NodeOrder, everyWaypointHasOnePosition) {
  VenueLists lists = rowOfWaypoints(6000);
  lists.paths = {pathOver({1, 5000}), pathOver({5000, 2500})};
  lists.waypoints.push_back(lists.waypoints[3]);
  const auto nodes = builtNodes(lists);
  const NodeOrder& order = nodes->graph.order;
  ASSERT_EQ(order.positions.size(), 6001U);
  std::vector<bool> isTaken(6001);
  for (WaypointIndex waypoint{0}; waypoint < order.positions.endIndex(); ++waypoint) {
    const Position position = order.positionOf(waypoint);
    EXPECT_EQ(order.waypointAt(position), waypoint);
    EXPECT_FALSE(isTaken[numberOf(position)]);
    isTaken[numberOf(position)] = true;
  }
}

TEST(NodeOrder, waypointsListedAlongTheirPathsKeepTheirOrder) {
  VenueLists lists = rowOfWaypoints(4);
  lists.paths = {pathOver({1, 4}), pathOver({4, 2})};
  const auto nodes = builtNodes(lists);
  EXPECT_TRUE(nodes->graph.order.positions.empty()) << "nothing is stored for it";
  EXPECT_EQ(nodes->graph.order.positionOf(WaypointIndex{3}), Position{3});
  EXPECT_EQ(nodes->graph.order.waypointAt(Position{2}), WaypointIndex{2});
}

TEST(NodeOrder, waypointsListedFarFromTheirNeighboursAreLaidSideBySide) {
  VenueLists lists = rowOfWaypoints(6000);
  lists.paths = {pathOver({1, 5000}), pathOver({5000, 2500}), pathOver({2500, 6000})};
  const auto nodes = builtNodes(lists);
  std::vector<std::uint32_t> first;
  for (Position position{0}; numberOf(position) < 5; ++position) {
    first.push_back(numberOf(nodes->graph.order.waypointAt(position)));
  }
  EXPECT_THAT(first, ElementsAre(0, 4999, 2499, 5999, 1));
}

}  // namespace
}  // namespace tern::detail
