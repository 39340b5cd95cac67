#include "tools/import/ways/MissingDoors.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

namespace tern::imports {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

Polygon boxed(const Box& box) {
  return {{{{box.left, box.top},
            {box.right, box.top},
            {box.right, box.bottom},
            {box.left, box.bottom}}}};
}

class Plan {
 public:
  Plan& area(const std::string& id, const Box& box, AreaUse use,
             LinkKind kind = LinkKind::walkway) {
    site.areas.push_back({id, 0, kind, false, {boxed(box)}});
    uses.push_back(use);
    return *this;
  }

  // Of each door that was missing, its area.
  std::vector<std::string> opened() {
    addMissingDoors(site, uses, oddities);
    std::vector<std::string> ids;
    for (const SiteDoor& door : site.doors) {
      if (door.id.ends_with("/door")) ids.push_back(door.id.substr(0, door.id.rfind('/')));
    }
    return ids;
  }

  Site site;
  std::vector<AreaUse> uses;
  Oddities oddities;
};

TEST(MissingDoors, roomIsEnteredOverTheMiddleOfItsLongestStretch) {
  Plan plan;
  plan.area("hall", {0, 0, 20, 4}, AreaUse::corridor)
      .area("room", {14, 4, 26, 9}, AreaUse::ownRoom);
  EXPECT_THAT(plan.opened(), ElementsAre("room"));
  const Line& line = plan.site.doors[0].line;
  EXPECT_NEAR((line[0].x + line[1].x) / 2, 17, 0.3);
  EXPECT_NEAR(line[0].y, 4, 1e-9);
}

TEST(MissingDoors, roomWithADoorGetsNoOther) {
  Plan plan;
  plan.area("hall", {0, 0, 20, 4}, AreaUse::corridor).area("room", {4, 4, 9, 9}, AreaUse::ownRoom);
  plan.site.doors.push_back({"d", 0, {{5, 4}, {6, 4}}});
  EXPECT_THAT(plan.opened(), IsEmpty());
}

TEST(MissingDoors, wallsMayBeDrawnAsGaps) {
  Plan plan;
  plan.area("hall", {0, 0, 20, 4}, AreaUse::corridor)
      .area("room", {4, 4.5, 9, 9}, AreaUse::ownRoom);
  EXPECT_THAT(plan.opened(), ElementsAre("room"));
}

TEST(MissingDoors, roomThatNothingLiesBesideStaysClosed) {
  Plan plan;
  plan.area("hall", {0, 0, 20, 4}, AreaUse::corridor).area("room", {4, 6, 9, 9}, AreaUse::ownRoom);
  plan.area("edge", {20, 4, 29, 9}, AreaUse::ownRoom);
  EXPECT_THAT(plan.opened(), IsEmpty());
}

TEST(MissingDoors, passagesComeBeforeShops) {
  Plan plan;
  plan.area("hall", {0, 0, 20, 4}, AreaUse::corridor);
  plan.area("shop", {0, 4, 10, 9}, AreaUse::ownRoom);
  plan.area("lobby", {10, 4, 12, 20}, AreaUse::passage);
  plan.area("store", {0, 9, 10, 11}, AreaUse::ownRoom);
  plan.opened();
  const auto told = plan.oddities.told();
  ASSERT_EQ(told.size(), 3U);
  EXPECT_EQ(told[2].id, "store");
  EXPECT_EQ(told[2].why, "No door leads to it; it is entered from lobby.");
}

TEST(MissingDoors, stairsAreEnteredAtAnEnd) {
  Plan plan;
  plan.area("hall", {0, 0, 20, 4}, AreaUse::corridor);
  plan.area("side", {2, 4, 4, 12}, AreaUse::corridor);
  plan.area("stairs", {4, 4, 6, 12}, AreaUse::mover, LinkKind::stairs);
  EXPECT_THAT(plan.opened(), ElementsAre("stairs"));
  EXPECT_NEAR(plan.site.doors[0].line[0].y, 4, 1e-9);
}

TEST(MissingDoors, aWideDoorIsThatOfAllRoomsAlongIt) {
  Plan plan;
  plan.area("hall", {0, 0, 20, 4}, AreaUse::corridor)
      .area("a", {0, 4, 5, 9}, AreaUse::ownRoom)
      .area("b", {5, 4, 10, 9}, AreaUse::ownRoom)
      .area("c", {10, 4, 20, 9}, AreaUse::ownRoom);
  plan.site.doors.push_back({"d", 0, {{2, 4}, {9, 4}}});
  EXPECT_THAT(plan.opened(), ElementsAre("c"));
}

TEST(MissingDoors, aLineAmidARoomIsNoDoorOfIt) {
  Plan plan;
  plan.area("hall", {0, 0, 20, 4}, AreaUse::corridor).area("room", {4, 4, 9, 9}, AreaUse::ownRoom);
  plan.site.doors.push_back({"d", 0, {{5, 5}, {6, 5}}});
  EXPECT_THAT(plan.opened(), ElementsAre("room"));
}

TEST(MissingDoors, whatHasADoorThatIsClosedGetsNoOther) {
  Plan plan;
  plan.area("hall", {0, 0, 20, 4}, AreaUse::corridor).area("room", {4, 4, 9, 9}, AreaUse::ownRoom);
  plan.area("lawn", {0, -9, 20, 0}, AreaUse::ground);
  plan.site.shutDoors.push_back({"d", 0, {{5, 4}, {6, 4}}});
  EXPECT_THAT(plan.opened(), IsEmpty());
}

TEST(MissingDoors, corridorWithoutADoorIsEnteredFromOutdoors) {
  Plan plan;
  plan.area("square", {0, -9, 40, 0}, AreaUse::ground);
  plan.area("lobby", {0, 0, 4, 4}, AreaUse::corridor);
  plan.area("hall", {10, 0, 20, 4}, AreaUse::corridor);
  plan.site.doors.push_back({"d", 0, {{12, 0}, {13, 0}}});
  EXPECT_THAT(plan.opened(), ElementsAre("lobby"));
}

TEST(MissingDoors, toldByTheRecordOfTheSource) {
  Plan plan;
  plan.area("way/1", {0, 0, 20, 4}, AreaUse::corridor);
  plan.area("way/2@-1.2", {4, 4, 9, 9}, AreaUse::ownRoom);
  plan.site.areas.back().record = "way/2";
  plan.opened();
  EXPECT_EQ(plan.oddities.told().front().id, "way/2");
}

}  // namespace
}  // namespace tern::imports
