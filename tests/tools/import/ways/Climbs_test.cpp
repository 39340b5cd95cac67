#include "tools/import/ways/Climbs.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace tern::imports {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class ClimbsTest : public testing::Test {
 protected:
  std::size_t add(LinkKind kind, double ordinal, double left = 0, double side = 2) {
    const std::size_t area = site.areas.size();
    site.areas.push_back({std::to_string(area),
                          0,
                          kind,
                          false,
                          {{{{{left, 0}, {left + side, 0}, {left + side, side}, {left, side}}}}}});
    ordinals.push_back(ordinal);
    return area;
  }

  std::vector<std::pair<std::size_t, std::size_t>> climbs() {
    std::vector<std::pair<std::size_t, std::size_t>> found;
    for (const Climb& climb : climbsIn(site, ordinals, oddities)) {
      found.emplace_back(climb.low, climb.high);
    }
    return found;
  }

  Site site;
  std::vector<double> ordinals;
  Oddities oddities;
};

TEST_F(ClimbsTest, stairsAboveEachOtherAreJoinedFloorByFloor) {
  add(LinkKind::stairs, 0);
  add(LinkKind::stairs, 1);
  add(LinkKind::stairs, 2);
  EXPECT_THAT(climbs(), ElementsAre(std::pair(0, 1), std::pair(1, 2)));
  EXPECT_THAT(oddities.told(), IsEmpty());
}

TEST_F(ClimbsTest, aLiftIsJoinedPastALevelThatItDoesNotStopAt) {
  add(LinkKind::lift, 0);
  add(LinkKind::lift, 2);
  add(LinkKind::walkway, 1);
  EXPECT_THAT(climbs(), ElementsAre(std::pair(0, 1)));
}

TEST_F(ClimbsTest, liftsAreOneKindAndStairsAnother) {
  add(LinkKind::lift, 0);
  add(LinkKind::stepFreeLift, 1);
  add(LinkKind::stairs, 1);
  EXPECT_THAT(climbs(), ElementsAre(std::pair(0, 1)));
  ASSERT_EQ(oddities.told().size(), 1U);
  EXPECT_EQ(oddities.told().front().id, "2");
  EXPECT_EQ(oddities.told().front().kind, "leadsNowhere");
}

TEST_F(ClimbsTest, whatLeadsNowhereIsToldByItsRecordAndItsLevel) {
  add(LinkKind::stairs, 1);
  site.areas.back().record = "way/5";
  EXPECT_THAT(climbs(), IsEmpty());
  ASSERT_EQ(oddities.told().size(), 1U);
  EXPECT_EQ(oddities.told().front().id, "way/5");
  EXPECT_EQ(oddities.told().front().why, "On level 1 nothing of its kind lies above or below it.");
  EXPECT_TRUE(oddities.told().front().cameThrough);
}

TEST_F(ClimbsTest, ofSeveralThatLieAboveTheOneThatCoversMostCounts) {
  add(LinkKind::stairs, 0);
  add(LinkKind::stairs, 1, 1.2);
  add(LinkKind::stairs, 1, 0.2);
  EXPECT_THAT(climbs(), testing::Contains(std::pair<std::size_t, std::size_t>(0, 2)));
}

TEST_F(ClimbsTest, whatHardlyLiesAboveIsNotJoined) {
  add(LinkKind::escalator, 0);
  add(LinkKind::escalator, 1, 1.9);
  EXPECT_THAT(climbs(), IsEmpty());
  EXPECT_EQ(oddities.told().size(), 2U);
}

TEST_F(ClimbsTest, aRampMayEndOnItsOwnLevel) {
  add(LinkKind::ramp, 0);
  EXPECT_THAT(climbs(), IsEmpty());
  EXPECT_THAT(oddities.told(), IsEmpty());
}

TEST_F(ClimbsTest, whereTheSiteSaysItItselfThatCounts) {
  add(LinkKind::lift, 0);
  add(LinkKind::lift, 1);
  add(LinkKind::lift, 2);
  site.movers.push_back({"told", 0, 2, LinkKind::lift, Direction::both});
  EXPECT_THAT(climbs(), IsEmpty()) << "neither up from the lowest nor down from the highest";
  site.movers = {{"told", 0, 1, LinkKind::lift, Direction::both}};
  EXPECT_THAT(climbs(), ElementsAre(std::pair(1, 2)));
}

}  // namespace
}  // namespace tern::imports
