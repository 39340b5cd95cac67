#include "tools/import/write/LostNodes.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/tools/import/DrawnDraft.hpp"

namespace tern::imports {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// Nodes "a", "b", ... on floors of those levels, with the ground hall a-b.
struct LostSite {
  explicit LostSite(const std::vector<std::size_t>& floors) {
    for (int level = 0; level < 3; ++level) plan.floors.push_back({0, 0, level});
    for (const std::size_t floor : floors) {
      draft.nodes.push_back(
          {std::string(1, static_cast<char>('a' + draft.nodes.size())), floor, {}, {}, false});
      PlannedWaypoint waypoint;
      waypoint.floor = floor;
      plan.waypoints.push_back(waypoint);
    }
    link(0, 1);
  }

  LostSite& link(std::size_t from, std::size_t to, int direction = 0) {
    PlannedPath path;
    path.from = from;
    path.to = to;
    path.direction = direction;
    plan.paths.push_back(path);
    return *this;
  }

  std::vector<std::string> told() {
    plan.draft = &draft;
    tellLostNodes(plan);
    return test::toldLines(plan);
  }

  Draft draft;
  VenuePlan plan;
};

TEST(LostNodes, landingThatNothingLeadsOnFromIsADeadEnd) {
  EXPECT_THAT(LostSite({0, 0, 1}).link(1, 2).told(), ElementsAre("c deadEnd"));
}

TEST(LostNodes, landingWithAWayOnItsFloorOrASecondFlightLeadsOn) {
  EXPECT_THAT(LostSite({0, 0, 1, 1}).link(1, 2).link(2, 3).told(), IsEmpty());
  EXPECT_THAT(LostSite({0, 0, 1, 2, 2}).link(1, 2).link(2, 3).link(3, 4).told(), IsEmpty());
}

TEST(LostNodes, landingWithAPlaceIsAGoal) {
  LostSite site({0, 0, 1});
  site.plan.waypoints[2].destinations = {7};
  EXPECT_THAT(site.link(1, 2).told(), IsEmpty());
}

TEST(LostNodes, nodesThatNothingJoinsAreAnIsland) {
  EXPECT_THAT(LostSite({0, 0, 0, 1}).told(), ElementsAre("c island", "d island"));
}

TEST(LostNodes, oneWaysAreFollowedTheWayTheyLead) {
  // A hall of three nodes, and two upstairs.
  const auto site = [] { return LostSite({0, 0, 0, 1, 1}).link(1, 2).link(3, 4); };
  EXPECT_THAT(site().link(2, 3, 1).told(), ElementsAre("d noWayBack", "e noWayBack"));
  EXPECT_THAT(site().link(2, 3, 2).told(), ElementsAre("d noWayThere", "e noWayThere"));
  EXPECT_THAT(site().link(3, 2, 2).told(), ElementsAre("d noWayThere", "e noWayThere"));
  EXPECT_THAT(site().link(2, 3, 1).link(3, 2, 1).told(), ElementsAre("d noWayBack", "e noWayBack"));
  EXPECT_THAT(site().link(2, 3, 1).link(2, 3, 2).told(), IsEmpty());
}

}  // namespace
}  // namespace tern::imports
