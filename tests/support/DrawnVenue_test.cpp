#include "tests/support/DrawnVenue.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <stdexcept>
#include <string_view>

#include "TernCoreKit/model/collections/TernFloorCollection.hpp"
#include "TernCoreKit/model/collections/TernPathCollection.hpp"
#include "TernCoreKit/model/collections/TernWaypointCollection.hpp"
#include "TernCoreKit/platform/Json.hpp"

namespace tern::test {
namespace {

using testing::ElementsAre;

template <class Record>
std::vector<std::int64_t> idsOf(const std::vector<std::shared_ptr<Record>>& records) {
  std::vector<std::int64_t> ids;
  for (const auto& record : records) ids.push_back(record->id.integer());
  return ids;
}

const Drawing drawnFloors{.floors = {{.lines = {"A--B", "   |", "   C"}},
                                     {.lines = {"   a"}, .level = 4, .preference = -2}},
                          .paths = {"C>a stairs up", "A-B-C", "B-a lift"},
                          .pathTypes = {{.name = "lift", .weight = 5},
                                        {.verticalWeight = 7},
                                        {.name = "stairs", .accessibility = 2}}};

TEST(DrawnVenue, waypointsLieWhereTheirLettersStand) {
  const DrawnVenue venue = drawVenue(drawnFloors);
  EXPECT_THAT(idsOf(venue.waypoints), ElementsAre(1, 2, 3, 27));
  EXPECT_EQ(venue.waypoint('C')->coordinates, Value::list({30.0, 20.0}));
  EXPECT_EQ(venue.waypoint('C')->mapId, Value(1));
  EXPECT_EQ(venue.waypoint('a')->mapId, Value(2));
  EXPECT_EQ(venue.waypoint('Z'), nullptr);
}

TEST(DrawnVenue, floorsHaveMapsLevelsAndPreferences) {
  const DrawnVenue venue = drawVenue(drawnFloors);
  EXPECT_EQ(venue.maps->getById(2)->waypoints->getCount(), 1U);
  const auto floors = venue.buildings.at(0)->floors->getAll();
  EXPECT_EQ(floors.at(0)->level, Value(0));
  EXPECT_TRUE(floors.at(0)->preference.isAbsent());
  EXPECT_EQ(floors.at(1)->level, Value(4));
  EXPECT_EQ(floors.at(1)->preference, Value(-2));
  EXPECT_EQ(floors.at(1)->map.record(), venue.maps->getById(2));
}

TEST(DrawnVenue, pathsJoinTheWaypointsTheyNameAndLieOnTheFirstOnesMap) {
  const DrawnVenue venue = drawVenue(drawnFloors);
  EXPECT_THAT(idsOf(venue.paths), ElementsAre(1, 2, 3));
  EXPECT_EQ(venue.maps->getById(1)->paths->getCount(), 3U);
  EXPECT_EQ(venue.paths[0]->waypointIds, Value::list({3, 27}));
  EXPECT_EQ(venue.paths[0]->direction, Value(1));
  EXPECT_EQ(venue.paths[0]->pathTypeId, Value(3));
  EXPECT_EQ(venue.paths[1]->waypointIds, Value::list({1, 2, 3}));
  EXPECT_EQ(venue.paths[1]->pathTypeId, Value(1));
  EXPECT_EQ(venue.paths[2]->pathTypeId, Value(2));
}

TEST(DrawnVenue, pathTypesFollowTheWalkwayWhichMayBeRedefined) {
  const DrawnVenue venue = drawVenue(drawnFloors);
  EXPECT_THAT(idsOf(venue.pathTypes), ElementsAre(1, 2, 3));
  EXPECT_EQ(venue.pathTypes[0]->verticalWeight, Value(7));
  EXPECT_EQ(venue.pathTypes[1]->weight, Value(5));
  EXPECT_EQ(venue.pathTypes[2]->accessibility, Value(2));
}

TEST(DrawnVenue, placesHaveALocationForEachWordOnTheMapOfItsFirstLetter) {
  Drawing drawing = drawnFloors;
  drawing.destinations = {{7, "AC a", "Shop"}, {8}};
  drawing.amenities = {{9, "B"}};
  drawing.connectors = {{3, "a C"}};
  const Value document = drawVenueDocument(drawing);
  const auto locationsOf = [&](std::string_view places, std::size_t place) {
    return encodeJson(document[places]["items"].items()[place]["locations"], JsonLayout::compact);
  };
  EXPECT_EQ(locationsOf("destinations", 0),
            R"([{"mapId":1,"waypointIds":[1,3]},{"mapId":2,"waypointIds":[27]}])");
  EXPECT_EQ(document["destinations"]["items"].items()[0]["name"], Value("Shop"));
  EXPECT_EQ(locationsOf("destinations", 1), "[]");
  EXPECT_EQ(locationsOf("amenities", 0), R"([{"mapId":1,"waypointIds":[2]}])");
  EXPECT_EQ(locationsOf("pathTypes", 2),
            R"([{"mapId":2,"waypointIds":[27]},{"mapId":1,"waypointIds":[3]}])");
}

TEST(DrawnVenue, aPlaceWhereNothingIsDrawnIsRefused) {
  EXPECT_THROW(
      drawVenueDocument({.floors = {{.lines = {"AB"}}}, .destinations = {{.id = 7, .at = "C"}}}),
      std::invalid_argument);
}

TEST(DrawnVenue, waypointsAreReadAsTheirLetters) {
  const DrawnVenue venue = drawVenue(drawnFloors);
  EXPECT_EQ(lettersOf(venue.waypoints), "ABCa");
}

TEST(DrawnVenue, aPathThatMakesNoSenseIsRefused) {
  const auto drawPaths = [](std::string_view path) {
    drawVenue({.floors = {{.lines = {"AB"}}}, .paths = {path}});
  };
  EXPECT_NO_THROW(drawPaths("A-B"));
  for (const char* path : {"", "A", "X-A", "A>B", "A-B lift"}) {
    EXPECT_THROW(drawPaths(path), std::invalid_argument) << path;
  }
}

}  // namespace
}  // namespace tern::test
