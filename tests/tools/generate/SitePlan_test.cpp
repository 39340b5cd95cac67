#include "tools/generate/SitePlan.hpp"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cstdlib>
#include <numeric>
#include <vector>

namespace tern::generate {
namespace {

SitePlan anySite() {
  return planSite(*rc::gen::inRange(1, 13), *rc::gen::inRange(1, 9), *rc::gen::inRange(1, 3000));
}

RC_GTEST_PROP(SitePlan, buildingsStandApartWithinTheSite, ()) {
  const SitePlan site = anySite();
  for (const BuildingPlan& building : site.buildings) {
    const Box& box = building.footprint;
    RC_ASSERT(box.left > 0 && box.top > 0);
    RC_ASSERT(box.right < site.widthPx && box.bottom < site.heightPx);
    for (const BuildingPlan& other : site.buildings) {
      RC_ASSERT(other.index == building.index || !box.meets(other.footprint));
    }
  }
}

RC_GTEST_PROP(SitePlan, everyShopHasAFloor, ()) {
  const int shops = *rc::gen::inRange(1, 3000);
  const SitePlan site = planSite(*rc::gen::inRange(1, 9), *rc::gen::inRange(1, 9), shops);
  int total = 0;
  for (const BuildingPlan& building : site.buildings) {
    RC_ASSERT(building.shops.size() == static_cast<std::size_t>(building.floors));
    total += std::accumulate(building.shops.begin(), building.shops.end(), 0);
  }
  RC_ASSERT(total == shops);
}

RC_GTEST_PROP(SitePlan, passagesRunInsideInOrder, ()) {
  for (const BuildingPlan& building : anySite().buildings) {
    RC_ASSERT(building.crossings.size() % 2 == 1);
    int before = building.footprint.left + endDepthPx;
    for (int x : building.crossings) {
      RC_ASSERT(x - before >= passageWidthPx / 2 + serviceWidthPx);
      before = x + passageWidthPx / 2 + serviceWidthPx;
    }
    RC_ASSERT(before < building.footprint.right - endDepthPx);
  }
}

RC_GTEST_PROP(SitePlan, everyBuildingIsJoinedToAnEarlierOne, ()) {
  const SitePlan site = anySite();
  std::vector<bool> joined(site.buildings.size(), false);
  joined.front() = true;
  for (const BuildingLink& link : site.links) {
    RC_ASSERT(link.first < link.second);
    joined[static_cast<std::size_t>(link.second)] = true;
  }
  for (bool is : joined) RC_ASSERT(is);
}

RC_GTEST_PROP(SitePlan, joinedBuildingsFaceEachOther, ()) {
  const SitePlan site = anySite();
  for (const BuildingLink& link : site.links) {
    const BuildingPlan& first = site.buildings[static_cast<std::size_t>(link.first)];
    const BuildingPlan& second = site.buildings[static_cast<std::size_t>(link.second)];
    if (link.northSouth) {
      RC_ASSERT(first.footprint.bottom < second.footprint.top);
      RC_ASSERT(std::abs(first.middleCrossing() - second.middleCrossing()) <= 1);
    } else {
      RC_ASSERT(first.footprint.right < second.footprint.left);
      RC_ASSERT(first.openEast && second.openWest);
      RC_ASSERT(first.concourseY(first.mainConcourse()) ==
                second.concourseY(second.mainConcourse()));
    }
  }
}

TEST(SitePlan, everySecondBuildingIsAFloorLower) {
  const SitePlan site = planSite(3, 4, 80);
  EXPECT_EQ(site.buildings[0].floors, 4);
  EXPECT_EQ(site.buildings[1].floors, 3);
  EXPECT_EQ(site.buildings[2].floors, 4);
  EXPECT_EQ(planSite(2, 1, 8).buildings[1].floors, 1);
}

TEST(SitePlan, threeFloorsBeginBelowTheGround) {
  EXPECT_EQ(planSite(2, 3, 80).buildings[1].lowestLevel, -1);
  EXPECT_EQ(planSite(1, 2, 80).buildings[0].lowestLevel, 0);
}

TEST(SitePlan, aLargeFloorGetsMoreConcoursesAndPassages) {
  const BuildingPlan building = planSite(1, 1, 2000).buildings[0];
  EXPECT_GT(building.concourses, 5);
  EXPECT_GT(building.crossings.size(), 5U);
  EXPECT_LE(building.footprint.width(), 3 * building.footprint.height());
}

}  // namespace
}  // namespace tern::generate
