#include "tools/import/osm/OsmCodes.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tern::imports {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using Tags = std::vector<OsmTags::Tag>;

OsmAreaMeaning areaOf(Tags tags) {
  const auto meaning = osmAreaMeaning(OsmTags(std::move(tags)));
  EXPECT_TRUE(meaning);
  return meaning.value_or(OsmAreaMeaning());
}

OsmWalkMeaning walkOf(Tags tags) {
  const auto meaning = osmWalkMeaning(OsmTags(std::move(tags)));
  EXPECT_TRUE(meaning);
  return meaning.value_or(OsmWalkMeaning());
}

TEST(OsmCodes, roomsHaveWallsCorridorsHaveNone) {
  EXPECT_TRUE(areaOf({{"indoor", "room"}}).isWalled);
  EXPECT_FALSE(areaOf({{"indoor", "corridor"}}).isWalled);
  EXPECT_FALSE(areaOf({{"indoor", "area"}}).isWalled);
  EXPECT_TRUE(areaOf({{"room", "office"}}).isWalled);
}

TEST(OsmCodes, areasAreDrawnAsWhatTheyAre) {
  EXPECT_EQ(areaOf({{"indoor", "room"}}).drawn, AreaKind::room);
  EXPECT_EQ(areaOf({{"indoor", "corridor"}}).drawn, AreaKind::way);
  EXPECT_EQ(areaOf({{"indoor", "room"}, {"shop", "books"}}).drawn, AreaKind::shop);
  EXPECT_EQ(areaOf({{"indoor", "room"}, {"shop", "vacant"}}).drawn, AreaKind::room);
  EXPECT_EQ(areaOf({{"indoor", "room"}, {"amenity", "cafe"}}).drawn, AreaKind::shop);
  EXPECT_EQ(areaOf({{"indoor", "room"}, {"room", "toilet"}}).drawn, AreaKind::toilets);
  EXPECT_EQ(areaOf({{"amenity", "parking"}, {"level", "-1"}}).drawn, AreaKind::outdoors);
  EXPECT_EQ(areaOf({{"indoor", "room"}, {"access", "private"}}).drawn, AreaKind::closed);
}

TEST(OsmCodes, whatNobodyMayEnterIsNotWalked) {
  EXPECT_FALSE(areaOf({{"indoor", "room"}, {"access", "no"}}).isWalked);
  EXPECT_FALSE(areaOf({{"indoor", "room"}, {"access", "private"}}).isWalked);
  EXPECT_FALSE(areaOf({{"room", "elevator"}, {"access", "private"}}).isWalked);
  EXPECT_TRUE(areaOf({{"indoor", "room"}, {"access", "customers"}}).isWalked);
  EXPECT_TRUE(areaOf({{"indoor", "room"}, {"access", "private"}, {"foot", "yes"}}).isWalked);
}

TEST(OsmCodes, moversByAnyOfTheirTags) {
  EXPECT_EQ(areaOf({{"indoor", "corridor"}, {"stairs", "yes"}}).link, LinkKind::stairs);
  EXPECT_EQ(areaOf({{"room", "stairs"}}).link, LinkKind::stairs);
  EXPECT_EQ(areaOf({{"stairs", "yes"}, {"level", "0;1"}}).link, LinkKind::stairs);
  EXPECT_EQ(areaOf({{"indoor", "room"}, {"elevator", "yes"}}).link, LinkKind::lift);
  EXPECT_EQ(areaOf({{"highway", "elevator"}}).link, LinkKind::lift);
  EXPECT_EQ(areaOf({{"indoor", "room"}, {"stairs", "yes"}, {"conveying", "yes"}}).link,
            LinkKind::escalator);
  EXPECT_EQ(areaOf({{"indoor", "corridor"}, {"conveying", "forward"}}).link,
            LinkKind::movingWalkway);
  EXPECT_EQ(areaOf({{"indoor", "corridor"}, {"ramp", "yes"}}).link, LinkKind::ramp);
}

TEST(OsmCodes, onlyALiftThatSaysSoIsStepFree) {
  EXPECT_EQ(areaOf({{"room", "elevator"}, {"wheelchair", "yes"}}).link, LinkKind::stepFreeLift);
  EXPECT_EQ(areaOf({{"room", "elevator"}, {"wheelchair", "limited"}}).link, LinkKind::lift);
  EXPECT_EQ(areaOf({{"room", "elevator"}, {"wheelchair", "no"}}).link, LinkKind::lift);
}

TEST(OsmCodes, whatIsNoAreaOfABuilding) {
  EXPECT_FALSE(osmAreaMeaning(OsmTags(Tags{{"building", "yes"}})));
  EXPECT_FALSE(osmAreaMeaning(OsmTags(Tags{{"landuse", "grass"}})));
  EXPECT_FALSE(osmAreaMeaning(OsmTags(Tags{{"amenity", "parking"}})));
}

TEST(OsmCodes, waysThatPeopleWalk) {
  EXPECT_EQ(walkOf({{"highway", "footway"}}).kind, LinkKind::walkway);
  EXPECT_EQ(walkOf({{"highway", "corridor"}}).kind, LinkKind::walkway);
  EXPECT_EQ(walkOf({{"highway", "steps"}}).kind, LinkKind::stairs);
  EXPECT_EQ(walkOf({{"highway", "footway"}, {"incline", "4%"}}).kind, LinkKind::ramp);
  EXPECT_FALSE(osmWalkMeaning(OsmTags(Tags{{"highway", "service"}})));
  EXPECT_FALSE(osmWalkMeaning(OsmTags(Tags{{"highway", "footway"}, {"access", "no"}})));
  EXPECT_FALSE(osmWalkMeaning(OsmTags(Tags{{"highway", "footway"}, {"access", "private"}})));
  EXPECT_FALSE(osmWalkMeaning(OsmTags(Tags{{"highway", "footway"}, {"foot", "private"}})));
  EXPECT_TRUE(osmWalkMeaning(
      OsmTags(Tags{{"highway", "footway"}, {"access", "private"}, {"foot", "permissive"}})));
}

TEST(OsmCodes, conveyingSaysWhichWayAnEscalatorRuns) {
  EXPECT_EQ(walkOf({{"highway", "steps"}, {"conveying", "forward"}}).kind, LinkKind::escalator);
  EXPECT_EQ(walkOf({{"highway", "steps"}, {"conveying", "forward"}}).direction, Direction::forward);
  EXPECT_EQ(walkOf({{"highway", "steps"}, {"conveying", "backward"}}).direction,
            Direction::backward);
  EXPECT_EQ(walkOf({{"highway", "steps"}, {"conveying", "reversible"}}).direction, Direction::both);
  EXPECT_EQ(walkOf({{"highway", "footway"}, {"conveying", "yes"}}).kind, LinkKind::movingWalkway);
  EXPECT_EQ(walkOf({{"highway", "steps"}, {"conveying", "no"}}).kind, LinkKind::stairs);
}

TEST(OsmCodes, inclineSaysWhichEndIsUp) {
  EXPECT_EQ(walkOf({{"highway", "steps"}, {"incline", "up"}}).rises, true);
  EXPECT_EQ(walkOf({{"highway", "steps"}, {"incline", "-12%"}}).rises, false);
  EXPECT_EQ(walkOf({{"highway", "steps"}}).rises, std::nullopt);
}

TEST(OsmCodes, steepRampsAndWaysThatWheelchairsCannotUse) {
  EXPECT_TRUE(walkOf({{"highway", "footway"}, {"incline", "8%"}}).isSteep);
  EXPECT_FALSE(walkOf({{"highway", "footway"}, {"incline", "4.5%"}}).isSteep);
  EXPECT_TRUE(walkOf({{"highway", "footway"}, {"wheelchair", "no"}}).hasSteps);
  EXPECT_FALSE(walkOf({{"highway", "steps"}, {"wheelchair", "no"}}).hasSteps);
}

TEST(OsmCodes, detailsAreAsTheSourceHasThem) {
  const Value details = osmDetails(OsmTags(Tags{{"width", "1.5 m"}, {"step_count", "12"}}));
  EXPECT_EQ(details["width"].text(), "1.5 m");
  EXPECT_EQ(details["steps"].text(), "12");
  EXPECT_EQ(details.size(), 2U);
}

TEST(OsmCodes, doorsAndTheirWidths) {
  EXPECT_TRUE(isOsmDoor(OsmTags(Tags{{"door", "no"}})));
  EXPECT_TRUE(isOsmDoor(OsmTags(Tags{{"entrance", "main"}})));
  EXPECT_FALSE(isOsmDoor(OsmTags(Tags{{"amenity", "atm"}})));
  EXPECT_DOUBLE_EQ(osmDoorMetres(OsmTags(Tags{{"door", "yes"}, {"width", "2.5"}})), 2.5);
  EXPECT_DOUBLE_EQ(osmDoorMetres(OsmTags(Tags{{"door", "yes"}, {"width", "900"}})), 0.9);
  EXPECT_DOUBLE_EQ(osmDoorMetres(OsmTags(Tags{{"door", "yes"}})), 0.9);
}

TEST(OsmCodes, namesInTheirLanguages) {
  const Names names = osmNames(OsmTags(Tags{{"name", "Bahnhof"},
                                            {"name:en", "Station"},
                                            {"name:zh-Hant", "車站"},
                                            {"name:etymology", "Hof"},
                                            {"name:left", "L"}}));
  ASSERT_EQ(names.size(), 3U);
  EXPECT_EQ(nameIn(names, "en"), "Station");
  EXPECT_EQ(nameIn(names, "zh-Hant"), "車站");
  EXPECT_EQ(nameIn(names, "fr"), "Bahnhof");
}

TEST(OsmCodes, numberOfARoomStandsForItsName) {
  EXPECT_EQ(nameIn(osmNames(OsmTags(Tags{{"ref", "1.23"}})), "en"), "1.23");
  EXPECT_EQ(nameIn(osmNames(OsmTags(Tags{{"ref", "1.23"}, {"name", "Lab"}})), "en"), "Lab");
  EXPECT_TRUE(osmNames(OsmTags()).empty());
}

TEST(OsmCodes, numberOfARoomWithANameIsAKeyword) {
  EXPECT_THAT(osmKeywords(OsmTags(Tags{{"ref", "1.23"}, {"name", "Lab"}})), ElementsAre("1.23"));
  EXPECT_THAT(osmKeywords(OsmTags(Tags{{"ref", "1.23"}})), IsEmpty());
  EXPECT_THAT(osmKeywords(OsmTags(Tags{{"ref", "1.23"}, {"name", "1.23"}})), IsEmpty());
  EXPECT_THAT(osmKeywords(OsmTags(Tags{{"name", "Lab"}})), IsEmpty());
}

TEST(OsmCodes, categories) {
  EXPECT_EQ(osmCategory(OsmTags(Tags{{"amenity", "toilets"}})), "restroom");
  EXPECT_EQ(osmCategory(OsmTags(Tags{{"shop", "books"}})), "shopping");
  EXPECT_EQ(osmCategory(OsmTags(Tags{{"amenity", "library"}})), "library");
  EXPECT_EQ(osmCategory(OsmTags(Tags{{"indoor", "room"}, {"room", "classroom"}})), "classroom");
  EXPECT_EQ(osmCategory(OsmTags(Tags{{"entrance", "main"}})), "entry");
  EXPECT_EQ(osmCategory(OsmTags(Tags{{"highway", "footway"}})), "");
  EXPECT_TRUE(isOsmFacility("restroom"));
  EXPECT_FALSE(isOsmFacility("shopping"));
}

}  // namespace
}  // namespace tern::imports
