#include "tools/tern/picture/Itinerary.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "tests/tools/tern/picture/PictureVenue.hpp"

namespace tern::picture {
namespace {

const std::vector<PictureFloor>& twoFloors() {
  static const std::vector<PictureFloor> floors{{.id = 1},
                                                {.id = 2, .name = "First floor", .level = 1}};
  return floors;
}

TEST(Itinerary, visitsFollowTheRouteAndKnowTheirFloors) {
  const PictureVenue venue(twoFloors());
  const auto lift = pathType("Lift");
  const Itinerary walk = itineraryOf(
      venue, {segment(1, {{10, 10}, {60, 10}}, 50, lift),
              segment(2, {{60, 10}, {60, 40}}, 81, lift), segment(1, {{60, 50}, {20, 50}}, 122)});
  ASSERT_EQ(walk.visits.size(), 3U);
  EXPECT_EQ(walk.visits[0].name.text(), "Ground floor");
  EXPECT_EQ(walk.visits[1].name.text(), "First floor");
  EXPECT_EQ(walk.visits[2].mapId, 1);
  EXPECT_EQ(walk.visits[0].departure->text(), "Lift up to First floor");
  EXPECT_EQ(walk.visits[1].departure->text(), "Lift down to Ground floor");
  EXPECT_EQ(walk.visits[1].arrival->from.floor, "Ground floor");
  EXPECT_FALSE(walk.visits[0].arrival);
  EXPECT_FALSE(walk.visits[2].departure);
}

TEST(Itinerary, lengthOfAVisitIsWhatTheRouteGainsOnIt) {
  std::vector<PictureFloor> floors = twoFloors();
  floors[1].mmPerPixel = 500;
  const PictureVenue venue(floors);
  const Itinerary walk = itineraryOf(
      venue, {segment(1, {{0, 0}}, 50), segment(2, {{0, 0}}, 80), segment(1, {{0, 0}}, 81)});
  EXPECT_EQ(walk.visits[0].length.text(), "50 m");
  EXPECT_EQ(walk.visits[1].length.text(), "15 m");
  EXPECT_EQ(walk.visits[2].length.text(), "1 m");
  EXPECT_EQ(walk.length.text(), "66 m");
}

TEST(Itinerary, unknownScaleGivesMapUnits) {
  std::vector<PictureFloor> floors = twoFloors();
  floors[1].mmPerPixel = {};
  const PictureVenue venue(floors);
  const Itinerary walk = itineraryOf(venue, {segment(1, {{0, 0}}, 50), segment(2, {{0, 0}}, 80)});
  EXPECT_EQ(walk.visits[0].length.text(), "50 m");
  EXPECT_EQ(walk.visits[1].length.text(), "30 map units");
  EXPECT_EQ(walk.length.text(), "80 map units");
}

TEST(Itinerary, senselessLengthsCountAsNone) {
  const PictureVenue venue(twoFloors());
  for (float distance : {std::numeric_limits<float>::infinity(), std::nanf(""), -5.0F, 1e38F}) {
    const Itinerary walk = itineraryOf(venue, {segment(1, {{0, 0}}, distance)});
    EXPECT_EQ(walk.visits[0].length.text(), "") << distance;
    EXPECT_EQ(walk.length.text(), "") << distance;
  }
}

TEST(Itinerary, absurdScalesCountAsUnknown) {
  for (double scale : {0.0, -1.0, 1e308, std::nan("")}) {
    const PictureVenue venue{{.id = 1, .mmPerPixel = scale}};
    const Itinerary walk = itineraryOf(venue, {segment(1, {{0, 0}}, 50)});
    EXPECT_EQ(walk.length.text(), "50 map units") << scale;
  }
}

TEST(Itinerary, floorPassedOnTheSameLiftIsNoVisit) {
  const PictureVenue venue{
      {.id = 1}, {.id = 2, .name = "First", .level = 1}, {.id = 3, .name = "Second", .level = 2}};
  const auto lift = pathType("Lift");
  const Itinerary walk =
      itineraryOf(venue, {segment(1, {{0, 0}, {9, 0}}, 9, lift), segment(2, {{9, 0}}, 10, lift),
                          segment(3, {{9, 0}, {9, 9}}, 20, lift)});
  ASSERT_EQ(walk.visits.size(), 2U);
  EXPECT_EQ(walk.visits[0].departure->text(), "Lift up to Second, past First");
  EXPECT_EQ(walk.visits[1].arrival->from.floor, "Ground floor");
  EXPECT_EQ(walk.length.text(), "20 m");
}

TEST(Itinerary, floorWhereTheLiftIsLeftForTheStairsIsAVisit) {
  const PictureVenue venue{
      {.id = 1}, {.id = 2, .name = "First", .level = 1}, {.id = 3, .name = "Second", .level = 2}};
  const Itinerary walk =
      itineraryOf(venue, {segment(1, {{0, 0}}, 9, pathType("Lift")),
                          segment(2, {{9, 0}}, 10, pathType("Stairs")), segment(3, {{9, 0}}, 20)});
  EXPECT_EQ(walk.visits.size(), 3U);
}

TEST(Itinerary, anotherBuildingIsNamed) {
  const PictureVenue venue{{.id = 1}, {.id = 2, .name = "Hall", .building = 2}};
  const Itinerary walk =
      itineraryOf(venue, {segment(1, {{0, 0}}, 9, pathType("Bridge")), segment(2, {{0, 0}}, 10)});
  EXPECT_EQ(walk.visits[0].departure->text(), "Bridge to House 2, Hall");
  EXPECT_EQ(walk.visits[1].name.text(), "House 2, Hall");
}

TEST(Itinerary, unknownMapsMoversAndLevelsAreNoFailure) {
  TernVenueData empty;
  const Itinerary walk = itineraryOf(empty, {segment(7, {{1, 2}}, 9), segment(8, {{3, 4}}, 10)});
  EXPECT_EQ(walk.visits[0].name.text(), "map 7");
  EXPECT_EQ(walk.visits[0].departure->text(), "Go to map 8");
  EXPECT_EQ(walk.length.text(), "10 map units");
  EXPECT_TRUE(itineraryOf(empty, {}).visits.empty());
}

TEST(Itinerary, nullLevelIsNeitherUpNorDown) {
  const PictureVenue venue{{.id = 1}, {.id = 2, .name = "First", .level = nullptr}};
  const Itinerary walk =
      itineraryOf(venue, {segment(1, {{0, 0}}, 9, pathType("Lift")), segment(2, {{0, 0}}, 10)});
  EXPECT_EQ(walk.visits[0].departure->text(), "Lift to First");
}

TEST(Itinerary, pointsFarOffTheDrawingAreLeftOut) {
  const PictureVenue venue{{.id = 1}};
  const float infinite = std::numeric_limits<float>::infinity();
  const Itinerary walk = itineraryOf(venue, {segment(1,
                                                     {{10, 10},
                                                      {std::nanf(""), 1},
                                                      {infinite, 1},
                                                      {1, -infinite},
                                                      {1e38F, 1},
                                                      {-399, 10},
                                                      {801, 10},
                                                      {20, 20}},
                                                     9)});
  ASSERT_EQ(walk.visits[0].points.size(), 3U);
  EXPECT_EQ(walk.visits[0].points[1].x, -399);
  EXPECT_TRUE(walk.visits[0].pointsLeftOut);
}

}  // namespace
}  // namespace tern::picture
