#include "tools/generate/FloorDrawing.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace tern::generate {
namespace {

using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

VenueModel plannedVenue(std::int64_t buildings, std::int64_t floors, std::int64_t shops) {
  GenerateOptions options;
  options.buildings = buildings;
  options.floors = floors;
  options.shops = shops;
  return planVenue(options).venue;
}

TEST(FloorDrawing, viewBoxIsTheWholeSiteOnEveryFloor) {
  const VenueModel venue = plannedVenue(2, 4, 80);
  for (const FloorModel& floor : venue.floors) {
    EXPECT_THAT(drawFloor(venue, floor),
                StartsWith("<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 " +
                           std::to_string(venue.site.widthPx) + " " +
                           std::to_string(venue.site.heightPx) + "\">"));
  }
}

TEST(FloorDrawing, everyRoomIsARectangleOfItsOwn) {
  const VenueModel venue = plannedVenue(2, 4, 80);
  const FloorModel& floor = venue.floors[1];
  const std::string svg = drawFloor(venue, floor);
  for (const Room& room : floor.plan.rooms) {
    EXPECT_THAT(svg, HasSubstr("<rect x=\"" + std::to_string(room.box.left) + "\" y=\"" +
                               std::to_string(room.box.top) + "\" width=\"" +
                               std::to_string(room.box.width()) + "\" height=\"" +
                               std::to_string(room.box.height()) + "\"/>"));
  }
}

TEST(FloorDrawing, groupsAreClosed) {
  const auto count = [](const std::string& text, std::string_view piece) {
    int found = 0;
    for (auto at = text.find(piece); at != std::string::npos; at = text.find(piece, at + 1))
      ++found;
    return found;
  };
  const VenueModel venue = plannedVenue(5, 3, 300);
  for (const FloorModel& floor : venue.floors) {
    const std::string svg = drawFloor(venue, floor);
    EXPECT_EQ(count(svg, "<g "), count(svg, "</g>"));
    EXPECT_EQ(count(svg, "<text "), count(svg, "</text>"));
  }
}

TEST(FloorDrawing, floorAndOtherBuildingsAreNamed) {
  const VenueModel venue = plannedVenue(2, 4, 80);
  const std::string ground = drawFloor(venue, venue.floors[1]);
  EXPECT_THAT(ground, HasSubstr(">Garden Hall · Ground Floor</text>"));
  EXPECT_THAT(ground, HasSubstr(">Harbour Hall</text>"));
  const std::string second = drawFloor(venue, venue.floors[3]);
  EXPECT_THAT(second, Not(HasSubstr(">Harbour Hall</text>")));
}

TEST(FloorDrawing, aSiteOfOneBuildingAndOneFloorIsDrawn) {
  const VenueModel venue = plannedVenue(1, 1, 1);
  EXPECT_THAT(drawFloor(venue, venue.floors[0]), HasSubstr("Department"));
}

}  // namespace
}  // namespace tern::generate
