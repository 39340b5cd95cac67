#include "tools/generate/WalkGraph.hpp"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <set>
#include <vector>

namespace tern::generate {
namespace {

struct Walked {
  Walked(int floors, int shops, int level, int spacingPx)
      : site(planSite(1, floors, shops)),
        plan(planFloor(site.buildings[0], level, shops / floors, Random(4))),
        graph(buildWalkGraph(plan, site.buildings[0], level, spacingPx)) {}

  const Node& node(int index) const { return graph.nodes[static_cast<std::size_t>(index)]; }

  SitePlan site;
  FloorPlan plan;
  WalkGraph graph;
};

std::size_t reachedFromFirst(const WalkGraph& graph) {
  std::vector<std::vector<int>> next(graph.nodes.size());
  for (const Link& link : graph.links) {
    next[static_cast<std::size_t>(link.from)].push_back(link.to);
    next[static_cast<std::size_t>(link.to)].push_back(link.from);
  }
  std::set<int> seen{0};
  std::vector<int> waiting{0};
  while (!waiting.empty()) {
    const int node = waiting.back();
    waiting.pop_back();
    for (int other : next[static_cast<std::size_t>(node)]) {
      if (seen.insert(other).second) waiting.push_back(other);
    }
  }
  return seen.size();
}

RC_GTEST_PROP(WalkGraph, everyWaypointOfAFloorIsReached, ()) {
  const int floors = *rc::gen::inRange(1, 5);
  const Walked walked(floors, *rc::gen::inRange(floors, 600), 0, *rc::gen::inRange(20, 400));
  RC_ASSERT(reachedFromFirst(walked.graph) == walked.graph.nodes.size());
}

RC_GTEST_PROP(WalkGraph, corridorWaypointsAreNeverFurtherApartThanTheSpacing, ()) {
  const int spacing = *rc::gen::inRange(20, 400);
  const Walked walked(3, *rc::gen::inRange(3, 300), 0, spacing);
  for (const Link& link : walked.graph.links) {
    if (link.name == "Door" || link.name == "Court") continue;
    const Point a = walked.node(link.from).at;
    const Point b = walked.node(link.to).at;
    RC_ASSERT(std::abs(a.x - b.x) + std::abs(a.y - b.y) <= spacing);
  }
}

RC_GTEST_PROP(WalkGraph, noTwoWaypointsShareAPlace, ()) {
  const Walked walked(3, *rc::gen::inRange(3, 300), 0, *rc::gen::inRange(20, 400));
  std::set<Point> places;
  for (const Node& node : walked.graph.nodes) places.insert(node.at);
  RC_ASSERT(places.size() == walked.graph.nodes.size());
}

TEST(WalkGraph, waypointsAreNumberedByWhatTheyAre) {
  const Walked walked(4, 80, 0, 80);
  const std::vector<Node>& nodes = walked.graph.nodes;
  EXPECT_TRUE(std::is_sorted(nodes.begin(), nodes.end(),
                             [](const Node& a, const Node& b) { return a.kind < b.kind; }));
  EXPECT_EQ(nodes.front().kind, NodeKind::entrance);
}

TEST(WalkGraph, everyDoorHasAWaypointInItsRoom) {
  const Walked walked(4, 80, 0, 80);
  std::size_t doors = 0;
  for (const Room& room : walked.plan.rooms) doors += room.doors.size();
  std::size_t inRooms = 0;
  for (const Node& node : walked.graph.nodes) {
    if (node.room < 0) continue;
    ++inRooms;
    const Box& box = walked.plan.rooms[static_cast<std::size_t>(node.room)].box;
    EXPECT_TRUE(node.at.x > box.left && node.at.x < box.right) << node.at.x;
    EXPECT_TRUE(node.at.y > box.top && node.at.y < box.bottom) << node.at.y;
  }
  EXPECT_EQ(inRooms, doors);
}

TEST(WalkGraph, entrancesAreOnTheGroundOnly) {
  const auto entrances = [](const Walked& walked) {
    return std::count_if(walked.graph.nodes.begin(), walked.graph.nodes.end(),
                         [](const Node& node) { return node.kind == NodeKind::entrance; });
  };
  EXPECT_EQ(entrances(Walked(4, 80, 0, 80)), 3);
  EXPECT_EQ(entrances(Walked(4, 80, 1, 80)), 0);
}

TEST(WalkGraph, escalatorsEndWhereTheBuildingEnds) {
  const EscalatorEnds lowest = Walked(4, 80, -1, 80).graph.escalators.at(0);
  EXPECT_GE(lowest.upFoot, 0);
  EXPECT_GE(lowest.downFoot, 0);
  EXPECT_EQ(lowest.upHead, -1);
  EXPECT_EQ(lowest.downHead, -1);
  const EscalatorEnds highest = Walked(4, 80, 2, 80).graph.escalators.at(0);
  EXPECT_EQ(highest.upFoot, -1);
  EXPECT_EQ(highest.downFoot, -1);
  EXPECT_GE(highest.upHead, 0);
  EXPECT_GE(highest.downHead, 0);
}

TEST(WalkGraph, goingOnUpwardBeginsAtTheSameEndOfTheCourt) {
  const Walked walked(4, 80, 0, 80);
  const EscalatorEnds& ends = walked.graph.escalators.at(0);
  EXPECT_EQ(walked.node(ends.upHead).at.x, walked.node(ends.upFoot).at.x);
}

TEST(WalkGraph, oneFloorHasNoConnectors) {
  const Walked walked(1, 30, 0, 80);
  EXPECT_TRUE(walked.graph.lifts.empty());
  EXPECT_TRUE(walked.graph.stairs.empty());
  EXPECT_EQ(walked.graph.escalators.at(0).upFoot, -1);
  EXPECT_EQ(walked.graph.escalators.at(0).upHead, -1);
}

}  // namespace
}  // namespace tern::generate
