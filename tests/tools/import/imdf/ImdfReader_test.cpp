#include "tools/import/imdf/ImdfReader.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <zip.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <iterator>
#include <map>
#include <numeric>
#include <set>
#include <string>
#include <vector>

#include "tests/support/RealData.hpp"
#include "tests/support/TemporaryFolder.hpp"
#include "tests/tools/import/DrawnDraft.hpp"
#include "tests/tools/import/imdf/DrawnImdf.hpp"
#include "tests/tools/import/ways/PlainWalks.hpp"
#include "tools/import/ways/PlaneGeometry.hpp"
#include "tools/import/ways/Shapes.hpp"
#include "tools/import/ways/WalkSpace.hpp"

namespace tern::imports {
namespace {

using test::DrawnImdf;
using test::toldLines;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::StartsWith;

ReadDraft readOf(const DrawnImdf& building) { return test::drawnRead(building, "site", readImdf); }

Draft draftOf(const DrawnImdf& building) { return test::drawnDraft(building, "site", readImdf); }

const DraftPlace* placeOf(const Draft& draft, const std::string& id) {
  const auto place = std::ranges::find(draft.places, id, &DraftPlace::id);
  return place == draft.places.end() ? nullptr : &*place;
}

const DraftLink* linkOf(const Draft& draft, const std::string& id) {
  const auto link = std::ranges::find(draft.links, id, &DraftLink::id);
  return link == draft.links.end() ? nullptr : &*link;
}

std::size_t islandsOf(const Draft& draft) {
  std::vector<std::size_t> island(draft.nodes.size());
  std::iota(island.begin(), island.end(), 0U);
  const std::function<std::size_t(std::size_t)> root = [&](std::size_t node) {
    return island[node] == node ? node : island[node] = root(island[node]);
  };
  for (const DraftLink& link : draft.links) island[root(link.from)] = root(link.to);
  std::set<std::size_t> roots;
  for (std::size_t i = 0; i < island.size(); ++i) roots.insert(root(i));
  return roots.size();
}

// A hall with a shop beside it, and a way out.
DrawnImdf shopByAHall() {
  DrawnImdf building;
  building.level("ground", 0);
  building.unit("hall", "ground", "walkway", {0, 0, 20, 5});
  building.unit("shop", "ground", "retail", {0, 5, 10, 12},
                {{"name", Value::map({{"en", "Books"}, {"de", "Bücher"}})}});
  building.opening("exit", "ground", {9, 0}, {11, 0});
  return building.opening("door", "ground", {4.5, 5}, {5.5, 5});
}

TEST(ImdfReader, unitsAndOpeningsBecomeWays) {
  const Draft draft = draftOf(shopByAHall());
  EXPECT_EQ(draft.areas.size(), 2U);
  EXPECT_EQ(draft.doors.size(), 2U);
  EXPECT_EQ(islandsOf(draft), 1U);
  EXPECT_THAT(toldLines(draft), IsEmpty());
  const DraftLink* const way = linkOf(draft, "hall=0");
  ASSERT_NE(way, nullptr);
  EXPECT_NEAR(apart(draft.nodes[way->from].at, draft.nodes[way->to].at), std::hypot(5, 4.26), 0.1);
}

TEST(ImdfReader, whatHasANameIsReachedJustInsideItsDoors) {
  const Draft draft = draftOf(shopByAHall());
  const DraftPlace* const shop = placeOf(draft, "shop");
  ASSERT_NE(shop, nullptr);
  EXPECT_EQ(nameIn(shop->names, "de"), "Bücher");
  ASSERT_EQ(shop->nodes.size(), 1U);
  EXPECT_EQ(draft.nodes[shop->nodes.front()].id, "door>shop");
  EXPECT_EQ(draft.categories[shop->category].id, "retail");
  EXPECT_EQ(placeOf(draft, "hall"), nullptr);
}

TEST(ImdfReader, venueBuildingAndAddressAreTheHead) {
  DrawnImdf building = shopByAHall();
  building.add("venue", "v", Value(), {{"name", DrawnImdf::label("Fair")}});
  building.add("address", "a", Value(), {{"address", "Ring 1"}, {"locality", "Wien"}});
  building.add("building", "b", Value(), {{"name", DrawnImdf::label("East")}, {"address_id", "a"}});
  building.add("building", "c", Value(), {{"address_id", "nowhere"}});
  building.level("first", 1, {{"building_ids", Value::list({"b"})}});
  building.unit("attic", "first", "room", {0, 0, 5, 5}).opening("hatch", "first", {2, 0}, {3, 0});
  const Draft draft = draftOf(building);
  EXPECT_EQ(draft.id, "v");
  EXPECT_EQ(nameIn(draft.names, "en"), "Fair");
  EXPECT_EQ(draft.language, "en");
  ASSERT_EQ(draft.buildings.size(), 2U) << "and the venue itself, for what is in no building";
  EXPECT_EQ(draft.buildings[0].address, "Ring 1, Wien");
  EXPECT_EQ(draft.buildings[draft.floors[1].building].id, "b");
  EXPECT_THAT(toldLines(draft), ElementsAre("c dangling"));
}

TEST(ImdfReader, levelsAreFloorsByTheirOrdinals) {
  DrawnImdf building = shopByAHall();
  building.level("upper", 1.5, {{"short_name", DrawnImdf::label("1½")}});
  building.unit("attic", "upper", "room", {0, 0, 5, 5}).opening("hatch", "upper", {2, 0}, {3, 0});
  building.add("level", "lost", DrawnImdf::box({0, 0, 1, 1}), {{"name", "Lost"}});
  building.level("bare", 7, {{"building_ids", Value::list({"none"})}});
  const Draft draft = draftOf(building);
  ASSERT_EQ(draft.floors.size(), 2U);
  EXPECT_EQ(draft.floors[1].ordinal, 1.5);
  EXPECT_EQ(nameIn(draft.floors[1].shortNames, "en"), "1½");
  EXPECT_EQ(draft.floors[0].shortNames.front().text, "0");
  EXPECT_EQ(nameIn(draft.floors[0].names, "en"), "Level ground");
  EXPECT_THAT(toldLines(draft), ElementsAre("lost noFloor", "bare dangling"));
}

TEST(ImdfReader, unitsOfNoLevelOrShapeAreTold) {
  DrawnImdf building = shopByAHall();
  building.unit("lost", "nowhere", "room", {0, 0, 1, 1});
  building.add("unit", "flat", Value(), {{"level_id", "ground"}, {"category", "room"}});
  building.unit("far", "ground", "room", {90'000, 0, 90'001, 1});
  const Draft draft = draftOf(building);
  EXPECT_EQ(draft.areas.size(), 2U);
  EXPECT_THAT(toldLines(draft), ElementsAre("lost dangling", "flat noShape", "far noShape"));
}

TEST(ImdfReader, openingsOfNoLevelOrLineAreTold) {
  DrawnImdf building = shopByAHall();
  building.opening("lost", "nowhere", {1, 0}, {2, 0});
  building.add("opening", "dot", DrawnImdf::point({1, 0}), {{"level_id", "ground"}});
  building.opening("garden", "ground", {1, 30}, {2, 30});
  const Draft draft = draftOf(building);
  EXPECT_THAT(toldLines(draft), ElementsAre("lost dangling", "dot noShape", "garden unreached"));
}

TEST(ImdfReader, nobodyWalksThroughWhatStandsInTheWay) {
  DrawnImdf building = shopByAHall();
  building.unit("void", "ground", "opentobelow", {7, 1, 8, 4});
  building.add("fixture", "desk", DrawnImdf::box({6, 1.5, 7.5, 4.5}), {{"level_id", "ground"}});
  const Draft draft = draftOf(building);
  EXPECT_EQ(draft.areas.size(), 4U);
  const auto isIn = [](Point at, Box box) { return box.contains(at); };
  const Point origin = draft.areas[0].shapes[0].rings[0][0];
  for (const DraftLink& link : draft.links) {
    for (const double part : {0.1, 0.3, 0.5, 0.7, 0.9}) {
      const Point at = between(draft.nodes[link.from].at, draft.nodes[link.to].at, part) - origin;
      EXPECT_FALSE(isIn(at, {6.1, 1.6, 7.4, 4.4})) << link.id;
      EXPECT_FALSE(isIn(at, {7.1, 1.1, 7.9, 3.9})) << link.id;
    }
  }
  EXPECT_EQ(islandsOf(draft), 1U);
}

TEST(ImdfReader, aUnitInAnotherHasWallsThere) {
  DrawnImdf building = shopByAHall();
  building.unit("booth", "ground", "office", {7, 1, 8, 4}, {{"name", DrawnImdf::label("Booth")}});
  building.opening("hatch", "ground", {7.2, 1}, {7.8, 1});
  const Draft draft = draftOf(building);
  const Point origin = draft.areas[0].shapes[0].rings[0][0];
  const Box walls = Box{7.01, 1.01, 7.99, 3.99};
  for (const DraftLink& link : draft.links) {
    if (link.id.starts_with("booth") || link.id.starts_with("hatch=booth")) continue;
    for (const double part : {0.1, 0.3, 0.5, 0.7, 0.9}) {
      const Point at = between(draft.nodes[link.from].at, draft.nodes[link.to].at, part) - origin;
      EXPECT_FALSE(walls.contains(at)) << link.id;
    }
  }
  EXPECT_NE(placeOf(draft, "booth"), nullptr);
  EXPECT_EQ(islandsOf(draft), 1U);
}

TEST(ImdfReader, oneStandsInFrontOfAKiosk) {
  DrawnImdf building = shopByAHall();
  building.add("kiosk", "coffee", DrawnImdf::box({14, 2, 16, 3}),
               {{"level_id", "ground"}, {"name", DrawnImdf::label("Coffee")}});
  building.add("kiosk", "bare", DrawnImdf::box({1, 1, 2, 2}), {{"level_id", "ground"}});
  const Draft draft = draftOf(building);
  const DraftPlace* const kiosk = placeOf(draft, "coffee");
  ASSERT_NE(kiosk, nullptr);
  ASSERT_EQ(kiosk->nodes.size(), 1U);
  EXPECT_NEAR(apart(draft.nodes[kiosk->nodes[0]].at, kiosk->at), 0.87, 0.05);
  EXPECT_EQ(placeOf(draft, "bare"), nullptr);
  EXPECT_EQ(islandsOf(draft), 1U);
}

TEST(ImdfReader, buildingsAreEnteredFromTheLevelThatIsAroundThem) {
  DrawnImdf building = shopByAHall();
  building.level("outdoors", 0).unit("square", "outdoors", "outdoors", {0, -20, 20, 0});
  building.level("pavilion", 0).unit("stand", "pavilion", "retail", {0, -30, 20, -20});
  building.opening("front", "pavilion", {9, -20}, {11, -20});
  const Draft draft = draftOf(building);
  EXPECT_EQ(draft.floors.size(), 3U);
  EXPECT_EQ(islandsOf(draft), 1U);
}

// Two levels with a unit of the category above each other, entered from a hall on each.
DrawnImdf tower(const char* category, const DrawnImdf::Properties& more = {}) {
  DrawnImdf building;
  for (const double ordinal : {0, 1}) {
    const std::string level = ordinal == 0 ? "low" : "high";
    building.level(level, ordinal).unit(level + " hall", level, "walkway", {0, 0, 20, 5});
    building.unit(level + " mover", level, category, {0, 5, 3, 8}, more);
    building.opening(level + " door", level, {1, 5}, {2, 5});
  }
  return building;
}

TEST(ImdfReader, moversAboveEachOtherLeadFromLevelToLevel) {
  for (const auto& [category, kind] : {std::pair("stairs", LinkKind::stairs),
                                       {"escalator", LinkKind::escalator},
                                       {"elevator", LinkKind::lift},
                                       {"ramp", LinkKind::ramp}}) {
    const Draft draft = draftOf(tower(category));
    const DraftLink* const climb = linkOf(draft, "low mover^high mover");
    ASSERT_NE(climb, nullptr) << category;
    EXPECT_EQ(climb->kind, kind);
    EXPECT_EQ(islandsOf(draft), 1U);
  }
}

TEST(ImdfReader, liftsForWheelchairsAreStepFree) {
  const Draft draft = draftOf(tower("elevator", {{"accessibility", Value::list({"wheelchair"})}}));
  const DraftLink* const climb = linkOf(draft, "low mover^high mover");
  ASSERT_NE(climb, nullptr);
  EXPECT_EQ(climb->kind, LinkKind::stepFreeLift);
}

DrawnImdf::Properties relation(const char* from, const char* to, const char* category,
                               const char* direction) {
  return {{"origin", Value::map({{"id", from}, {"feature_type", "unit"}})},
          {"destination", Value::map({{"id", to}, {"feature_type", "unit"}})},
          {"category", category},
          {"direction", direction}};
}

TEST(ImdfReader, relationshipsSayWhereMoversLeadAndWhichWay) {
  DrawnImdf building = tower("escalator");
  building.add("relationship", "down", Value(),
               relation("high mover", "low mover", "escalator", "directed"));
  const Draft draft = draftOf(building);
  EXPECT_EQ(linkOf(draft, "low mover^high mover"), nullptr);
  const DraftLink* const down = linkOf(draft, "down");
  ASSERT_NE(down, nullptr);
  EXPECT_EQ(down->direction, Direction::forward);
  EXPECT_EQ(draft.floors[draft.nodes[down->from].floor].ordinal, 1);
}

Value reference(const char* unit) { return Value::map({{"id", unit}, {"feature_type", "unit"}}); }

// Lifts over each other on three levels, which one relationship names.
DrawnImdf threeLifts(const DrawnImdf::Properties& ends, const std::vector<const char*>& between) {
  DrawnImdf building;
  for (const auto& [level, ordinal] :
       {std::pair{"low", 0}, std::pair{"mid", 1}, std::pair{"top", 2}}) {
    const std::string name = level;
    building.level(name, ordinal);
    building.unit(name + " hall", name, "walkway", {0, 0, 20, 10});
    building.unit(name + " lift", name, "elevator", {20, 0, 23, 3});
    building.opening(name + " door", name, {20, 1}, {20, 2});
  }
  Value list = Value::list();
  for (const char* const unit : between) list.append(reference(unit));
  DrawnImdf::Properties all = ends;
  all.insert(
      all.end(),
      {{"category", "elevator"}, {"direction", "undirected"}, {"intermediary", std::move(list)}});
  return building.add("relationship", "shaft", Value(), all);
}

TEST(ImdfReader, aLiftStopsAtWhatItsRelationshipNamesBetween) {
  const Value low = reference("low lift");
  const Value top = reference("top lift");
  const std::vector<DrawnImdf> buildings{
      threeLifts({{"origin", top}, {"destination", low}}, {"mid lift"}),
      threeLifts({{"origin", low}, {"destination", Value()}}, {"top lift", "mid lift"}),
      threeLifts({}, {"mid lift", "low lift", "top lift"})};
  for (const DrawnImdf& building : buildings) {
    const Draft draft = draftOf(building);
    EXPECT_EQ(islandsOf(draft), 1U);
    EXPECT_THAT(toldLines(draft), IsEmpty());
  }
}

TEST(ImdfReader, relationshipsThatLeadNowhereOrOneWayOnALevelAreTold) {
  DrawnImdf building = shopByAHall();
  building.add("relationship", "lost", Value(), relation("hall", "pool", "stairs", "undirected"));
  building.add("relationship", "turnstile", Value(),
               relation("hall", "shop", "traversal", "directed"));
  building.add("relationship", "open", Value(),
               relation("hall", "shop", "traversal", "undirected"));
  EXPECT_THAT(toldLines(draftOf(building)), ElementsAre("lost dangling", "turnstile one-way"));
}

TEST(ImdfReader, toiletsAndAmenitiesAreCalledByTheirCategory) {
  DrawnImdf building = shopByAHall();
  building.unit("wc", "ground", "restroom.male", {10, 5, 14, 9}, {{"name", DrawnImdf::label("7")}});
  building.opening("wc door", "ground", {11, 5}, {12, 5});
  building.add("amenity", "cash", DrawnImdf::point({15, 2}),
               {{"category", "atm"}, {"unit_ids", Value::list({"gone", "hall"})}});
  building.add("amenity", "lost", DrawnImdf::point({15, 2}), {{"category", "atm"}});
  building.add("amenity", "dull", Value(), {{"unit_ids", Value::list({"hall"})}});
  const Draft draft = draftOf(building);
  const DraftPlace* const toilets = placeOf(draft, "wc");
  const DraftPlace* const cash = placeOf(draft, "cash");
  ASSERT_TRUE(toilets && cash);
  EXPECT_TRUE(toilets->names.empty());
  EXPECT_TRUE(cash->names.empty());
  EXPECT_EQ(nameIn(draft.categories[cash->category].names, "de"), "Geldautomat");
  EXPECT_LT(apart(draft.nodes[cash->nodes.at(0)].at, cash->at), 0.01) << "in a hall, where it is";
  EXPECT_THAT(toldLines(draft), ElementsAre("lost dangling", "dull noPlace"));
}

TEST(ImdfReader, anAmenityWithANameIsADestinationToo) {
  DrawnImdf building = shopByAHall();
  building.add("amenity", "gate", DrawnImdf::point({15, 2}),
               {{"category", "boardinggate"},
                {"name", DrawnImdf::label("Gate A1")},
                {"unit_ids", Value::list({"hall"})}});
  std::vector<std::string> names;
  for (const DraftPlace& place : draftOf(building).places) {
    if (place.id == "gate") names.emplace_back(nameIn(place.names, "en"));
  }
  EXPECT_THAT(names, ElementsAre("", "Gate A1"));
}

TEST(ImdfReader, anOpeningOfSeveralLinesIsADoorForEach) {
  DrawnImdf building = shopByAHall();
  const Value one = DrawnImdf::line({0, 1}, {0, 2})["coordinates"];
  const Value two = DrawnImdf::line({0, 3}, {0, 4})["coordinates"];
  const std::size_t before = draftOf(building).doors.size();
  building.add("opening", "pair",
               Value::map({{"type", "MultiLineString"}, {"coordinates", Value::list({one, two})}}),
               {{"level_id", "ground"}});
  EXPECT_EQ(draftOf(building).doors.size(), before + 2);
}

TEST(ImdfReader, idsMayBeNumbers) {
  DrawnImdf building;
  building.add("level", "ground", DrawnImdf::box({-9, -9, 9, 9}),
               {{"ordinal", 0}, {"id", "ground"}});
  building.add("unit", "hall", DrawnImdf::box({0, 0, 8, 8}),
               {{"level_id", 7}, {"category", "walkway"}, {"name", DrawnImdf::label("Hall")}});
  building.add("opening", "door", DrawnImdf::line({0, 2}, {0, 4}), {{"level_id", 7}});
  const test::TemporaryFolder folder;
  building.writeTo(folder.at("site"));
  folder.write("site/level.geojson",
               R"({"features":[{"id":7,"feature_type":"level","properties":{"ordinal":0}}]})");
  const ReadDraft read = readImdf(openSource(folder.at("site")).files);
  ASSERT_EQ(read.error, std::nullopt);
  EXPECT_NE(placeOf(read.draft, "hall"), nullptr);
}

TEST(ImdfReader, occupantsAreWhereTheirAnchorsAre) {
  DrawnImdf building = shopByAHall();
  building.add("anchor", "in shop", DrawnImdf::point({5, 8}), {{"unit_id", "shop"}});
  building.add("anchor", "adrift", DrawnImdf::point({5, 8}), {{"unit_id", "gone"}});
  building.add(
      "occupant", "florist", Value(),
      {{"name", DrawnImdf::label("Florist")}, {"category", "shopping"}, {"anchor_id", "in shop"}});
  building.add("occupant", "mute", Value(), {{"anchor_id", "in shop"}});
  building.add("occupant", "lost", Value(), {{"anchor_id", "gone"}});
  building.add("occupant", "homeless", Value(),
               {{"name", DrawnImdf::label("X")}, {"anchor_id", "adrift"}});
  const Draft draft = draftOf(building);
  const DraftPlace* const florist = placeOf(draft, "florist");
  ASSERT_NE(florist, nullptr);
  EXPECT_EQ(draft.nodes[florist->nodes.at(0)].id, "door>shop");
  EXPECT_THAT(toldLines(draft), ElementsAre("mute noName", "lost dangling", "homeless dangling"));
}

TEST(ImdfReader, openingsWithANameAreDestinations) {
  DrawnImdf building = shopByAHall();
  building.add("opening", "main", DrawnImdf::line({0, 0.5}, {0, 4.5}),
               {{"level_id", "ground"},
                {"category", "pedestrian.principal"},
                {"name", DrawnImdf::label("Main entrance")}});
  const Draft draft = draftOf(building);
  const DraftPlace* const main = placeOf(draft, "main");
  ASSERT_NE(main, nullptr);
  EXPECT_EQ(nameIn(main->names, "en"), "Main entrance");
  ASSERT_EQ(main->nodes.size(), 2U) << "it is as wide as two";
  for (const std::size_t node : main->nodes) EXPECT_TRUE(draft.nodes[node].isEntrance);
  EXPECT_EQ(islandsOf(draft), 1U);
}

TEST(ImdfReader, aRoomWithoutADoorIsTold) {
  DrawnImdf building = shopByAHall();
  building.unit("vault", "ground", "room", {15, 20, 18, 22}, {{"name", DrawnImdf::label("Vault")}});
  const Draft draft = draftOf(building);
  EXPECT_EQ(placeOf(draft, "vault"), nullptr);
  EXPECT_THAT(toldLines(draft), ElementsAre("vault unreached"));
}

bool hasOpenEdge(const Draft& draft) {
  return std::ranges::any_of(
      draft.nodes, [](const DraftNode& node) { return node.id.find('|') != node.id.npos; });
}

TEST(ImdfReader, hallsThatTouchWithoutAnOpeningAreOneOpenSpace) {
  DrawnImdf building = shopByAHall();
  building.unit("lobby", "ground", "lobby", {20, 0, 30, 8}, {{"name", DrawnImdf::label("Lobby")}});
  const Draft draft = draftOf(building);
  EXPECT_TRUE(hasOpenEdge(draft));
  EXPECT_EQ(islandsOf(draft), 1U);
  EXPECT_THAT(toldLines(draft), IsEmpty());
}

TEST(ImdfReader, anOpeningBetweenHallsSaysThatTheRestIsAWall) {
  DrawnImdf building = shopByAHall();
  building.unit("lobby", "ground", "lobby", {20, 0, 30, 8});
  building.opening("gate", "ground", {20, 1}, {20, 2});
  EXPECT_FALSE(hasOpenEdge(draftOf(building)));
}

TEST(ImdfReader, aHallAndWhatIsOutdoorsHaveAWallBetween) {
  DrawnImdf building = shopByAHall();
  building.unit("lawn", "ground", "outdoors", {20, 0, 30, 8});
  EXPECT_FALSE(hasOpenEdge(draftOf(building)));
}

TEST(ImdfReader, withoutAnyOpeningsRoomsAreEnteredFromTheirHallAndTold) {
  DrawnImdf building;
  building.level("ground", 0);
  building.unit("hall", "ground", "walkway", {0, 0, 20, 5});
  building.unit("shop", "ground", "retail", {0, 5, 10, 12}, {{"name", DrawnImdf::label("Books")}});
  building.unit("office", "ground", "office", {10, 5, 20, 12}, {{"name", DrawnImdf::label("X")}});
  const Draft draft = draftOf(building);
  EXPECT_NE(placeOf(draft, "shop"), nullptr);
  EXPECT_EQ(islandsOf(draft), 1U);
  EXPECT_THAT(toldLines(draft), ElementsAre("shop noDoor", "office noDoor"));
}

TEST(ImdfReader, categoriesMayBeInCapitals) {
  EXPECT_NE(linkOf(draftOf(tower("Stairs")), "low mover^high mover"), nullptr);
  DrawnImdf building = shopByAHall();
  building.add("amenity", "cash", DrawnImdf::point({15, 2}),
               {{"category", "ATM"}, {"unit_ids", Value::list({"hall"})}});
  const Draft draft = draftOf(building);
  ASSERT_NE(placeOf(draft, "cash"), nullptr);
  EXPECT_EQ(draft.categories[placeOf(draft, "cash")->category].id, "atm");
}

TEST(ImdfReader, detailsAreLinesOfTheDrawingAndNoWalls) {
  DrawnImdf building = shopByAHall();
  building.add("detail", "curb", DrawnImdf::line({0, 1}, {5, 1}), {{"level_id", "ground"}});
  const Value one = DrawnImdf::line({0, 2}, {5, 2})["coordinates"];
  const Value two = DrawnImdf::line({0, 3}, {5, 3})["coordinates"];
  building.add("detail", "marks",
               Value::map({{"type", "MultiLineString"}, {"coordinates", Value::list({one, two})}}),
               {{"level_id", "ground"}});
  const Draft draft = draftOf(building);
  EXPECT_EQ(draft.marks.size(), 3U);
  EXPECT_THAT(draft.walls, IsEmpty()) << "one may walk over them";
}

TEST(ImdfReader, whatAVenueHasNothingOfIsTold) {
  DrawnImdf building = shopByAHall();
  for (const char* const type : {"footprint", "geofence", "section"}) {
    building.add(type, type, DrawnImdf::box({0, 0, 1, 1}), {});
  }
  EXPECT_THAT(toldLines(draftOf(building)),
              ElementsAre("footprint notRead", "geofence notRead", "section notRead"));
}

TEST(ImdfReader, languageIsThatOfMostNamesElseTheManifests) {
  DrawnImdf building = shopByAHall();
  EXPECT_EQ(draftOf(building).language, "en");
  for (const char* const id : {"b", "c", "d"}) {
    building.unit(id, "ground", "room", {0, 0, 1, 1}, {{"name", Value::map({{"de", id}})}});
  }
  EXPECT_EQ(draftOf(building).language, "de");
}

TEST(ImdfReader, anArchiveIsReadAsAFolderIs) {
  const test::TemporaryFolder folder;
  shopByAHall().writeTo(folder.at("site"));
  zip* const archive = zip_open(folder.at("site.zip").c_str(), ZIP_CREATE, nullptr);
  for (const char* const name : {"level.geojson", "opening.geojson", "unit.geojson"}) {
    const std::string file = folder.at(std::string("site/") + name);
    zip_source_t* const source = zip_source_file(archive, file.c_str(), 0, -1);
    ASSERT_GE(zip_file_add(archive, name, source, 0), 0);
  }
  ASSERT_EQ(zip_close(archive), 0);
  const ReadDraft packed = readImdf(openSource(folder.at("site.zip")).files);
  const ReadDraft plain = readImdf(openSource(folder.at("site")).files);
  ASSERT_FALSE(packed.error);
  EXPECT_EQ(packed.draft.links.size(), plain.draft.links.size());
  EXPECT_EQ(packed.draft.stamp, plain.draft.stamp);
}

TEST(ImdfReader, withoutALevelOrAUnitThereIsNoDraft) {
  DrawnImdf bare;
  bare.add("unit", "flat", Value(), {});
  EXPECT_TRUE(readOf(bare).error);
  EXPECT_TRUE(readOf(DrawnImdf().level("ground", 0)).error);
  DrawnImdf solid;
  solid.level("ground", 0).unit("wall", "ground", "structure", {0, 0, 1, 1});
  EXPECT_TRUE(readOf(solid).error);
  DrawnImdf closed;
  closed.level("ground", 0).unit("room", "ground", "room", {0, 0, 1, 1});
  EXPECT_EQ(readOf(closed).error, "nothing of it can be walked: it has no doors");
}

TEST(ImdfReader, whatCouldNotBeReadIsGivenAsTheReason) {
  DrawnImdf lost;
  lost.level("ground", 0).unit("room", "attic", "room", {0, 0, 1, 1});
  const auto error = readOf(lost).error;
  ASSERT_TRUE(error);
  EXPECT_THAT(*error, StartsWith("no unit of it lies on a level and can be walked in; room: "));
}

// A real campus, where it lies.
TEST(ImdfReader, campusHangsTogether) {
  const auto data = test::realData();
  if (!data) GTEST_SKIP() << test::noRealData;
  const ReadDraft read = readImdf(openSource(*data / "imdf" / "campus").files);
  ASSERT_FALSE(read.error);
  EXPECT_EQ(read.draft.areas.size(), 144U);
  EXPECT_EQ(read.draft.doors.size(), 142U);
  EXPECT_EQ(islandsOf(read.draft), 1U);
  EXPECT_THAT(toldLines(read.draft), Not(Contains(testing::EndsWith("unreached"))));
}

// The nodes of a floor, those of its places first, and its ways.
struct FloorNet {
  std::vector<Point> points;
  std::size_t stops = 0;
  std::vector<StraightWay> ways;
};

FloorNet netOf(const Draft& draft, std::size_t floor) {
  FloorNet net;
  std::map<std::size_t, std::uint32_t> indices;
  const auto indexOf = [&](std::size_t node) {
    const auto [known, isNew] = indices.try_emplace(node, net.points.size());
    if (isNew) net.points.push_back(draft.nodes[node].at);
    return known->second;
  };
  for (const DraftPlace& place : draft.places) {
    if (place.floor == floor) indexOf(place.nodes.front());
  }
  net.stops = net.points.size();
  for (const DraftLink& link : draft.links) {
    const DraftNode& from = draft.nodes[link.from];
    const DraftNode& to = draft.nodes[link.to];
    if (from.floor != floor || to.floor != floor) continue;
    net.ways.push_back({indexOf(link.from), indexOf(link.to), apart(from.at, to.at)});
  }
  return net;
}

// What a person's middle can be in, of each area of the floor.
std::vector<Polygon> spacesOf(const Draft& draft, std::size_t floor, const FloorNet& net) {
  std::vector<Polygon> spaces;
  for (const DraftArea& area : draft.areas) {
    if (area.floor != floor) continue;
    for (const Polygon& shape : repaired(area.shapes)) {
      spaces.push_back(ringsOf(walkSpaceOf(shape, net.points)));
    }
  }
  return spaces;
}

// Walks over other floors are left to routes.
void addRatios(const Draft& draft, std::size_t floor, std::vector<double>& ratios) {
  const FloorNet net = netOf(draft, floor);
  const std::vector<Polygon> spaces = spacesOf(draft, floor, net);
  const auto isAtDoor = [&](std::uint32_t node) {
    return std::ranges::none_of(spaces, [&](const Polygon& space) {
      return apart(nearestIn(space, net.points[node]), net.points[node]) < 1e-6;
    });
  };
  std::vector<StraightWay> steps;
  std::ranges::copy_if(net.ways, std::back_inserter(steps), [&](const StraightWay& way) {
    return isAtDoor(way.from) || isAtDoor(way.to);
  });
  const Lengths least = geodesics(spaces, steps, net.points, net.stops);
  const Lengths walked = walks(net.points.size(), net.ways, net.stops);
  for (std::size_t i = 0; i < net.stops; ++i) {
    for (std::size_t k = 0; k < i; ++k) {
      if (least[i][k] < 0.5 || !std::isfinite(least[i][k])) continue;
      ratios.push_back(walked[i][k] / least[i][k]);
    }
  }
}

TEST(ImdfReader, campusWalksAreHardlyLongerThanTheyHaveToBe) {
  const auto data = test::realData();
  if (!data) GTEST_SKIP() << test::noRealData;
  const ReadDraft read = readImdf(openSource(*data / "imdf" / "campus").files);
  std::vector<double> ratios;
  for (std::size_t floor = 0; floor < read.draft.floors.size(); ++floor) {
    addRatios(read.draft, floor, ratios);
  }
  std::ranges::sort(ratios);
  ASSERT_GT(ratios.size(), 500U);
  EXPECT_LE(ratios[ratios.size() / 2], 1.05);
  EXPECT_LE(ratios[ratios.size() * 95 / 100], 1.15);
}

}  // namespace
}  // namespace tern::imports
