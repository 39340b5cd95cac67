#include "tools/tern/picture/GhostFloor.hpp"

#include <gtest/gtest.h>

#include <string>

#include "tests/tools/tern/picture/PictureVenue.hpp"
#include "tools/tern/picture/RoutePicture.hpp"

namespace tern::picture {
namespace {

constexpr Box part{0, 0, 100, 100};

// A drawing with rooms in its top left corner.
std::string rooms(const std::string& viewBox = "0 0 400 300") {
  std::string svg = "<svg viewBox=\"" + viewBox + "\">";
  for (int i = 0; i < 9; ++i) {
    svg += "<rect x='" + std::to_string(10 * i) + "' width='9' height='40' stroke='#333'/>";
  }
  return svg + "</svg>";
}

std::int64_t ghostId(const PictureVenue& venue, std::int64_t map) {
  const TernMap* ghost = ghostOf(venue, map, part);
  return ghost == nullptr ? 0 : ghost->id.integer();
}

TEST(GhostFloor, nearestFloorWithADrawingStandsInTheLowerBeforeTheHigher) {
  const Value drawn = std::string_view(rooms());
  const PictureVenue venue{{.id = 1, .level = -1, .svg = drawn},
                           {.id = 2, .level = 0, .svg = drawn},
                           {.id = 3, .level = 1, .svg = nullptr},
                           {.id = 4, .level = 2, .svg = drawn},
                           {.id = 5, .level = 4, .svg = nullptr}};
  EXPECT_EQ(ghostId(venue, 3), 2);
  EXPECT_EQ(ghostId(venue, 5), 4);
}

TEST(GhostFloor, whatLiesElsewhereOrShowsNothingThereDoesNot) {
  const Value drawn = std::string_view(rooms());
  const Value larger = std::string_view(rooms("0 0 800 600"));
  EXPECT_EQ(ghostId({{.id = 1, .svg = larger}, {.id = 2}}, 2), 0);
  EXPECT_EQ(ghostId({{.id = 1, .svg = drawn, .mmPerPixel = 50}, {.id = 2}}, 2), 0);
  EXPECT_EQ(ghostId({{.id = 1}, {.id = 2}}, 2), 0);
  EXPECT_EQ(ghostId({{.id = 1, .svg = drawn}, {.id = 2, .building = 2}}, 2), 0);
  const PictureVenue venue{{.id = 1, .svg = drawn}, {.id = 2}};
  EXPECT_EQ(ghostOf(venue, 2, {200, 200, 300, 300}), nullptr);
  EXPECT_EQ(ghostOf(venue, 99, part), nullptr);
}

TEST(GhostFloor, blankFloorOfARouteShowsItsNeighbourFaintlyAndSaysSo) {
  const Value drawn = std::string_view(rooms());
  const PictureVenue venue{{.id = 1, .svg = drawn}, {.id = 2, .name = "Mezzanine", .level = 1}};
  const RoutePicture picture{
      venue, "", RouteSet::choices, {{"", "A", "B", {segment(2, {{10, 10}, {60, 10}}, 50)}}}};
  const auto markup = scanned(routePictureSvg(picture));
  EXPECT_EQ(markup.valuesOf("class"), (std::vector<std::string>{"drawing-1", "drawing-2"}));
  EXPECT_TRUE(has(markup, "Ground floor is drawn faintly."));
  const RoutePicture below{
      venue, "", RouteSet::choices, {{"", "A", "B", {segment(1, {{10, 10}, {60, 10}}, 50)}}}};
  EXPECT_EQ(scanned(routePictureSvg(below)).valuesOf("class"),
            std::vector<std::string>{"drawing-1"});
}

}  // namespace
}  // namespace tern::picture
