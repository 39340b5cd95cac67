#include "tools/import/write/VenuePlan.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <set>

#include "tools/import/write/PathTypes.hpp"

namespace tern::imports {
namespace {

using testing::ElementsAre;

// Two floors, one above the other, and nodes "a", "b", ... at the places.
Draft draftOf(const std::vector<std::pair<std::size_t, Point>>& nodes) {
  Draft draft;
  draft.plane = LocalPlane({139.5, 35.5});
  draft.names = {{"ja", "駅"}, {"en", "Station"}};
  draft.language = "ja";
  draft.buildings.push_back({"station", {}, {}});
  draft.floors.resize(2);
  draft.floors[0].id = "ground";
  draft.floors[1].id = "upstairs";
  draft.floors[1].ordinal = 1;
  for (const auto& [floor, at] : nodes) {
    DraftNode node;
    node.id = std::string(1, static_cast<char>('a' + draft.nodes.size()));
    node.floor = floor;
    node.at = at;
    draft.nodes.push_back(node);
  }
  return draft;
}

DraftLink linkOf(std::string id, std::size_t from, std::size_t to,
                 LinkKind kind = LinkKind::walkway) {
  DraftLink link;
  link.id = std::move(id);
  link.from = from;
  link.to = to;
  link.kind = kind;
  return link;
}

VenuePlan planOf(const Draft& draft, const VenueWishes& wishes = {}) {
  IdTable ids;
  return planVenue(draft, wishes, ids);
}

DraftPlace placeOf(std::string id, Names names, std::vector<std::size_t> nodes) {
  DraftPlace place;
  place.id = std::move(id);
  place.names = std::move(names);
  place.nodes = std::move(nodes);
  return place;
}

TEST(VenuePlan, bendsOfAWalkBecomeWaypoints) {
  Draft draft = draftOf({{0, {0, 0}}, {0, {20, 20}}});
  draft.links = {linkOf("ab", 0, 1)};
  draft.links[0].bends = {{20, 0}};
  const VenuePlan plan = planOf(draft);
  ASSERT_EQ(plan.waypoints.size(), 3U);
  EXPECT_EQ(plan.waypoints[2].externalId, "ab#1");
  EXPECT_EQ(plan.waypoints[2].at, plan.placement.onMap({20, 0}));
  ASSERT_EQ(plan.paths.size(), 2U);
  EXPECT_EQ(plan.paths[0].externalId, "ab");
  EXPECT_EQ(plan.paths[1].externalId, "ab#2");
  EXPECT_EQ(plan.paths[0].to, 2U);
  EXPECT_EQ(plan.paths[1].to, 1U);
  EXPECT_EQ(plan.paths[0].pathType, walkwayType);
}

TEST(VenuePlan, longWaysThatCostByThePieceAreCut) {
  Draft draft = draftOf({{0, {0, 0}}, {0, {8, 0}}, {0, {8, 8000}}});
  draft.links = {linkOf("ab", 0, 1, LinkKind::stairs), linkOf("bc", 1, 2, LinkKind::unknown)};
  const VenuePlan plan = planOf(draft);
  const auto pieces = [&](std::size_t link) {
    return std::ranges::count(plan.paths, link, &PlannedPath::link);
  };
  EXPECT_EQ(pieces(0), 4);
  EXPECT_EQ(pieces(1), 100);
}

TEST(VenuePlan, liftOnOneFloorIsOnePiece) {
  Draft draft = draftOf({{0, {0, 0}}, {0, {30, 0}}});
  draft.links = {linkOf("ab", 0, 1, LinkKind::lift)};
  EXPECT_EQ(planOf(draft).paths.size(), 1U);
}

TEST(VenuePlan, oneWayBetweenFloorsIsUpOrDown) {
  Draft draft = draftOf({{0, {0, 0}}, {1, {8, 0}}});
  draft.links = {linkOf("up", 0, 1, LinkKind::escalator), linkOf("down", 1, 0, LinkKind::escalator),
                 linkOf("back", 0, 1, LinkKind::escalator), linkOf("both", 0, 1, LinkKind::stairs)};
  draft.links[0].direction = Direction::forward;
  draft.links[1].direction = Direction::forward;
  draft.links[2].direction = Direction::backward;
  const VenuePlan plan = planOf(draft);
  ASSERT_EQ(plan.paths.size(), 4U);
  EXPECT_EQ(plan.paths[0].direction, 1);
  EXPECT_EQ(plan.paths[1].direction, 2);
  EXPECT_EQ(plan.paths[2].direction, 2);
  EXPECT_EQ(plan.paths[3].direction, 0);
  EXPECT_TRUE(plan.oddities.told().empty());
}

TEST(VenuePlan, oneWayOnOneFloorIsWalkedBothWaysAndTold) {
  Draft draft = draftOf({{0, {0, 0}}, {0, {8, 0}}});
  draft.links = {linkOf("ab", 0, 1)};
  draft.links[0].direction = Direction::forward;
  const VenuePlan plan = planOf(draft);
  EXPECT_EQ(plan.paths[0].direction, 0);
  ASSERT_EQ(plan.oddities.told().size(), 1U);
  EXPECT_EQ(plan.oddities.told()[0].id, "ab");
  EXPECT_EQ(plan.oddities.told()[0].kind, "one-way");
}

TEST(VenuePlan, bendThatIsCalledLikeANodeOfTheSourceIsAWaypointOfItsOwn) {
  Draft draft = draftOf({{0, {0, 0}}, {0, {20, 20}}, {0, {40, 20}}});
  draft.nodes[2].id = "ab#1";
  draft.links = {linkOf("ab", 0, 1), linkOf("ab#2", 1, 2)};
  draft.links[0].bends = {{20, 0}};
  const VenuePlan plan = planOf(draft);
  ASSERT_EQ(plan.waypoints.size(), 4U);
  EXPECT_EQ(plan.waypoints[2].externalId, "ab#1");
  EXPECT_EQ(plan.waypoints[3].externalId, "ab#1#");
  EXPECT_NE(plan.waypoints[3].id, plan.waypoints[2].id);
  ASSERT_EQ(plan.paths.size(), 3U);
  EXPECT_EQ(plan.paths[1].externalId, "ab#2#");
  EXPECT_EQ(plan.paths[2].externalId, "ab#2");
  EXPECT_NE(plan.paths[1].id, plan.paths[2].id);
}

TEST(VenuePlan, climbWithBendsIsOnePathAndTold) {
  Draft draft = draftOf({{0, {0, 0}}, {1, {8, 0}}});
  draft.links = {linkOf("ab", 0, 1, LinkKind::stairs)};
  draft.links[0].bends = {{4, 4}};
  const VenuePlan plan = planOf(draft);
  EXPECT_EQ(plan.paths.size(), 1U);
  EXPECT_EQ(plan.waypoints.size(), 2U);
  ASSERT_EQ(plan.oddities.told().size(), 1U);
  EXPECT_EQ(plan.oddities.told()[0].kind, "bends");
}

TEST(VenuePlan, linksAreCountedByKind) {
  Draft draft = draftOf({{0, {0, 0}}, {1, {8, 0}}, {0, {40, 0}}});
  draft.links = {linkOf("a", 0, 1, LinkKind::stairs), linkOf("b", 0, 2),
                 linkOf("c", 0, 2, LinkKind::stairs)};
  const VenuePlan plan = planOf(draft);
  EXPECT_EQ(plan.kinds[static_cast<std::size_t>(LinkKind::stairs)], 2);
  EXPECT_EQ(plan.kinds[static_cast<std::size_t>(LinkKind::walkway)], 1);
}

TEST(VenuePlan, placesOfOneNameAreOneDestination) {
  Draft draft = draftOf({{0, {0, 0}}, {1, {8, 0}}});
  draft.categories = {{"exit", {{"en", "Exit"}}}, {"gate", {{"en", "Gate"}}}};
  draft.places = {placeOf("p", {{"en", "Harbour"}}, {0}), placeOf("q", {{"en", "Harbour"}}, {1, 0}),
                  placeOf("r", {{"en", "Hill"}}, {1})};
  draft.places[1].category = 1;
  const VenuePlan plan = planOf(draft);
  ASSERT_EQ(plan.destinations.size(), 2U);
  EXPECT_THAT(plan.destinations[0].waypoints, ElementsAre(0, 1));
  EXPECT_EQ(plan.destinations[0].externalId, "p");
  EXPECT_THAT(plan.waypoints[1].destinations,
              ElementsAre(plan.destinations[0].id, plan.destinations[1].id));
}

TEST(VenuePlan, aDestinationIsFoundByTheKeywordsOfAllItsPlaces) {
  Draft draft = draftOf({{0, {0, 0}}, {1, {8, 0}}});
  draft.categories = {{"room", {{"en", "Room"}}}};
  draft.places = {placeOf("p", {{"en", "Lab"}}, {0}), placeOf("q", {{"en", "Lab"}}, {1}),
                  placeOf("r", {{"en", "Lab"}}, {1})};
  draft.places[0].keywords = {"A001"};
  draft.places[1].keywords = {"A101"};
  draft.places[2].keywords = {"A001"};
  const VenuePlan plan = planOf(draft);
  ASSERT_EQ(plan.destinations.size(), 1U);
  EXPECT_THAT(plan.destinations[0].keywords, ElementsAre("A001", "A101"));
}

TEST(VenuePlan, placesWithoutANameAreAmenitiesOfTheirCategory) {
  Draft draft = draftOf({{0, {0, 0}}, {1, {8, 0}}});
  draft.categories = {{"toilets", {{"en", "Toilets"}, {"ja", "トイレ"}}}};
  draft.places = {placeOf("p", {}, {0}), placeOf("q", {}, {1}), placeOf("r", {}, {1})};
  const VenuePlan plan = planOf(draft);
  ASSERT_EQ(plan.amenities.size(), 1U);
  EXPECT_EQ(plan.amenities[0].externalId, "toilets");
  EXPECT_THAT(plan.amenities[0].waypoints, ElementsAre(0, 1));
  EXPECT_TRUE(plan.destinations.empty());
}

TEST(VenuePlan, colonsInExternalIdsAreWrittenOut) {
  EXPECT_EQ(externalIdOf("stop:70:in"), "stop%3A70%3Ain");
  Draft draft = draftOf({{0, {0, 0}}});
  draft.nodes[0].id = "stop:70";
  EXPECT_EQ(planOf(draft).waypoints[0].externalId, "stop%3A70");
}

TEST(VenuePlan, nameAndLanguageAreThoseThatAreWished) {
  const Draft draft = draftOf({{0, {0, 0}}});
  EXPECT_EQ(planOf(draft).name, "駅");
  EXPECT_EQ(planOf(draft, {.language = "en"}).name, "Station");
  EXPECT_EQ(planOf(draft, {.name = "Harbour"}).name, "Harbour");
  EXPECT_EQ(planOf(draft, {.name = "Harbour"}).language, "ja");
}

TEST(VenuePlan, stampChangesWithTheSourceAndTheWishes) {
  Draft draft = draftOf({{0, {0, 0}}});
  std::set<std::int64_t> stamps{planOf(draft).generatedAt, planOf(draft, {.name = "x"}).generatedAt,
                                planOf(draft, {.language = "en"}).generatedAt};
  draft.stamp = 1;
  stamps.insert(planOf(draft).generatedAt);
  EXPECT_EQ(stamps.size(), 4U);
}

}  // namespace
}  // namespace tern::imports
