#include "tools/tern/PlaceText.hpp"

#include <gtest/gtest.h>

#include <string>

#include "tests/support/ActiveVenue.hpp"

namespace tern::command {
namespace {

std::string textOf(const test::Drawing& drawing) {
  const auto venue = test::loadDrawnVenue(drawing);
  return placeText(*venue, TernPlaces(*venue).all().front());
}

TEST(PlaceText, placeIsToldWithItsFloorsAndWaypoints) {
  EXPECT_EQ(textOf({.floors = {{.lines = {"A B"}, .name = "Ground"}, {.lines = {"C"}}},
                    .destinations = {{.id = 7, .at = "AB C", .name = "Shop"}}}),
            "Shop (destination 7) on Ground (waypoints 1, 2), map 2 (waypoint 3)");
  EXPECT_EQ(textOf({.floors = {{.lines = {"A"}, .name = "Ground"}},
                    .amenities = {{.id = 2, .at = "A", .name = "Toilets"}}}),
            "Toilets (amenity 2) on Ground (waypoint 1)");
}

TEST(PlaceText, placeWithoutANameOrAWaypointSaysSo) {
  EXPECT_EQ(textOf({.floors = {{.lines = {"A"}, .name = "Ground"}},
                    .destinations = {{.id = 7, .at = "A"}}}),
            "destination 7 on Ground (waypoint 1)");
  EXPECT_EQ(textOf({.floors = {{.lines = {"A"}}}, .destinations = {{.id = 7, .name = "Shop"}}}),
            "Shop (destination 7), which is placed nowhere");
}

TEST(PlaceText, ofManyWaypointsTheFirstSixAreListed) {
  EXPECT_EQ(textOf({.floors = {{.lines = {"ABCDEFGH"}, .name = "Ground"}},
                    .destinations = {{.id = 7, .at = "ABCDEFGH", .name = "Hall"}}}),
            "Hall (destination 7) on Ground (waypoints 1, 2, 3, 4, 5, 6 and 2 more)");
}

}  // namespace
}  // namespace tern::command
