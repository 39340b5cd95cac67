#include "tools/import/osm/OsmReader.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <set>

#include "tests/support/RealData.hpp"
#include "tests/support/TemporaryFolder.hpp"
#include "tests/tools/import/DrawnDraft.hpp"
#include "tests/tools/import/osm/DrawnOsm.hpp"
#include "tools/import/ways/PlaneGeometry.hpp"

namespace tern::imports {
namespace {

using test::DrawnOsm;
using test::toldLines;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::UnorderedElementsAre;

ReadDraft readOf(const DrawnOsm& drawn) { return test::drawnRead(drawn, "house.osm", readOsm); }

Draft draftOf(const DrawnOsm& drawn) { return test::drawnDraft(drawn, "house.osm", readOsm); }

// By which one comes from each node to which others.
std::set<std::size_t> reachedFrom(const Draft& draft, std::size_t from) {
  std::set<std::size_t> reached{from};
  for (std::size_t before = 0; before < reached.size();) {
    before = reached.size();
    for (const DraftLink& link : draft.links) {
      if (reached.contains(link.from)) reached.insert(link.to);
      if (reached.contains(link.to)) reached.insert(link.from);
    }
  }
  return reached;
}

const DraftPlace* placeNamed(const Draft& draft, std::string_view name) {
  const auto place = std::ranges::find_if(
      draft.places, [&](const DraftPlace& item) { return nameIn(item.names, "") == name; });
  return place == draft.places.end() ? nullptr : &*place;
}

bool isJoined(const Draft& draft, std::string_view from, std::string_view to) {
  const DraftPlace* const first = placeNamed(draft, from);
  const DraftPlace* const second = placeNamed(draft, to);
  if (first == nullptr || second == nullptr) return false;
  const auto reached = reachedFrom(draft, first->nodes.front());
  return reached.contains(second->nodes.front());
}

std::vector<const DraftLink*> climbs(const Draft& draft) {
  std::vector<const DraftLink*> found;
  for (const DraftLink& link : draft.links) {
    if (draft.nodes[link.from].floor != draft.nodes[link.to].floor) found.push_back(&link);
  }
  return found;
}

const DraftLink* wayOf(const Draft& draft, std::string_view id) {
  const auto link = std::ranges::find(draft.links, id, &DraftLink::id);
  return link == draft.links.end() ? nullptr : &*link;
}

DrawnOsm::Tags corridor(const std::string& level) {
  return {{"indoor", "corridor"}, {"level", level}};
}

DrawnOsm::Tags room(const std::string& level, const std::string& name) {
  return {{"indoor", "room"}, {"level", level}, {"name", name}};
}

// A corridor, 20 m by 3 m, with a room below it that has a door.
DrawnOsm smallHouse() {
  DrawnOsm drawn;
  drawn.area(1, {{0, 0}, {20, 0}, {20, 3}, {10, 3}, {5, 3}, {0, 3}}, corridor("0"));
  drawn.area(2, {{0, 3}, {2, 3}, {5, 3}, {5, 8}, {0, 8}}, room("0", "Shop"));
  drawn.point({2, 3}, {{"door", "yes"}});
  return drawn;
}

// Another room, on the same corridor, and two above with their own.
DrawnOsm twoFloors() {
  DrawnOsm drawn = smallHouse();
  drawn.area(11, {{0, 0}, {20, 0}, {20, 3}, {0, 3}}, corridor("1"));
  drawn.area(12, {{0, 3}, {2, 3}, {5, 3}, {5, 8}, {0, 8}}, room("1", "Office"));
  return drawn;
}

TEST(OsmReader, doorLeadsFromTheCorridorIntoTheRoom) {
  const Draft draft = draftOf(smallHouse().box(3, {10, 3, 14, 8}, room("0", "Cafe")));
  EXPECT_TRUE(isJoined(draft, "Shop", "Cafe"));
  ASSERT_EQ(draft.floors.size(), 1U);
  EXPECT_EQ(draft.floors[0].ordinal, 0);
  EXPECT_THAT(toldLines(draft), ElementsAre("way/3 noDoor"));
  EXPECT_EQ(draft.doors.size(), 1U);
}

TEST(OsmReader, idsAreThoseOfTheSourceAndEachIsOnce) {
  const Draft draft =
      draftOf(twoFloors().box(3, {14, -4, 17, 0}, {{"room", "elevator"}, {"level", "0;1"}}));
  std::set<std::string> ids;
  for (const DraftNode& node : draft.nodes) EXPECT_TRUE(ids.insert(node.id).second) << node.id;
  for (const DraftLink& link : draft.links) EXPECT_TRUE(ids.insert("l" + link.id).second);
  EXPECT_TRUE(std::ranges::any_of(ids, [](const auto& id) { return id.starts_with("node/"); }));
  EXPECT_THAT(ids, Contains("way/3@0"));
}

TEST(OsmReader, roomsBehindRoomsAreEnteredThroughThem) {
  DrawnOsm drawn = smallHouse();
  drawn.box(3, {0, 8, 5, 12}, room("0", "Store"));
  const Draft draft = draftOf(drawn);
  EXPECT_TRUE(isJoined(draft, "Shop", "Store"));
  EXPECT_THAT(toldLines(draft), ElementsAre("way/3 noDoor"));
}

TEST(OsmReader, rangesListsAndRepeatsAreFloors) {
  DrawnOsm drawn = smallHouse();
  drawn.box(3, {10, 3, 14, 8}, {{"room", "stairs"}, {"level", "-1-1"}, {"repeat_on", "2"}});
  for (int level = -1; level < 3; ++level) {
    if (level != 0) drawn.box(20 + level, {0, 0, 20, 3}, corridor(std::to_string(level)));
  }
  const Draft draft = draftOf(drawn);
  std::vector<double> ordinals;
  for (const DraftFloor& floor : draft.floors) ordinals.push_back(floor.ordinal);
  EXPECT_THAT(ordinals, ElementsAre(-1, 0, 1, 2));
  ASSERT_EQ(climbs(draft).size(), 3U);
  EXPECT_EQ(climbs(draft)[0]->kind, LinkKind::stairs);
}

TEST(OsmReader, levelThatOneListAloneNamesIsNoFloor) {
  DrawnOsm drawn = smallHouse();
  drawn.box(3, {10, 3, 14, 8}, room("0;2", "Tall"));
  const Draft draft = draftOf(drawn);
  EXPECT_EQ(draft.floors.size(), 1U);
  EXPECT_THAT(toldLines(draft), Contains("way/3 noFloor"));
}

TEST(OsmReader, floorIsCalledAsItsSignsSay) {
  DrawnOsm drawn = smallHouse();
  drawn.box(3, {10, 3, 14, 8}, {{"indoor", "room"}, {"level", "0"}, {"level:ref", "EG"}});
  EXPECT_EQ(nameIn(draftOf(drawn).floors[0].shortNames, ""), "EG");
  drawn.box(4, {-5, -5, 30, 20}, {{"indoor", "level"}, {"level", "0"}, {"name", "Erdgeschoss"}});
  const Draft draft = draftOf(drawn);
  EXPECT_EQ(nameIn(draft.floors[0].names, ""), "Erdgeschoss");
  ASSERT_EQ(draft.floors[0].shapes.size(), 1U);
  EXPECT_NEAR(areaOf(draft.floors[0].shapes[0]), 35 * 25, 1);
}

TEST(OsmReader, namesInSeveralLanguages) {
  DrawnOsm drawn = smallHouse();
  drawn.box(3, {10, 3, 14, 8},
            {{"indoor", "room"},
             {"level", "0"},
             {"name", "Saal"},
             {"name:de", "Saal"},
             {"name:en", "Hall"}});
  const Draft draft = draftOf(drawn);
  EXPECT_EQ(draft.language, "de");
  ASSERT_NE(placeNamed(draft, "Saal"), nullptr);
  EXPECT_EQ(nameIn(placeNamed(draft, "Saal")->names, "en"), "Hall");
}

TEST(OsmReader, liftIsStepFreeWhereItSaysSo) {
  for (const auto& [wheelchair, kind] :
       std::map<std::string, LinkKind>{{"yes", LinkKind::stepFreeLift}, {"no", LinkKind::lift}}) {
    DrawnOsm drawn = twoFloors();
    drawn.box(3, {10, 3, 12, 5},
              {{"room", "elevator"}, {"level", "0;1"}, {"wheelchair", wheelchair}});
    const Draft draft = draftOf(drawn);
    ASSERT_EQ(climbs(draft).size(), 1U);
    EXPECT_EQ(climbs(draft)[0]->kind, kind);
    EXPECT_TRUE(isJoined(draft, "Shop", "Office"));
  }
}

TEST(OsmReader, liftThatIsANodeJoinsItsLevels) {
  DrawnOsm drawn = twoFloors();
  const auto lift = drawn.point({15, 1}, {{"highway", "elevator"}, {"level", "0;1"}});
  const Draft draft = draftOf(drawn);
  ASSERT_EQ(climbs(draft).size(), 1U);
  EXPECT_EQ(climbs(draft)[0]->kind, LinkKind::lift);
  EXPECT_EQ(draft.nodes[climbs(draft)[0]->from].id, "node/" + std::to_string(lift) + "@0");
  EXPECT_TRUE(isJoined(draft, "Shop", "Office"));
}

TEST(OsmReader, nodeOfALiftWithinItsCabinIsThatLift) {
  DrawnOsm drawn = twoFloors();
  drawn.box(3, {10, 3, 12, 5}, {{"indoor", "room"}, {"level", "0;1"}});
  drawn.point({11, 4}, {{"highway", "elevator"}, {"level", "0;1"}, {"wheelchair", "yes"}});
  const Draft draft = draftOf(drawn);
  ASSERT_EQ(climbs(draft).size(), 1U);
  EXPECT_EQ(climbs(draft)[0]->kind, LinkKind::stepFreeLift);
}

TEST(OsmReader, stepsJoinTheWaysOfTheirLevels) {
  DrawnOsm drawn = twoFloors();
  drawn.line(3, {{12, 1}, {16, 1}},
             {{"highway", "steps"}, {"level", "0;1"}, {"incline", "down"}, {"step_count", "20"}});
  const Draft draft = draftOf(drawn);
  ASSERT_NE(wayOf(draft, "way/3"), nullptr);
  const DraftLink& steps = *wayOf(draft, "way/3");
  EXPECT_EQ(steps.kind, LinkKind::stairs);
  EXPECT_EQ(draft.floors[draft.nodes[steps.from].floor].ordinal, 1);
  EXPECT_EQ(steps.details["steps"].text(), "20");
  EXPECT_TRUE(isJoined(draft, "Shop", "Office"));
}

TEST(OsmReader, escalatorRunsOneWay) {
  DrawnOsm drawn = twoFloors();
  drawn.line(
      3, {{12, 1}, {16, 1}},
      {{"highway", "steps"}, {"level", "0;1"}, {"incline", "up"}, {"conveying", "backward"}});
  const Draft draft = draftOf(drawn);
  ASSERT_NE(wayOf(draft, "way/3"), nullptr);
  EXPECT_EQ(wayOf(draft, "way/3")->kind, LinkKind::escalator);
  EXPECT_EQ(wayOf(draft, "way/3")->direction, Direction::backward);
}

TEST(OsmReader, whatStepsMeetSaysWhichEndIsTheLowerOne) {
  DrawnOsm drawn = twoFloors();
  drawn.line(3, {{12, 1}, {16, 1}}, {{"highway", "steps"}, {"level", "0;1"}});
  drawn.line(4, {{16, 1}, {19, 1}}, {{"highway", "footway"}, {"level", "0"}});
  const Draft draft = draftOf(drawn);
  const DraftLink& steps = *wayOf(draft, "way/3");
  EXPECT_EQ(draft.floors[draft.nodes[steps.to].floor].ordinal, 0);
  EXPECT_THAT(toldLines(draft), Not(Contains("way/3 whichEnd")));
}

TEST(OsmReader, stepsThatNothingSaysTheLowerEndOfRiseAndAreTold) {
  DrawnOsm drawn = twoFloors();
  drawn.line(3, {{12, 1}, {16, 1}}, {{"highway", "steps"}, {"level", "0;1"}});
  EXPECT_THAT(toldLines(draftOf(drawn)), Contains("way/3 whichEnd"));
}

TEST(OsmReader, landingBetweenIsOnItsOwnLevel) {
  DrawnOsm drawn = twoFloors();
  drawn.line(3, {{12, 1}, {14, 1}, {16, 1}}, {{"highway", "steps"}, {"level", "0-2"}});
  drawn.line(4, {{14, 1}, {14, 2}}, {{"highway", "footway"}, {"level", "1"}});
  drawn.line(5, {{16, 1}, {16, 2}}, {{"highway", "footway"}, {"level", "2"}});
  const Draft draft = draftOf(drawn);
  ASSERT_EQ(climbs(draft).size(), 2U);
  EXPECT_EQ(draft.floors[draft.nodes[climbs(draft)[0]->to].floor].ordinal, 1);
  EXPECT_EQ(draft.floors[draft.nodes[climbs(draft)[1]->to].floor].ordinal, 2);
}

TEST(OsmReader, stepsDrawnOnceForThreeFloorsJoinEachPair) {
  for (const char* const incline : {"up", "down"}) {
    DrawnOsm drawn = twoFloors();
    drawn.area(30, {{0, 0}, {20, 0}, {20, 3}, {0, 3}}, corridor("2"));
    drawn.line(3, {{12, 1}, {16, 1}},
               {{"highway", "steps"}, {"level", "0;1;2"}, {"incline", incline}});
    const Draft draft = draftOf(drawn);
    std::vector<double> rises;
    for (const DraftLink* const climb : climbs(draft)) {
      rises.push_back(std::abs(draft.floors[draft.nodes[climb->to].floor].ordinal -
                               draft.floors[draft.nodes[climb->from].floor].ordinal));
    }
    EXPECT_THAT(rises, ElementsAre(1, 1)) << incline;
    EXPECT_TRUE(isJoined(draft, "Shop", "Office"));
  }
}

TEST(OsmReader, placesBesideDrawnWaysAreReachedFromThem) {
  DrawnOsm drawn;
  drawn.line(1, {{0, 0}, {20, 0}, {40, 0}}, {{"highway", "footway"}, {"level", "0"}});
  drawn.point({20, 6}, {{"shop", "kiosk"}, {"name", "Kiosk"}, {"level", "0"}});
  drawn.point({20, 90}, {{"shop", "kiosk"}, {"name", "Far"}, {"level", "0"}});
  drawn.point({40, 0}, {{"railway", "subway_entrance"}, {"name", "Exit A"}, {"level", "0"}});
  drawn.point({0, 0}, {{"entrance", "yes"}, {"name", "Exit B"}, {"level", "0"}});
  const Draft draft = draftOf(drawn);
  const auto isThere = [&](const char* name) {
    return std::ranges::any_of(draft.places, [&](const DraftPlace& place) {
      return nameIn(place.names, "") == name && !place.nodes.empty();
    });
  };
  EXPECT_TRUE(isThere("Kiosk"));
  EXPECT_TRUE(isThere("Exit A"));
  EXPECT_TRUE(isThere("Exit B"));
  EXPECT_FALSE(isThere("Far"));
  EXPECT_THAT(toldLines(draft), ElementsAre("node/1004 unreached"));
}

TEST(OsmReader, aRoomThatStepsEndInIsReachedByThem) {
  DrawnOsm drawn = twoFloors();
  drawn.box(31, {40, 40, 50, 50}, room("1", "Gallery"));
  drawn.line(3, {{19, 1}, {45, 45}}, {{"highway", "steps"}, {"level", "0;1"}, {"incline", "up"}});
  EXPECT_TRUE(isJoined(draftOf(drawn), "Shop", "Gallery"));
}

TEST(OsmReader, nobodyIsLedToWhatIsClosedToThePublic) {
  for (const char* const access : {"no", "private"}) {
    DrawnOsm drawn = smallHouse();
    DrawnOsm::Tags vault = room("0", "Vault");
    vault.emplace_back("access", access);
    drawn.area(3, {{10, 3}, {12, 3}, {14, 3}, {14, 8}, {10, 8}}, vault);
    drawn.point({12, 3}, {{"door", "yes"}});
    const std::int64_t machine = drawn.point({12, 6}, {{"amenity", "atm"}, {"level", "0"}});
    drawn.line(4, {{1, 1}, {19, 1}}, {{"highway", "footway"}, {"level", "0"}, {"access", access}});
    const Draft draft = draftOf(drawn);
    for (const DraftNode& node : draft.nodes) EXPECT_FALSE(node.isEntrance) << node.id;
    EXPECT_EQ(placeNamed(draft, "Vault"), nullptr);
    EXPECT_EQ(draft.places.size(), 1U) << "the shop alone";
    EXPECT_EQ(wayOf(draft, "way/4"), nullptr);
    EXPECT_THAT(toldLines(draft),
                UnorderedElementsAre("way/3 noAccess", "way/4 noAccess",
                                     "node/" + std::to_string(machine) + " noAccess"));
    const auto isClosed = [](const DraftArea& area) { return area.kind == AreaKind::closed; };
    EXPECT_EQ(std::ranges::count_if(draft.areas, isClosed), 1);
  }
}

TEST(OsmReader, aDoorThatIsClosedToThePublicJoinsNothing) {
  const DrawnOsm::Tags shut{{"door", "yes"}, {"level", "0"}, {"access", "private"}};
  DrawnOsm drawn = smallHouse();
  drawn.area(3, {{10, 3}, {12, 3}, {14, 3}, {14, 8}, {10, 8}}, room("0", "Vault"));
  const std::int64_t door = drawn.point({12, 3}, shut);
  const Draft draft = draftOf(drawn);
  EXPECT_EQ(placeNamed(draft, "Vault"), nullptr);
  EXPECT_NE(placeNamed(draft, "Shop"), nullptr);
  EXPECT_THAT(toldLines(draft), UnorderedElementsAre("way/3 unreached",
                                                     "node/" + std::to_string(door) + " noAccess"));
  EXPECT_EQ(draft.doors.size(), 2U) << "it is drawn";
}

TEST(OsmReader, noWayLeadsThroughADoorThatIsClosedToThePublic) {
  for (const char* const access : {"customers", "private"}) {
    DrawnOsm drawn = smallHouse();
    drawn.area(3, {{10, 3}, {12, 3}, {14, 3}, {14, 8}, {10, 8}}, room("0", "Vault"));
    drawn.point({12, 3}, {{"door", "yes"}, {"access", access}});
    drawn.line(4, {{12, 1}, {12, 3}, {12, 6}}, {{"highway", "footway"}, {"level", "0"}});
    EXPECT_EQ(isJoined(draftOf(drawn), "Shop", "Vault"), access == std::string("customers"));
  }
}

TEST(OsmReader, aWallOfItsOwnIsNotOpenedByADoorThatIsClosedToThePublic) {
  for (const char* const access : {"yes", "no"}) {
    DrawnOsm drawn;
    drawn.area(1, {{0, 0}, {12, 0}, {20, 0}, {20, 3}, {12, 3}, {0, 3}}, corridor("0"));
    drawn.box(2, {0, 3, 5, 8}, room("0", "Shop"));
    drawn.box(3, {14, 3, 19, 8}, room("0", "Cafe"));
    drawn.line(4, {{12, 0}, {12, 1.5}, {12, 3}}, {{"indoor", "wall"}, {"level", "0"}});
    drawn.point({12, 1.5}, {{"door", "yes"}, {"level", "0"}, {"access", access}});
    EXPECT_EQ(isJoined(draftOf(drawn), "Shop", "Cafe"), access == std::string("yes"));
  }
}

TEST(OsmReader, stairsBehindADoorThatIsClosedToThePublicAreNotEntered) {
  DrawnOsm drawn = twoFloors();
  drawn.area(3, {{10, 3}, {12, 3}, {14, 3}, {14, 8}, {10, 8}},
             {{"room", "stairs"}, {"level", "0;1"}});
  drawn.point({12, 3}, {{"door", "yes"}, {"level", "0;1"}, {"access", "no"}});
  EXPECT_FALSE(isJoined(draftOf(drawn), "Shop", "Office"));
}

TEST(OsmReader, whatIsClosedToThePublicAsAWholeIsRefusedWithTheReason) {
  DrawnOsm::Tags closed = corridor("0");
  closed.emplace_back("access", "private");
  const ReadDraft read = readOf(DrawnOsm().box(1, {0, 0, 20, 3}, closed));
  ASSERT_TRUE(read.error);
  EXPECT_THAT(*read.error, HasSubstr("access=private"));
}

TEST(OsmReader, aLiftThatIsClosedToThePublicLeadsNowhere) {
  DrawnOsm drawn = twoFloors();
  drawn.point({15, 1}, {{"highway", "elevator"}, {"level", "0;1"}, {"access", "private"}});
  drawn.box(3, {10, 3, 12, 5}, {{"room", "elevator"}, {"level", "0;1"}, {"access", "private"}});
  drawn.point({11, 4}, {{"highway", "elevator"}, {"level", "0;1"}});
  const Draft draft = draftOf(drawn);
  EXPECT_THAT(climbs(draft), IsEmpty());
  EXPECT_THAT(toldLines(draft), Contains("way/3 noAccess"));
}

TEST(OsmReader, aDoorInAWallOfItsOwnIsNotTold) {
  DrawnOsm drawn = twoFloors();
  drawn.line(3, {{12, 0}, {12, 1.5}, {12, 3}}, {{"indoor", "wall"}, {"level", "0"}});
  drawn.point({12, 1.5}, {{"door", "yes"}, {"level", "0"}});
  EXPECT_THAT(toldLines(draftOf(drawn)), Not(Contains(testing::EndsWith("unreached"))));
}

TEST(OsmReader, footwayGoesInByTheNodeThatItSharesWithAWall) {
  DrawnOsm open;
  open.area(1, {{0, 0}, {20, 0}, {20, 3}, {10, 3}, {5, 3}, {0, 3}}, corridor("0"));
  open.area(2, {{0, 3}, {5, 3}, {5, 8}, {3, 8}, {0, 8}}, room("0", "Shop"));
  open.line(3, {{2, 12}, {3, 10}, {3, 8}, {3, 6}}, {{"highway", "footway"}, {"level", "0"}});
  const Draft draft = draftOf(open);
  ASSERT_NE(wayOf(draft, "way/3"), nullptr);
  EXPECT_EQ(wayOf(draft, "way/3")->bends.size(), 1U);
  ASSERT_NE(placeNamed(draft, "Shop"), nullptr);
  const auto reached = reachedFrom(draft, wayOf(draft, "way/3")->from);
  EXPECT_TRUE(reached.contains(placeNamed(draft, "Shop")->nodes.front()));
}

TEST(OsmReader, footwaysOutdoorsComeInWhereTheyLeadToADoor) {
  DrawnOsm drawn;
  drawn.area(1, {{0, 0}, {20, 0}, {20, 3}, {0, 3}, {0, 1}}, corridor("0"));
  drawn.point({0, 1}, {{"entrance", "main"}});
  drawn.line(3, {{0, 1}, {-30, 1}}, {{"highway", "footway"}});
  drawn.line(4, {{-30, 1}, {-40, 9}}, {{"highway", "footway"}});
  drawn.line(5, {{-30, 30}, {-40, 39}}, {{"highway", "footway"}});
  drawn.line(6, {{-40, 9}, {-400, 9}}, {{"highway", "footway"}});
  drawn.line(7, {{-40, 9}, {-50, 9}}, {{"highway", "footway"}, {"layer", "-1"}});
  const Draft draft = draftOf(drawn);
  EXPECT_NE(wayOf(draft, "way/3"), nullptr);
  EXPECT_NE(wayOf(draft, "way/4"), nullptr);
  for (const char* const other : {"way/5", "way/6", "way/7"}) {
    EXPECT_EQ(wayOf(draft, other), nullptr) << other;
  }
  EXPECT_TRUE(std::ranges::any_of(draft.nodes, &DraftNode::isEntrance));
  EXPECT_EQ(reachedFrom(draft, 0).size(), draft.nodes.size());
  EXPECT_THAT(toldLines(draft), ElementsAre("others notIndoors"));
}

TEST(OsmReader, anEntranceWithoutALevelIsOnTheGroundThoughOthersAreDrawnOverItsNode) {
  DrawnOsm drawn;
  drawn.area(1, {{0, 0}, {20, 0}, {20, 1}, {20, 3}, {0, 3}}, corridor("0"));
  drawn.area(2, {{0, 0}, {20, 0}, {20, 1}, {20, 3}, {0, 3}}, corridor("1"));
  drawn.box(3, {5, 3, 9, 9}, {{"room", "stairs"}, {"level", "0;1"}});
  drawn.point({20, 1}, {{"entrance", "main"}, {"name", "East"}});
  const Draft draft = draftOf(drawn);
  EXPECT_EQ(std::ranges::count_if(draft.nodes, &DraftNode::isEntrance), 1);
  ASSERT_NE(placeNamed(draft, "East"), nullptr);
  EXPECT_EQ(draft.floors[placeNamed(draft, "East")->floor].ordinal, 0);
}

TEST(OsmReader, anEntranceBesideAnOutlineNeedsNoLevel) {
  DrawnOsm drawn = smallHouse();
  drawn.point({20.3, 1}, {{"entrance", "main"}, {"name", "East"}});
  drawn.point({60, 1}, {{"entrance", "yes"}, {"name", "Next door"}});
  const Draft draft = draftOf(drawn);
  EXPECT_NE(placeNamed(draft, "East"), nullptr);
  EXPECT_EQ(placeNamed(draft, "Next door"), nullptr);
  EXPECT_THAT(toldLines(draft), ElementsAre("others notIndoors"));
}

TEST(OsmReader, oneStepsOverARaisedKerb) {
  DrawnOsm drawn = smallHouse();
  drawn.line(3, {{0, 1}, {-10, 1}, {-20, 1}, {-30, 1}}, {{"highway", "footway"}, {"level", "0"}});
  drawn.line(4, {{-30, 1}, {-40, 1}}, {{"highway", "footway"}, {"level", "0"}});
  drawn.point({-10, 1}, {{"barrier", "kerb"}, {"kerb", "raised"}});
  drawn.point({-40, 1}, {{"barrier", "kerb"}, {"kerb", "lowered"}});
  const Draft draft = draftOf(drawn);
  EXPECT_TRUE(wayOf(draft, "way/3")->hasSteps);
  EXPECT_FALSE(wayOf(draft, "way/4")->hasSteps);
}

TEST(OsmReader, wallParts) {
  DrawnOsm drawn;
  drawn.box(1, {0, 0, 20, 4}, corridor("0"));
  drawn.line(9, {{10, -1}, {10, 5}}, {{"indoor", "wall"}, {"level", "0"}});
  for (const double x : {2.0, 18.0}) {
    drawn.point({x, 2}, {{"amenity", "atm"}, {"level", "0"}, {"name", x < 9 ? "W" : "E"}});
  }
  EXPECT_FALSE(isJoined(draftOf(drawn), "W", "E"));
  EXPECT_EQ(draftOf(drawn).walls.size(), 1U);
}

TEST(OsmReader, doorOpensAWall) {
  DrawnOsm drawn;
  drawn.box(1, {0, 0, 20, 4}, corridor("0"));
  drawn.line(9, {{10, -1}, {10, 2}, {10, 5}}, {{"indoor", "wall"}, {"level", "0"}});
  drawn.point({10, 2}, {{"door", "yes"}, {"width", "1.2"}});
  for (const double x : {2.0, 18.0}) {
    drawn.point({x, 2}, {{"amenity", "atm"}, {"level", "0"}, {"name", x < 9 ? "W" : "E"}});
  }
  EXPECT_TRUE(isJoined(draftOf(drawn), "W", "E"));
}

TEST(OsmReader, nobodyWalksThroughColumns) {
  DrawnOsm drawn;
  drawn.box(1, {0, 0, 20, 4}, corridor("0"));
  drawn.box(2, {9, 0, 11, 4}, {{"indoor", "column"}, {"level", "0"}});
  for (const double x : {2.0, 18.0}) {
    drawn.point({x, 2}, {{"amenity", "atm"}, {"level", "0"}, {"name", x < 9 ? "W" : "E"}});
  }
  EXPECT_FALSE(isJoined(draftOf(drawn), "W", "E"));
}

TEST(OsmReader, nobodyWalksThroughTheHoleOfAMultipolygon) {
  DrawnOsm drawn;
  drawn.line(1, {{0, 0}, {30, 0}, {30, 20}}, {});
  drawn.line(2, {{0, 0}, {0, 20}, {30, 20}}, {});
  drawn.box(3, {2, 2, 28, 18}, {});
  drawn.relation(4, {{1, "outer"}, {2, "outer"}, {3, "inner"}},
                 {{"type", "multipolygon"}, {"indoor", "corridor"}, {"level", "0"}});
  drawn.point({1, 1}, {{"amenity", "atm"}, {"level", "0"}, {"name", "A"}});
  drawn.point({29, 19}, {{"amenity", "atm"}, {"level", "0"}, {"name", "B"}});
  const Draft draft = draftOf(drawn);
  EXPECT_TRUE(isJoined(draft, "A", "B"));
  for (const DraftNode& node : draft.nodes) {
    const Point middle = draft.plane.at(test::DrawnNetwork::globe({15, 10}));
    EXPECT_FALSE(std::abs(node.at.x - middle.x) < 12.5 && std::abs(node.at.y - middle.y) < 7.5);
  }
}

TEST(OsmReader, tagsOfTheOnlyOuterWayAreThoseOfItsMultipolygon) {
  DrawnOsm drawn;
  drawn.box(1, {0, 0, 30, 20}, corridor("0"));
  drawn.box(2, {2, 2, 28, 18}, {});
  drawn.relation(4, {{1, "outer"}, {2, "inner"}}, {{"type", "multipolygon"}});
  drawn.point({1, 1}, {{"amenity", "atm"}, {"level", "0"}});
  const Draft draft = draftOf(drawn);
  ASSERT_EQ(draft.areas.size(), 1U);
  EXPECT_EQ(draft.areas[0].id, "relation/4");
}

TEST(OsmReader, toiletsAndTheLikeAreAmenities) {
  DrawnOsm drawn = smallHouse();
  drawn.box(3, {10, 3, 14, 8},
            {{"indoor", "room"}, {"level", "0"}, {"amenity", "toilets"}, {"wheelchair", "yes"}});
  drawn.point({18, 1}, {{"amenity", "atm"}, {"level", "0"}, {"name", "Bank"}});
  const Draft draft = draftOf(drawn);
  std::vector<std::string> amenities;
  for (const DraftPlace& place : draft.places) {
    if (place.names.empty()) amenities.push_back(draft.categories[place.category].id);
  }
  EXPECT_THAT(amenities, UnorderedElementsAre("restroom", "restroom.wheelchair", "atm"));
  EXPECT_NE(placeNamed(draft, "Bank"), nullptr);
}

TEST(OsmReader, toiletsForWheelchairsMaySaySoInTheirOwnKey) {
  DrawnOsm drawn = smallHouse();
  drawn.point({16, 1}, {{"amenity", "toilets"}, {"level", "0"}, {"toilets:wheelchair", "yes"}});
  drawn.point({18, 1}, {{"amenity", "toilets"},
                        {"level", "0"},
                        {"toilets:wheelchair", "no"},
                        {"wheelchair", "yes"}});
  const Draft draft = draftOf(drawn);
  std::vector<std::string> amenities;
  for (const DraftPlace& place : draft.places) {
    if (place.names.empty()) amenities.push_back(draft.categories[place.category].id);
  }
  EXPECT_THAT(amenities, UnorderedElementsAre("restroom", "restroom", "restroom.wheelchair"));
}

TEST(OsmReader, shopThatIsANodeInARoomIsReachedByItsDoor) {
  DrawnOsm drawn = smallHouse();
  drawn.point({4, 7}, {{"shop", "books"}, {"level", "0"}, {"name", "Books"}});
  const Draft draft = draftOf(drawn);
  ASSERT_NE(placeNamed(draft, "Books"), nullptr);
  EXPECT_EQ(placeNamed(draft, "Books")->nodes, placeNamed(draft, "Shop")->nodes);
}

TEST(OsmReader, entranceWithANameIsSomewhereToGo) {
  DrawnOsm named;
  named.area(1, {{0, 0}, {20, 0}, {20, 1}, {20, 3}, {5, 3}, {0, 3}}, corridor("0"));
  named.point({20, 1}, {{"entrance", "main"}, {"name", "East"}});
  const Draft draft = draftOf(named);
  ASSERT_NE(placeNamed(draft, "East"), nullptr);
  EXPECT_TRUE(draft.nodes[placeNamed(draft, "East")->nodes.front()].isEntrance);
}

TEST(OsmReader, corridorsThatTouchAreOne) {
  DrawnOsm drawn;
  drawn.box(1, {0, 0, 20, 4}, corridor("0"));
  drawn.box(2, {20, 0, 24, 30}, {{"indoor", "area"}, {"level", "0"}});
  drawn.point({1, 2}, {{"amenity", "atm"}, {"level", "0"}, {"name", "A"}});
  drawn.point({22, 29}, {{"amenity", "atm"}, {"level", "0"}, {"name", "B"}});
  EXPECT_TRUE(isJoined(draftOf(drawn), "A", "B"));
}

TEST(OsmReader, roomsDrawnOverACorridorAreNotWalkedThrough) {
  DrawnOsm drawn;
  drawn.box(1, {0, 0, 20, 4}, corridor("0"));
  drawn.box(2, {9, 0, 11, 4}, {{"indoor", "room"}, {"level", "0"}, {"access", "no"}});
  drawn.point({1, 2}, {{"amenity", "atm"}, {"level", "0"}, {"name", "A"}});
  drawn.point({19, 2}, {{"amenity", "atm"}, {"level", "0"}, {"name", "B"}});
  const Draft draft = draftOf(drawn);
  EXPECT_FALSE(isJoined(draft, "A", "B"));
  EXPECT_THAT(toldLines(draft), Contains("way/2 noAccess"));
}

TEST(OsmReader, squareOfAMallJoinsItsBuildings) {
  DrawnOsm drawn;
  drawn.area(1, {{0, 0}, {60, 0}, {60, 10}, {60, 20}, {0, 20}, {0, 10}},
             {{"shop", "mall"}, {"name", "Two Halls"}});
  drawn.point({0, 10}, {{"entrance", "yes"}, {"level", "0"}});
  drawn.point({60, 10}, {{"entrance", "yes"}, {"level", "0"}});
  drawn.box(2, {5, 2, 20, 18}, {{"building", "retail"}});
  drawn.box(3, {40, 2, 55, 18}, {{"building", "retail"}});
  drawn.box(4, {10, 2, 20, 18}, room("0", "West"));
  drawn.box(5, {40, 2, 50, 18}, room("0", "East"));
  const Draft draft = draftOf(drawn);
  EXPECT_TRUE(isJoined(draft, "West", "East"));
  EXPECT_EQ(nameIn(draft.names, ""), "Two Halls");
}

TEST(OsmReader, buildingWithMostRoomsNamesTheVenue) {
  DrawnOsm drawn = smallHouse();
  drawn.box(7, {-2, -2, 22, 10},
            {{"building", "yes"},
             {"name", "Town Hall"},
             {"addr:street", "Main Street"},
             {"addr:housenumber", "5"},
             {"addr:city", "Bern"}});
  drawn.box(8, {40, -2, 42, 10}, {{"building", "yes"}, {"name", "Shed"}});
  const Draft draft = draftOf(drawn);
  EXPECT_EQ(nameIn(draft.names, ""), "Town Hall");
  EXPECT_EQ(draft.buildings[0].address, "Main Street 5, Bern");
}

TEST(OsmReader, aBuildingWithShopsOnItsLevelsIsNoRoom) {
  DrawnOsm drawn = smallHouse();
  drawn.box(7, {-2, -2, 22, 10},
            {{"building", "retail"}, {"shop", "mall"}, {"level", "0-1"}, {"name", "Arcade"}});
  const Draft draft = draftOf(drawn);
  EXPECT_EQ(nameIn(draft.names, ""), "Arcade");
  EXPECT_EQ(placeNamed(draft, "Arcade"), nullptr);
  EXPECT_EQ(draft.floors.size(), 1U);
}

TEST(OsmReader, levelsThatABuildingDoesNotHaveAreNoFloors) {
  DrawnOsm drawn = twoFloors();
  drawn.area(21, {{0, 0}, {20, 0}, {20, 3}, {0, 3}}, corridor("3"));
  drawn.box(3, {14, -4, 17, 0}, {{"room", "elevator"}, {"level", "0-3"}});
  drawn.box(4, {17, -4, 19, 0}, {{"indoor", "room"}, {"level", "0-3"}});
  EXPECT_EQ(draftOf(drawn).floors.size(), 4U);
  drawn.box(7, {-2, -5, 22, 10}, {{"building", "yes"}, {"non_existent_levels", "2"}});
  EXPECT_EQ(draftOf(drawn).floors.size(), 3U);
}

TEST(OsmReader, whereNothingSaysALevelAllOfItLiesOnTheGround) {
  DrawnOsm drawn;
  drawn.box(1, {0, 0, 20, 3}, {{"indoor", "corridor"}});
  drawn.box(2, {0, 3, 5, 8}, {{"indoor", "room"}, {"name", "A"}});
  drawn.box(3, {5, 3, 9, 8}, {{"indoor", "room"}, {"name", "B"}});
  const Draft draft = draftOf(drawn);
  EXPECT_TRUE(isJoined(draft, "A", "B"));
  ASSERT_EQ(draft.floors.size(), 1U);
  EXPECT_EQ(draft.floors[0].ordinal, 0);
  EXPECT_THAT(toldLines(draft), Contains("level 0 noLevels"));
}

TEST(OsmReader, partsOfABuildingGiveItsFloorsTheirShape) {
  DrawnOsm drawn = twoFloors();
  drawn.point({15, 1}, {{"highway", "elevator"}, {"level", "0;1"}});
  drawn.box(7, {0, 0, 40, 10}, {{"building:part", "yes"}, {"level", "1"}});
  const Draft draft = draftOf(drawn);
  ASSERT_EQ(draft.floors.size(), 2U);
  EXPECT_LT(areaOf(draft.floors[0].shapes[0]), 100);
  EXPECT_GT(areaOf(draft.floors[1].shapes[0]), 390);
}

TEST(OsmReader, whatDoesNotComeThroughIsTold) {
  DrawnOsm drawn = smallHouse();
  drawn.box(20, {10, 3, 14, 8}, {{"indoor", "room"}, {"name", "Nowhere"}});
  drawn.box(21, {10, 3, 14, 8}, {{"indoor", "room"}, {"level", "top"}});
  drawn.line(22, {{30, 0}, {31, 0}}, {{"indoor", "room"}, {"level", "0"}});
  drawn.line(23, {{30, 0}, {31, 0}}, {{"highway", "service"}, {"level", "0"}});
  drawn.line(24, {{30, 0}, {31, 0}}, {{"level", "0"}, {"pipe", "yes"}});
  drawn.way(25, {1000, 77, 1001, 78, 1000}, {{"indoor", "room"}, {"level", "0"}});
  drawn.relation(26, {{1, "outer"}}, {{"type", "level"}, {"level", "0"}});
  drawn.relation(27, {{99, "outer"}},
                 {{"type", "multipolygon"}, {"indoor", "room"}, {"level", "0"}});
  drawn.box(28, {90'000, 3, 90'004, 8}, room("0", "Far"));
  drawn.point({18, 1}, {{"level", "0"}, {"colour", "red"}});
  drawn.point({19, 1}, {{"amenity", "atm"}, {"indoor", "yes"}});
  drawn.point({50, 50}, {{"door", "yes"}, {"level", "0"}});
  drawn.point({51, 50}, {{"highway", "elevator"}, {"level", "0"}});
  drawn.point({52, 50}, {{"natural", "tree"}});
  drawn.box(29, {30, 30, 34, 34}, room("0", "Alone"));
  const Draft draft = draftOf(drawn);
  const std::vector<std::string> lines = toldLines(draft);
  for (const char* const line :
       {"way/20 noFloor", "way/21 noFloor", "way/22 noShape", "way/23 notWalked",
        "way/24 unknownKind", "way/25 dangling", "relation/26 notRead", "relation/27 dangling",
        "way/28 noShape", "way/29 unreached", "others notIndoors"}) {
    EXPECT_THAT(lines, Contains(line));
  }
  EXPECT_THAT(lines, Contains(HasSubstr("leadsNowhere")));
  EXPECT_EQ(std::ranges::count_if(lines,
                                  [](const auto& line) {
                                    return line.starts_with("node/") && line.ends_with("unreached");
                                  }),
            1);
  std::set<std::string> ids;
  for (const Oddity& oddity : draft.oddities.told()) {
    EXPECT_TRUE(ids.insert(oddity.id).second) << oddity.id;
    EXPECT_EQ(oddity.why.back(), '.') << oddity.why;
  }
}

TEST(OsmReader, outlineThatCrossesItselfIsWalkedAsFarAsItIsAnArea) {
  DrawnOsm drawn;
  drawn.area(1, {{0, 0}, {20, 10}, {20, 0}, {0, 10}}, corridor("0"));
  drawn.point({3, 5}, {{"amenity", "atm"}, {"level", "0"}, {"name", "A"}});
  const Draft draft = draftOf(drawn);
  EXPECT_NE(placeNamed(draft, "A"), nullptr);
}

TEST(OsmReader, fileWithoutIndoorsIsAnError) {
  DrawnOsm drawn;
  EXPECT_NE(readOf(drawn).error, std::nullopt);
  drawn.line(1, {{0, 0}, {20, 10}}, {{"highway", "footway"}});
  drawn.box(2, {0, 0, 4, 4}, {{"building", "yes"}});
  EXPECT_THAT(*readOf(drawn).error, HasSubstr("lies on a level"));
}

TEST(OsmReader, waysThatComeWithoutTheirNodesAreSaidToDoSo) {
  DrawnOsm drawn;
  drawn.point({2, 4}, {{"door", "yes"}});
  drawn.way(1, {}, {{"indoor", "corridor"}, {"level", "0"}});
  EXPECT_THAT(*readOf(drawn).error, HasSubstr("ask the Overpass API for \"out geom;\""));
}

TEST(OsmReader, moreThingsThanABuildingHasAreAnError) {
  DrawnOsm drawn = smallHouse();
  for (int i = 0; i < 200; ++i) {
    drawn.box(100 + i, {i * 1.0, 20, i + 0.5, 21}, room("-140-140", "Tower"));
  }
  EXPECT_THAT(*readOf(drawn).error, HasSubstr("50000"));
}

// The stairs' longer wall from the corner has nothing behind it.
TEST(OsmReader, aDoorInACornerIsInTheWallToWhatIsBesideIt) {
  DrawnOsm drawn;
  drawn.area(1, {{0, 0}, {20, 0}, {20, 1}, {20, 3}, {20, 4}, {0, 4}},
             {{"indoor", "corridor"}, {"level", "0;1"}});
  drawn.area(2, {{20, 1}, {25, 1}, {25, 3}, {20, 3}}, {{"room", "stairs"}, {"level", "0;1"}});
  drawn.point({20, 3}, {{"door", "yes"}});
  const Draft draft = draftOf(drawn);
  EXPECT_EQ(reachedFrom(draft, 0).size(), draft.nodes.size());
}

TEST(OsmReader, filesOfAFolderAreOne) {
  const test::TemporaryFolder folder;
  std::filesystem::create_directory(folder.at("site"));
  smallHouse().writeTo(folder.at("site/a.osm"));
  smallHouse().writeTo(folder.at("site/b.osm"));
  const ReadDraft read = readOsm(openSource(folder.at("site")).files);
  EXPECT_EQ(read.error, std::nullopt);
  EXPECT_EQ(read.draft.areas.size(), 2U);
  EXPECT_EQ(nameIn(read.draft.names, ""), "site");
}

// A shopping mall above its car park, of real data.
TEST(OsmReader, everyLevelOfARealMallIsReached) {
  const auto data = test::realData();
  if (!data) GTEST_SKIP() << test::noRealData;
  const OpenedSource source = openSource(*data / "osm" / "fire-station.osm");
  ASSERT_EQ(source.error, std::nullopt);
  const ReadDraft read = readOsm(source.files);
  ASSERT_EQ(read.error, std::nullopt);
  const Draft& draft = read.draft;
  ASSERT_EQ(draft.floors.size(), 3U);
  const auto reached = reachedFrom(draft, placeNamed(draft, "H&M")->nodes.front());
  std::set<double> ordinals;
  for (const std::size_t node : reached) {
    ordinals.insert(draft.floors[draft.nodes[node].floor].ordinal);
  }
  EXPECT_THAT(ordinals, ElementsAre(-1, 0, 1));
  std::size_t places = 0;
  for (const DraftPlace& place : draft.places) places += reached.contains(place.nodes.front());
  EXPECT_GE(places, 46U) << "of " << draft.places.size();
  std::set<std::string> ids;
  for (const Oddity& oddity : draft.oddities.told()) EXPECT_TRUE(ids.insert(oddity.id).second);
}

}  // namespace
}  // namespace tern::imports
