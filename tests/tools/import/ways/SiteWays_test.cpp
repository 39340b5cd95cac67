#include "tools/import/ways/SiteWays.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <numeric>
#include <set>
#include <string>
#include <vector>

namespace tern::imports {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// A building of boxes.
class DrawnSite : public testing::Test {
 protected:
  DrawnSite() {
    for (const int ordinal : {0, 1, 2}) {
      DraftFloor floor;
      floor.ordinal = ordinal;
      draft.floors.push_back(floor);
    }
  }

  void area(const char* id, std::size_t floor, Box at, LinkKind kind = LinkKind::walkway) {
    site.areas.push_back({id,
                          floor,
                          kind,
                          false,
                          {{{{{at.left, at.top},
                              {at.right, at.top},
                              {at.right, at.bottom},
                              {at.left, at.bottom}}}}}});
  }

  void door(const char* id, std::size_t floor, Point from, Point to) {
    site.doors.push_back({id, floor, {from, to}});
  }

  void make() { made = makeWays(site, draft); }

  std::optional<std::size_t> nodeOf(const std::string& id) const {
    const auto node = std::ranges::find(draft.nodes, id, &DraftNode::id);
    if (node == draft.nodes.end()) return std::nullopt;
    return static_cast<std::size_t>(node - draft.nodes.begin());
  }

  std::size_t islands() const {
    std::vector<std::size_t> island(draft.nodes.size());
    std::iota(island.begin(), island.end(), 0U);
    const std::function<std::size_t(std::size_t)> root = [&](std::size_t node) {
      return island[node] == node ? node : root(island[node]);
    };
    for (const DraftLink& link : draft.links) island[root(link.from)] = root(link.to);
    std::set<std::size_t> roots;
    for (std::size_t i = 0; i < island.size(); ++i) roots.insert(root(i));
    return roots.size();
  }

  std::vector<std::string> kindsTold() const {
    std::vector<std::string> kinds;
    for (const Oddity& oddity : draft.oddities.told()) kinds.emplace_back(oddity.kind);
    return kinds;
  }

  const DraftLink* climb() const {
    const auto found = std::ranges::find_if(draft.links, [&](const DraftLink& link) {
      return draft.nodes[link.from].floor != draft.nodes[link.to].floor;
    });
    return found == draft.links.end() ? nullptr : &*found;
  }

  Site site;
  Draft draft;
  MadeWays made;
};

using SiteWays = DrawnSite;

TEST_F(SiteWays, aDoorJoinsTheRoomsOnItsSides) {
  area("hall", 0, {0, 0, 10, 5});
  area("shop", 0, {0, 5, 10, 10});
  door("door", 0, {4.5, 5}, {5.5, 5});
  make();
  EXPECT_EQ(draft.nodes.size(), 3U);
  EXPECT_EQ(draft.links.size(), 2U);
  EXPECT_EQ(islands(), 1U);
  ASSERT_TRUE(nodeOf("door") && nodeOf("door>hall") && nodeOf("door>shop"));
  EXPECT_THAT(made.insideDoors[1], ElementsAre(*nodeOf("door>shop")));
  EXPECT_NEAR(draft.nodes[*nodeOf("door>shop")].at.y, 5.37, 0.03);
  EXPECT_FALSE(draft.nodes[*nodeOf("door")].isEntrance);
}

TEST_F(SiteWays, aDoorWithNothingBehindItIsAnEntrance) {
  area("hall", 0, {0, 0, 10, 5});
  door("door", 0, {4.5, 0}, {5.5, 0});
  make();
  ASSERT_TRUE(nodeOf("door"));
  EXPECT_TRUE(draft.nodes[*nodeOf("door")].isEntrance);
  EXPECT_EQ(islands(), 1U);
}

TEST_F(SiteWays, aDoorLeadsToTheGroundThatIsAFloorOfItsOwn) {
  draft.floors[1].ordinal = 0;
  area("hall", 0, {0, 0, 10, 5});
  area("court", 1, {0, -9, 10, 0});
  area("roof", 2, {0, -9, 10, 0});
  door("door", 0, {4.5, 0}, {5.5, 0});
  make();
  EXPECT_TRUE(nodeOf("door>hall") && nodeOf("door>court"));
  EXPECT_FALSE(nodeOf("door>roof"));
  EXPECT_TRUE(draft.nodes[nodeOf("door").value()].isEntrance);
  EXPECT_EQ(draft.nodes[nodeOf("door>court").value()].floor, 1U);
  ASSERT_NE(climb(), nullptr);
  EXPECT_EQ(climb()->kind, LinkKind::walkway);
}

TEST_F(SiteWays, aDoorOfTwoRoomsLeadsToThemAlone) {
  draft.floors[1].ordinal = 0;
  area("hall", 0, {0, 0, 10, 5});
  area("shop", 0, {0, 5, 10, 10});
  area("ground", 1, {-9, -9, 19, 19});
  door("door", 0, {4.5, 5}, {5.5, 5});
  make();
  EXPECT_FALSE(nodeOf("door>ground"));
}

TEST_F(SiteWays, aWideDoorIsCrossedInSeveralPlaces) {
  area("hall", 0, {0, 0, 20, 5});
  area("court", 0, {0, 5, 20, 10});
  door("gate", 0, {5, 5}, {11, 5});
  make();
  EXPECT_TRUE(nodeOf("gate") && nodeOf("gate/2") && nodeOf("gate/3") && nodeOf("gate/4"));
  EXPECT_FALSE(nodeOf("gate/5"));
  EXPECT_EQ(islands(), 1U);
}

TEST_F(SiteWays, aDoorInAWallDrawnAsAGapJoinsToo) {
  area("hall", 0, {0, 0, 10, 4.9});
  area("shop", 0, {0, 5.1, 10, 10});
  door("door", 0, {4.5, 5}, {5.5, 5});
  make();
  EXPECT_EQ(islands(), 1U);
  EXPECT_EQ(draft.nodes.size(), 3U);
}

TEST_F(SiteWays, aDoorOfARoomThatLiesInAHallJoinsTheTwo) {
  area("hall", 0, {0, 0, 20, 20});
  area("booth", 0, {5, 5, 8, 8});
  door("door", 0, {6, 5}, {7, 5});
  make();
  EXPECT_TRUE(nodeOf("door>hall"));
  EXPECT_TRUE(nodeOf("door>booth"));
}

TEST_F(SiteWays, aLineAmidAnAreaIsNoDoor) {
  area("hall", 0, {0, 0, 10, 10});
  door("line", 0, {0, 5}, {10, 5});
  make();
  EXPECT_THAT(draft.nodes, IsEmpty());
  EXPECT_THAT(kindsTold(), IsEmpty());
}

TEST_F(SiteWays, aDoorDrawnBesideItsWallIsInIt) {
  for (const double beside : {-0.3, 0.3}) {
    site = {};
    draft.nodes.clear();
    draft.links.clear();
    area("hall", 0, {0, 0, 10, 5});
    area("shop", 0, {0, 5, 10, 10});
    door("door", 0, {4.5, 5 + beside}, {5.5, 5 + beside});
    make();
    EXPECT_EQ(islands(), 1U);
    ASSERT_TRUE(nodeOf("door") && nodeOf("door>hall") && nodeOf("door>shop")) << beside;
    EXPECT_NEAR(draft.nodes[*nodeOf("door")].at.y, 5, 1e-9);
    EXPECT_FALSE(draft.nodes[*nodeOf("door")].isEntrance);
  }
}

TEST_F(SiteWays, aDoorDrawnBesideAWallToNowhereIsAnEntrance) {
  area("hall", 0, {0, 0, 10, 5});
  door("door", 0, {4.5, 0.3}, {5.5, 0.3});
  make();
  ASSERT_TRUE(nodeOf("door"));
  EXPECT_TRUE(draft.nodes[*nodeOf("door")].isEntrance);
}

TEST_F(SiteWays, aDoorAtNoAreaIsTold) {
  area("hall", 0, {0, 0, 10, 5});
  door("door", 0, {4, 20}, {5, 20});
  make();
  EXPECT_THAT(kindsTold(), ElementsAre("unreached"));
}

TEST_F(SiteWays, aStandHasANodeAndOneFarFromAllAreasHasNone) {
  area("hall", 0, {0, 0, 10, 5});
  door("door", 0, {4.5, 0}, {5.5, 0});
  site.stands = {
      {"desk", 0, {8, 3}}, {"sign", 0, {5, 6}}, {"moon", 0, {50, 50}}, {"up", 1, {8, 3}}};
  make();
  ASSERT_TRUE(made.ofStand[0] && made.ofStand[1]);
  EXPECT_EQ(draft.nodes[*made.ofStand[0]].at, (Point{8, 3}));
  EXPECT_NEAR(draft.nodes[*made.ofStand[1]].at.y, 4.63, 0.03) << "in front of it";
  EXPECT_FALSE(made.ofStand[2]);
  EXPECT_FALSE(made.ofStand[3]);
  EXPECT_EQ(islands(), 1U);
}

TEST_F(SiteWays, stairsAreWalkedAsStairsAndLeadUp) {
  for (const std::size_t floor : {0U, 2U}) {
    area(floor == 0 ? "low" : "high", floor, {0, 0, 10, 5});
    area(floor == 0 ? "lower stairs" : "upper stairs", floor, {0, 5, 3, 10}, LinkKind::stairs);
    door(floor == 0 ? "in" : "out", floor, {1, 5}, {2, 5});
  }
  make();
  EXPECT_EQ(islands(), 1U);
  ASSERT_NE(climb(), nullptr);
  EXPECT_EQ(climb()->kind, LinkKind::stairs);
  EXPECT_EQ(climb()->id, "lower stairs^upper stairs");
  EXPECT_EQ(draft.nodes[climb()->from].floor, 0U);
  const auto within = std::ranges::find(draft.links, "lower stairs=0", &DraftLink::id);
  ASSERT_NE(within, draft.links.end());
  EXPECT_EQ(within->kind, LinkKind::stairs);
}

TEST_F(SiteWays, liftsOfWhichOneHasStepsAreNotStepFree) {
  area("cabin 0", 0, {0, 5, 3, 10}, LinkKind::stepFreeLift);
  area("cabin 1", 1, {0, 5, 3, 10}, LinkKind::lift);
  make();
  ASSERT_NE(climb(), nullptr);
  EXPECT_EQ(climb()->kind, LinkKind::lift);
}

TEST_F(SiteWays, stairsWithoutADoorAreEnteredFromBesideAndTold) {
  area("hall", 0, {0, 0, 10, 5});
  area("stairs", 0, {0, 5, 3, 10}, LinkKind::stairs);
  area("closet", 0, {-1, 5, 0, 7});
  make();
  EXPECT_TRUE(nodeOf("stairs/door"));
  EXPECT_TRUE(nodeOf("stairs/door>hall"));
  EXPECT_THAT(kindsTold(), ElementsAre("noDoor"));
}

TEST_F(SiteWays, stairsWithoutADoorAreRatherEnteredFromWhatHasOne) {
  area("hall", 0, {0, 0, 10, 5});
  area("stairs", 0, {0, 5, 3, 10}, LinkKind::stairs);
  area("closet", 0, {3, 5, 6, 10});
  door("way in", 0, {0, 2}, {0, 3});
  make();
  EXPECT_TRUE(nodeOf("stairs/door>hall"));
  EXPECT_FALSE(nodeOf("stairs/door>closet"));
}

TEST_F(SiteWays, whatTheSourceSaysOfAMoverIsTaken) {
  area("low", 0, {0, 0, 3, 9}, LinkKind::escalator);
  area("high", 1, {20, 0, 23, 9}, LinkKind::escalator);
  site.movers = {{"up", 0, 1, LinkKind::escalator, Direction::forward}};
  make();
  ASSERT_NE(climb(), nullptr);
  EXPECT_EQ(climb()->id, "up");
  EXPECT_EQ(climb()->direction, Direction::forward);
  EXPECT_THAT(kindsTold(), IsEmpty());
}

TEST_F(SiteWays, nodesAndLinksOfAnAreaInPartsDifferByTheirIds) {
  area("ring", 0, {0, 0, 10, 10});
  site.areas[0].shapes.push_back({{{{20, 0}, {30, 0}, {30, 10}, {20, 10}}}});
  for (Polygon& part : site.areas[0].shapes) {
    const double left = part.rings[0][0].x;
    part.rings.push_back({{left + 4, 4}, {left + 4, 6}, {left + 6, 6}, {left + 6, 4}});
  }
  site.stands = {{"a", 0, {1, 5}}, {"b", 0, {9, 5}}, {"c", 0, {21, 5}}, {"d", 0, {29, 5}}};
  make();
  std::set<std::string> ids;
  for (const DraftNode& node : draft.nodes) EXPECT_TRUE(ids.insert(node.id).second) << node.id;
  for (const DraftLink& link : draft.links) EXPECT_TRUE(ids.insert(link.id).second) << link.id;
  EXPECT_EQ(islands(), 2U);
}

TEST_F(SiteWays, ofNothingNothingIsMade) {
  make();
  EXPECT_THAT(draft.nodes, IsEmpty());
  EXPECT_THAT(draft.links, IsEmpty());
}

}  // namespace
}  // namespace tern::imports
