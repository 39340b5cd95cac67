#include "tools/import/gtfs/StationDraft.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>

#include "tests/tools/import/DrawnDraft.hpp"
#include "tests/tools/import/gtfs/DrawnFeed.hpp"
#include "tools/import/gtfs/GtfsReader.hpp"

namespace tern::imports {
namespace {

using test::DrawnFeed;
using test::toldLines;
using testing::ElementsAre;
using testing::IsEmpty;

Draft draftOf(const DrawnFeed& feed) {
  const test::TemporaryFolder folder;
  feed.writeTo(folder, "feed");
  ReadStations read = readGtfs(openSource(folder.at("feed")).files, {.station = "s"});
  EXPECT_EQ(read.error, std::nullopt);
  if (read.drafts.empty()) return {};
  return std::move(read.drafts.front());
}

// A door on the street and a platform below it.
DrawnFeed halt() {
  DrawnFeed feed;
  feed.station("s").level("street", "0", "Street").level("tracks", "-1", "Tracks");
  feed.entrance("door", DrawnFeed::Metres{0, 0}, "street");
  return feed.platform("1", DrawnFeed::Metres{40, 0}, "tracks");
}

LinkKind kindOfMode(int mode, const DrawnFeed::Way& way = {}) {
  return draftOf(halt().way("w", "door", "1", mode, way)).links.front().kind;
}

TEST(StationDraft, modesAreKindsOfLinks) {
  EXPECT_EQ(kindOfMode(2), LinkKind::stairs);
  EXPECT_EQ(kindOfMode(3), LinkKind::movingWalkway);
  EXPECT_EQ(kindOfMode(4), LinkKind::escalator);
  EXPECT_EQ(kindOfMode(5), LinkKind::stepFreeLift);
  EXPECT_EQ(kindOfMode(6), LinkKind::gate);
  EXPECT_EQ(kindOfMode(7), LinkKind::gate);
}

TEST(StationDraft, modeThatIsNotKnownIsAWayOfUnknownKind) {
  const Draft draft = draftOf(halt().way("w", "door", "1", 9));
  EXPECT_EQ(draft.links.front().kind, LinkKind::unknown);
  EXPECT_THAT(toldLines(draft), ElementsAre("w unknownKind"));
}

TEST(StationDraft, walkBetweenLevelsOrWithASlopeIsARamp) {
  EXPECT_EQ(kindOfMode(1), LinkKind::ramp);
  DrawnFeed flat = halt();
  flat.node("n", DrawnFeed::Metres{9, 0}, "street").way("w", "door", "n", 1);
  flat.way("v", "n", "door", 1, {.slope = "0.1"});
  const Draft draft = draftOf(flat);
  EXPECT_EQ(draft.links[0].kind, LinkKind::walkway);
  EXPECT_EQ(draft.links[1].kind, LinkKind::ramp);
  EXPECT_TRUE(draft.links[1].isSteep);
}

TEST(StationDraft, stepsMakeNothingStepFree) {
  const Draft walk = draftOf(halt().way("w", "door", "1", 1, {.steps = "3"}));
  EXPECT_EQ(walk.links.front().kind, LinkKind::walkway);
  EXPECT_TRUE(walk.links.front().hasSteps);
  EXPECT_TRUE(draftOf(halt().way("w", "door", "1", 6, {.steps = "3"})).links.front().hasSteps);
  EXPECT_EQ(kindOfMode(5, {.steps = "2"}), LinkKind::lift);
}

TEST(StationDraft, wheelchairFieldMakesALiftOneThatIsNotStepFree) {
  DrawnFeed feed = halt();
  feed.stop("n", 3, DrawnFeed::Metres{5, 5}, {.level = "tracks", .wheelchair = "2"});
  EXPECT_EQ(draftOf(feed.way("w", "door", "n", 5)).links.front().kind, LinkKind::lift);
}

TEST(StationDraft, wheelchairFieldOfTheStationHoldsForItsParts) {
  DrawnFeed feed;
  feed.stop("s", 1, DrawnFeed::Metres{}, {.name = "Mill", .parent = {}, .wheelchair = "2"});
  feed.entrance("a", DrawnFeed::Metres{0, 0}).platform("b", DrawnFeed::Metres{5, 0});
  EXPECT_EQ(draftOf(feed.way("w", "a", "b", 5)).links.front().kind, LinkKind::lift);
}

TEST(StationDraft, wayThereAndWayBackAreOneLink) {
  DrawnFeed feed = halt();
  feed.way("down", "door", "1", 2, {.isBothWays = false, .steps = "-20", .sign = "Trains"});
  feed.way("up", "1", "door", 2, {.isBothWays = false, .steps = "20", .sign = "Street"});
  const Draft draft = draftOf(feed);
  ASSERT_EQ(draft.links.size(), 1U);
  EXPECT_EQ(draft.links[0].direction, Direction::both);
  EXPECT_EQ(draft.links[0].records, 2);
  EXPECT_EQ(draft.links[0].details["steps"].number(), 20);
  EXPECT_EQ(draft.links[0].details["signpostedAs"].text(), "Trains");
  EXPECT_EQ(draft.links[0].details["wayBack"]["id"].text(), "up");
  EXPECT_EQ(draft.links[0].details["wayBack"]["signpostedAs"].text(), "Street");
  EXPECT_THAT(toldLines(draft), IsEmpty());
}

TEST(StationDraft, fareGateAndExitGateAreOneAndEscalatorsAreTwo) {
  DrawnFeed feed = halt();
  feed.node("n", DrawnFeed::Metres{9, 0}, "street");
  feed.way("in", "door", "n", 6, {.isBothWays = false});
  feed.way("out", "n", "door", 7, {.isBothWays = false});
  feed.way("up", "1", "n", 4, {.isBothWays = false});
  feed.way("down", "n", "1", 4, {.isBothWays = false});
  const Draft draft = draftOf(feed);
  ASSERT_EQ(draft.links.size(), 3U);
  EXPECT_EQ(draft.links[0].direction, Direction::both);
  EXPECT_EQ(draft.links[1].direction, Direction::forward);
  EXPECT_EQ(draft.links[2].direction, Direction::forward);
}

TEST(StationDraft, exitGateLetsNobodyIn) {
  EXPECT_EQ(draftOf(halt().way("out", "1", "door", 7)).links.front().direction, Direction::forward);
}

TEST(StationDraft, anExitGateIsTheWayBackOfAFareGateWhateverTheFeedSays) {
  DrawnFeed feed = halt();
  feed.node("n", DrawnFeed::Metres{9, 0}, "street");
  feed.way("in", "door", "n", 6, {.isBothWays = false}).way("out", "n", "door", 7);
  const Draft draft = draftOf(feed);
  ASSERT_EQ(draft.links.size(), 1U);
  EXPECT_EQ(draft.links[0].direction, Direction::both);
}

TEST(StationDraft, wayIsTheWayBackOfOneOnly) {
  DrawnFeed feed = halt();
  feed.way("a", "door", "1", 2, {.isBothWays = false});
  feed.way("b", "1", "door", 2, {.isBothWays = false});
  feed.way("c", "1", "door", 2, {.isBothWays = false});
  const Draft draft = draftOf(feed);
  ASSERT_EQ(draft.links.size(), 2U);
  EXPECT_EQ(draft.links[1].direction, Direction::forward);
}

TEST(StationDraft, levelsOfOneIndexAreOneFloor) {
  DrawnFeed feed = halt().level("lower", "-1", "Passage");
  feed.node("n", DrawnFeed::Metres{9, 0}, "lower").way("w", "door", "1", 2).way("v", "1", "n", 1);
  const Draft draft = draftOf(feed);
  ASSERT_EQ(draft.floors.size(), 2U);
  EXPECT_EQ(draft.floors[0].ordinal, -1);
  EXPECT_EQ(nameIn(draft.floors[0].names, "en"), "Passage, Tracks");
  EXPECT_EQ(nameIn(draft.floors[0].shortNames, "en"), "-1");
}

TEST(StationDraft, levelThatIsCalledLikeAnotherAddsNothingToTheNameOfTheFloor) {
  DrawnFeed feed = halt().level("a", "-1", "On tracks").level("b", "-1", "Track");
  feed.node("n", DrawnFeed::Metres{9, 0}, "a").node("m", DrawnFeed::Metres{9, 9}, "b");
  feed.way("w", "door", "1", 2).way("v", "1", "n", 1).way("u", "n", "m", 1);
  EXPECT_EQ(nameIn(draftOf(feed).floors[0].names, "en"), "On tracks, Track");
}

TEST(StationDraft, feedWithoutLevelsHasThemFromItsPathways) {
  DrawnFeed feed;
  feed.station("s").entrance("a", DrawnFeed::Metres{0, 0}).platform("b", DrawnFeed::Metres{9, 0});
  const Draft draft = draftOf(feed.way("w", "a", "b", 2));
  ASSERT_EQ(draft.floors.size(), 2U);
  EXPECT_EQ(draft.floors[draft.nodes[0].floor].ordinal, 0);
  EXPECT_EQ(draft.floors[draft.nodes[1].floor].ordinal, -1);
  EXPECT_THAT(toldLines(draft), ElementsAre("s noLevels"));
}

TEST(StationDraft, stopWithoutALevelIsTold) {
  DrawnFeed feed =
      halt().node("n", DrawnFeed::Metres{9, 0}).node("m", DrawnFeed::Metres{9, 9}, "no");
  feed.way("w", "door", "1", 2).way("v", "1", "n", 1).way("u", "1", "m", 1);
  const Draft draft = draftOf(feed);
  EXPECT_EQ(draft.floors.size(), 2U);
  EXPECT_THAT(toldLines(draft), ElementsAre("m dangling", "n noLevel"));
}

TEST(StationDraft, nodeWithoutCoordinatesIsPlacedAndTold) {
  DrawnFeed feed = halt().node("n", std::nullopt, "tracks");
  feed.way("w", "door", "n", 2, {.length = "10"}).way("v", "n", "1", 1, {.length = "30"});
  const Draft draft = draftOf(feed);
  EXPECT_NEAR(draft.nodes[2].at.x - draft.nodes[0].at.x, 10, 0.1);
  EXPECT_NEAR(draft.nodes[1].at.x - draft.nodes[0].at.x, 40, 0.1);
  EXPECT_FALSE(draft.nodes[2].globe);
  EXPECT_TRUE(draft.nodes[0].globe);
  EXPECT_THAT(toldLines(draft), ElementsAre("n placed"));
}

TEST(StationDraft, stopFarFromItsStationIsPlaced) {
  DrawnFeed feed = halt().node("n", DrawnFeed::Metres{40'000, 0}, "tracks");
  feed.way("w", "door", "1", 2).way("v", "1", "n", 1, {.length = "5"});
  const Draft draft = draftOf(feed);
  EXPECT_NEAR(std::hypot(draft.nodes[2].at.x - draft.nodes[1].at.x,
                         draft.nodes[2].at.y - draft.nodes[1].at.y),
              5, 0.01);
  EXPECT_THAT(toldLines(draft), ElementsAre("n far"));
}

TEST(StationDraft, endsAtOnePointAndRingsAreTold) {
  DrawnFeed feed = halt().node("n", DrawnFeed::Metres{40, 0}, "tracks");
  feed.way("w", "door", "1", 2).way("v", "1", "n", 1).way("u", "n", "n", 1);
  const Draft draft = draftOf(feed);
  EXPECT_EQ(draft.links.size(), 2U);
  EXPECT_THAT(toldLines(draft), ElementsAre("v zeroLength", "u zeroLength"));
}

TEST(StationDraft, platformsAndEntrancesAreDestinations) {
  const Draft draft = draftOf(halt().way("w", "door", "1", 2));
  ASSERT_EQ(draft.places.size(), 2U);
  EXPECT_EQ(nameIn(draft.places[0].names, "en"), "Door door");
  EXPECT_EQ(draft.categories[draft.places[0].category].id, "entrance");
  EXPECT_EQ(nameIn(draft.places[1].names, "en"), "Track 1");
  EXPECT_EQ(draft.categories[draft.places[1].category].id, "platform");
  EXPECT_TRUE(draft.nodes[0].isEntrance);
}

TEST(StationDraft, platformIsReachedByItsBoardingAreas) {
  DrawnFeed feed = halt();
  feed.stop("1A", 4, std::nullopt, {.name = "A", .parent = "1"});
  const Draft draft = draftOf(feed.way("w", "door", "1A", 2));
  ASSERT_EQ(draft.places.size(), 3U);
  EXPECT_EQ(draft.places[1].id, "1");
  EXPECT_THAT(draft.places[1].nodes, ElementsAre(1));
  EXPECT_EQ(draft.floors[draft.nodes[1].floor].ordinal, -1);
}

TEST(StationDraft, gatesAndLiftsAreAmenitiesOnBothSides) {
  const Draft draft = draftOf(halt().way("w", "door", "1", 5));
  ASSERT_EQ(draft.places.size(), 4U);
  EXPECT_THAT(draft.places[2].names, IsEmpty());
  EXPECT_EQ(draft.categories[draft.places[2].category].id, "lift");
  EXPECT_THAT(draft.places[3].nodes, ElementsAre(1));
}

TEST(StationDraft, stopThatNoPathwayLeadsToIsTold) {
  const Draft draft =
      draftOf(halt().platform("2", DrawnFeed::Metres{9, 9}, "tracks").way("w", "door", "1", 2));
  EXPECT_EQ(draft.nodes.size(), 2U);
  EXPECT_THAT(toldLines(draft), ElementsAre("2 unconnected"));
}

}  // namespace
}  // namespace tern::imports
