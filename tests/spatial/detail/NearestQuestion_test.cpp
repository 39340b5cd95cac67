// What a search asks of floors and of the graph where the connectors alone do not tell; the rest of
// the search is tested with TernNearestElement.
#include "TernCoreKit/spatial/detail/NearestQuestion.hpp"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <string>
#include <utility>

#include "TernCoreKit/model/collections/TernBuildingCollection.hpp"
#include "TernCoreKit/model/collections/TernDestinationCollection.hpp"
#include "TernCoreKit/model/collections/TernMapCollection.hpp"
#include "TernCoreKit/model/collections/TernPathCollection.hpp"
#include "TernCoreKit/model/records/TernFloor.hpp"
#include "TernCoreKit/spatial/TernNearestElement.hpp"
#include "TernCoreKit/wayfinding/TernASGrid.hpp"
#include "tests/support/ActiveVenue.hpp"
#include "tests/support/CapturedLog.hpp"
#include "tests/support/RandomSite.hpp"

namespace tern::test {
namespace {

using Venue = std::shared_ptr<TernActiveVenue>;

TernElement destination(const Venue& venue, std::int64_t id) {
  return venue->destinations->getById(id);
}

std::string told(const TernNearestElement& nearest, const std::shared_ptr<TernWaypoint>& found) {
  if (found == nullptr) return nearest.error() ? nearest.error()->message : "none";
  return lettersOf({found}) + " by " + lettersOf(nearest.arrayOfPathTypeTaken());
}

// The letter found and the connectors taken, "I by BE"; or the error.
std::string reach(const Venue& venue, char from, std::int64_t toMap, std::int64_t id,
                  std::int64_t level = 100) {
  TernNearestElement nearest;
  nearest.initializeKDTree(venue);
  const auto found = nearest.getNearestElementFrom(waypointAt(*venue, from), toMap,
                                                   {destination(venue, id)}, level);
  return told(nearest, found ? found->waypoint : nullptr);
}

std::string nearestTo(const Venue& venue, TernCoordinate at, std::int64_t onMap, std::int64_t id) {
  TernNearestElement nearest;
  nearest.initializeKDTree(venue);
  std::shared_ptr<TernWaypoint> found;
  nearest.searchNearestElement(destination(venue, id), at, venue->maps->getById(onMap),
                               [&](const auto& waypoint, auto&&...) { found = waypoint; });
  return told(nearest, found);
}

// Two buildings of two floors, and the lift from A to E in the second one: map 1 (A), map 2 (C)
// and map 3 (B, D), map 4 (E).
const Drawing twoBuildings{.floors = {{.lines = {"A"}, .level = 0},
                                      {.lines = {"C"}, .level = 1},
                                      {.lines = {"B D"}, .level = 0},
                                      {.lines = {"E F"}, .level = 1}},
                           .paths = {"D-E Lift", "A-C Lift"},
                           .pathTypes = {{.name = "Lift"}},
                           .destinations = {{.id = 7, .at = "C E"}, {.id = 8, .at = "C"}},
                           .connectors = {{.id = 2, .at = "A C D E"}}};

Venue twoBuildingsVenue() { return assembleVenue(twoBuildings, {{0, 1}, {2, 3}}); }

TEST(NearestQuestion, aLevelIsSearchedInTheStartsOwnBuildingFirst) {
  EXPECT_EQ(nearestTo(twoBuildingsVenue(), {0, 0}, 1, 7), "C by AC");
  EXPECT_EQ(nearestTo(twoBuildingsVenue(), {0, 0}, 3, 7), "E by DE");
}

TEST(NearestQuestion, aLevelIsSearchedInTheOtherBuildingsToo) {
  const Venue venue = assembleVenue({.floors = {{.lines = {"A"}, .level = 0},
                                                {.lines = {"B"}, .level = 1},
                                                {.lines = {"C"}, .level = 1}},
                                     .paths = {"A-C Lift"},
                                     .pathTypes = {{.name = "Lift"}},
                                     .destinations = {{.id = 7, .at = "C"}},
                                     .connectors = {{.id = 2, .at = "A C"}}},
                                    {{0, 1}, {2}});
  EXPECT_EQ(nearestTo(venue, {0, 0}, 1, 7), "C by AC");
}

// The lift leads past a floor of the start's own building to one of the other, and on from there.
TEST(NearestQuestion, aStepEntersTheFirstFloorOfTheLevelThatTheConnectorLeadsTo) {
  const Venue venue = assembleVenue({.floors = {{.lines = {"A"}, .level = 0},
                                                {.lines = {"B"}, .level = 1},
                                                {.lines = {"C"}, .level = 1},
                                                {.lines = {"D"}, .level = 2}},
                                     .paths = {"A-C Lift", "C-D Lift"},
                                     .pathTypes = {{.name = "Lift"}},
                                     .destinations = {{.id = 7, .at = "D"}},
                                     .connectors = {{.id = 2, .at = "A C D"}}},
                                    {{0, 1}, {2, 3}});
  EXPECT_EQ(reach(venue, 'A', 4, 7), "D by ACCD");
}

// From C the lift leads to both floors of level 2.
TEST(NearestQuestion, aStepEntersTheTargetBeforeOtherFloorsOfItsLevel) {
  const Venue venue = assembleVenue({.floors = {{.lines = {"A"}, .level = 0},
                                                {.lines = {"C"}, .level = 1},
                                                {.lines = {"D"}, .level = 2},
                                                {.lines = {"E"}, .level = 2}},
                                     .paths = {"A-C Lift", "C-D Lift", "C-E Lift"},
                                     .pathTypes = {{.name = "Lift"}},
                                     .destinations = {{.id = 7, .at = "E"}},
                                     .connectors = {{.id = 2, .at = "A C D E"}}},
                                    {{0, 1, 2}, {3}});
  EXPECT_EQ(reach(venue, 'A', 4, 7), "E by ACCE");
}

TEST(NearestQuestion, aFloorWithoutALevelIsSearchedAsLevelZero) {
  const Venue venue = assembleVenue({.floors = {{.lines = {"A"}, .level = 1}, {.lines = {"B"}}},
                                     .paths = {"A-B Lift"},
                                     .pathTypes = {{.name = "Lift"}},
                                     .destinations = {{.id = 7, .at = "B"}},
                                     .connectors = {{.id = 2, .at = "A B"}}});
  venue->buildings->getFloorByMap(venue->maps->getById(2))->level = Value();
  EXPECT_EQ(nearestTo(venue, {0, 0}, 1, 7), "B by AB");
}

// --- What the connectors miss ---

Venue built(Venue venue) {
  venue->loadGridData();
  venue->loadKDTree();
  return venue;
}

// Two buildings without a lift between them: B is a door to C.
//
//   map 1   A  B      map 2   C  D  E      map 3 (upstairs)   F  G
const Drawing twoHouses{
    .floors = {{.lines = {"A  B"}, .level = 0},
               {.lines = {"C  D  E"}, .level = 0},
               {.lines = {"F  G"}, .level = 1}},
    .paths = {"A-B", "B-C", "C-D", "D-E", "E-F Stairs", "F-G"},
    .pathTypes = {{.name = "Stairs", .weight = 5, .accessibility = 60}},
    .destinations = {{.id = 7, .at = "ED"}, {.id = 8, .at = "G"}, {.id = 9, .at = "A"}}};

Venue twoHousesVenue() { return built(assembleVenue(twoHouses, {{0}, {1, 2}})); }

TEST(NearestQuestion, theGraphFindsWhatNoConnectorLeadsTo) {
  EXPECT_EQ(reach(twoHousesVenue(), 'A', 2, 7), "D by BC");
  EXPECT_EQ(reach(twoHousesVenue(), 'A', 3, 8), "G by BCEF");
}

TEST(NearestQuestion, theGraphFindsTheAcceptableWaypointThatIsCheapestToReach) {
  EXPECT_EQ(reach(twoHousesVenue(), 'F', 2, 7), "E by FE");
}

TEST(NearestQuestion, theGraphIsSearchedAtTheCallersOwnAccessibility) {
  EXPECT_EQ(reach(twoHousesVenue(), 'A', 3, 8, 60), "G by BCEF");
  EXPECT_EQ(reach(twoHousesVenue(), 'A', 3, 8, 59),
            "No path type found to reach to the searched element");
}

TEST(NearestQuestion, fromAPointTheGraphIsSearchedFromItsClosestWaypointAtEverybodysLevel) {
  EXPECT_EQ(nearestTo(twoHousesVenue(), {29, 4}, 1, 8), "G by BCEF");
}

// Destination 7 is on the start's level in the other building; 9 is there and upstairs.
TEST(NearestQuestion, fromAPointTheOtherBuildingsFloorOfTheStartsLevelIsSearchedLast) {
  Drawing drawing = twoHouses;
  drawing.destinations = {{.id = 7, .at = "ED"}, {.id = 9, .at = "C G"}};
  const Venue venue = built(assembleVenue(drawing, {{0}, {1, 2}}));
  EXPECT_EQ(nearestTo(venue, {0, 0}, 1, 7), "D by BC");
  EXPECT_EQ(nearestTo(venue, {0, 0}, 1, 9), "G by BCEF");
}

TEST(NearestQuestion, aRoutesLengthIsMeasuredInStraightLinesAlongItsChangesOfMap) {
  const Venue venue = twoHousesVenue();
  const auto found = venue->nearestElement()->getNearestElementFrom(waypointAt(*venue, 'A'), 3,
                                                                    {destination(venue, 8)}, 100);
  ASSERT_TRUE(found);
  EXPECT_EQ(found->totalDistance, 30 + 60 + 30);
}

TEST(NearestQuestion, whereAConnectorLeadsThereItsAnswerStands) {
  // The lift enters at E, the door at C is cheaper and nearer to the goal.
  const Venue venue = built(assembleVenue({.floors = {{.lines = {"A"}}, {.lines = {"D  C    E"}}},
                                           .paths = {"A-C", "C-D", "A-E Lift", "C-E"},
                                           .pathTypes = {{.name = "Lift", .weight = 500}},
                                           .destinations = {{.id = 7, .at = "D"}},
                                           .connectors = {{.id = 2, .at = "A E"}}}));
  EXPECT_EQ(reach(venue, 'A', 2, 7), "D by AE");
}

TEST(NearestQuestion, aFloorThatAConnectorReachesInVainIsNotSearchedByTheGraph) {
  const Venue venue = built(assembleVenue({.floors = {{.lines = {"A"}}, {.lines = {"E"}}},
                                           .paths = {"A-E Lift"},
                                           .pathTypes = {{.name = "Lift"}},
                                           .destinations = {{.id = 7, .at = "A"}},
                                           .connectors = {{.id = 2, .at = "A E"}}}));
  EXPECT_EQ(reach(venue, 'A', 2, 7), "none");
}

TEST(NearestQuestion, aWaypointOfIdZeroIsNoGoalOfItsOwn) {
  const Venue venue = assembleVenue(twoHouses, {{0}, {1, 2}});
  waypointAt(*venue, 'C')->id = 0;
  for (const TernMap& map : venue->maps->each()) {
    for (const auto& path : map.paths->getAll()) {
      for (Value& id : path->waypointIds.items()) {
        if (id == Value(idOf('C'))) id = 0;
      }
    }
  }
  // The maps know C by its old id, and so do not tell where the way leaves the second one.
  EXPECT_EQ(reach(built(venue), 'F', 1, 9), "A by FE");
}

TEST(NearestQuestion, theGraphEndsOnlyWhereTheDelegateAccepts) {
  struct OnlyAtE : TernNearestElementDelegate {
    bool isConditionPassedWithWaypoint(const std::shared_ptr<TernWaypoint>& waypoint) override {
      return waypoint->id.integer() == idOf('E');
    }
  };
  const Venue venue = twoHousesVenue();
  const auto nearest = venue->nearestElement()->another();
  nearest->delegate = std::make_shared<OnlyAtE>();
  const auto found =
      nearest->getNearestElementFrom(waypointAt(*venue, 'A'), 2, {destination(venue, 7)}, 100);
  ASSERT_TRUE(found);
  EXPECT_EQ(lettersOf({found->waypoint}), "E");
}

TEST(NearestQuestion, theGraphGoesRoundWhatIsBlocked) {
  const Venue venue = twoHousesVenue();
  const auto grid = venue->globalASGrid();
  grid->shouldBlockEdgeBetweenNode(*grid->getNodeById(idOf('D')), *grid->getNodeById(idOf('E')),
                                   true);
  EXPECT_EQ(reach(venue, 'A', 3, 8), "No path type found to reach to the searched element");
}

TEST(NearestQuestion, theGraphReachesAMapThatNoFloorShows) {
  const Venue venue = assembleVenue(twoHouses, {{0}, {1, 2}});
  venue->buildings->getFloorByMap(venue->maps->getById(3))->map = Value();
  EXPECT_EQ(reach(built(venue), 'A', 3, 8), "G by BCEF");
}

// --- Laws ---

bool routeReaches(const TernActiveVenue& venue, const std::shared_ptr<TernWaypoint>& from,
                  const TernDestination& wanted, std::int64_t mapId, std::int64_t level) {
  return std::ranges::any_of(wanted.waypoints, [&](const auto& waypoint) {
    return waypoint->mapId.integer() == mapId && !venue.wayfind(from, waypoint, level).empty();
  });
}

// A start whose floor has no level is asked from in vain.
RC_GTEST_PROP(NearestQuestion, whatARouteReachesIsFound, ()) {
  CapturedLog log;
  Tape tape(*tapes());
  const Venue venue = randomSite(tape);
  const auto from = randomWaypoint(tape, *venue);
  const std::int64_t level = randomSiteLevel(tape);
  const auto floor = venue->buildings->getFloorByMap(venue->maps->getById(from->mapId.integer()));
  RC_PRE(!floor->level.isAbsent());
  for (const auto& wanted : venue->destinations->getAll()) {
    for (const TernMap& map : venue->maps->each()) {
      const std::int64_t mapId = map.id.integer();
      if (!routeReaches(*venue, from, *wanted, mapId, level)) continue;
      const auto found =
          venue->nearestElement()->another()->getNearestElementFrom(from, mapId, {wanted}, level);
      RC_ASSERT(found.has_value());
      RC_ASSERT(found->waypoint->mapId.integer() == mapId);
    }
  }
  log.take();
}

}  // namespace
}  // namespace tern::test
