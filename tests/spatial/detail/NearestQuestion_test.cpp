// What a search asks of floors and of the graph where the connectors alone do not tell; the rest of
// the search is tested with TernNearestElement.
#include "TernCoreKit/spatial/detail/NearestQuestion.hpp"

#include <gtest/gtest.h>

#include <string>
#include <utility>

#include "TernCoreKit/model/collections/TernAmenityCollection.hpp"
#include "TernCoreKit/model/collections/TernBuildingCollection.hpp"
#include "TernCoreKit/model/collections/TernDestinationCollection.hpp"
#include "TernCoreKit/model/collections/TernMapCollection.hpp"
#include "TernCoreKit/model/records/TernFloor.hpp"
#include "TernCoreKit/spatial/TernNearestElement.hpp"
#include "tests/support/ActiveVenue.hpp"

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

std::string search(const Venue& venue, TernCoordinate at, std::int64_t onMap, std::int64_t id) {
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
  EXPECT_EQ(search(twoBuildingsVenue(), {0, 0}, 1, 7), "C by AC");
  EXPECT_EQ(search(twoBuildingsVenue(), {0, 0}, 3, 7), "E by DE");
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
  EXPECT_EQ(search(venue, {0, 0}, 1, 7), "C by AC");
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
  EXPECT_EQ(search(venue, {0, 0}, 1, 7), "B by AB");
}

}  // namespace
}  // namespace tern::test
