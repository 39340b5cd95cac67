#include "tools/tern/picture/FloorPanel.hpp"

#include <gtest/gtest.h>

#include <cstdio>
#include <string>

#include "tests/support/ScannedMarkup.hpp"
#include "tests/tools/tern/picture/PictureVenue.hpp"
#include "tools/tern/picture/MapWindow.hpp"

namespace tern::picture {
namespace {

struct DrawnPanel {
  PanelDrawing drawing;
  test::ScannedMarkup scanned;
};

DrawnPanel drawnPanel(const PictureFloor& floor, const TernPathPerFloor& stretch) {
  const PictureVenue venue{floor};
  const Itinerary walk = itineraryOf(venue, {stretch});
  FloorDrawings drawings;
  const FloorVisit& visit = walk.visits[0];
  DrawnPanel panel;
  panel.drawing = drawFloor({&visit, &drawings.of(visit.map), "p-", {}, "Start", "Goal"});
  panel.scanned =
      test::scanMarkup("<svg>" + drawings.takeMarkup() + panel.drawing.markup + "</svg>");
  EXPECT_EQ(panel.scanned.problem, "");
  EXPECT_EQ(test::reachOf(panel.scanned), "");
  return panel;
}

bool contains(const std::string& text, std::string_view part) {
  return text.find(part) != std::string::npos;
}

TEST(FloorPanel, drawingLiesUnderTheRouteAndItsEndsAreNamed) {
  const DrawnPanel panel = drawnPanel({}, segment(1, {{40, 40}, {300, 40}, {300, 200}}, 420));
  const std::string& markup = panel.drawing.markup;
  EXPECT_LT(markup.find("<use href=\"#drawing-1\""), markup.find("#2563eb"));
  EXPECT_TRUE(contains(panel.scanned.text, "Start"));
  EXPECT_TRUE(contains(panel.scanned.text, "Goal"));
  EXPECT_EQ(panel.drawing.note, "");
}

TEST(FloorPanel, textsAreAtLeastTwelvePixels) {
  const DrawnPanel panel = drawnPanel({}, segment(1, {{40, 40}, {300, 200}}, 420));
  const auto sizes = panel.scanned.valuesOf("font-size");
  EXPECT_GE(sizes.size(), 3U);
  for (const std::string& size : sizes) EXPECT_GE(std::stod(size), 12);
}

TEST(FloorPanel, unreadableDrawingIsLeftOutAndSaid) {
  const DrawnPanel panel = drawnPanel({.svg = "<html/>"}, segment(1, {{1, 1}, {9, 9}}, 9));
  EXPECT_EQ(panel.drawing.note, "The floor's drawing is left out: it is not an SVG.");
  EXPECT_FALSE(panel.scanned.has("use"));
  EXPECT_TRUE(contains(panel.scanned.text, "Goal"));
}

TEST(FloorPanel, routeLiesWhereTheDrawingHasIt) {
  const std::string marked = "<svg viewBox='-100 50 400 300'/>";
  const DrawnPanel panel =
      drawnPanel({.svg = std::string_view(marked)}, segment(1, {{-100, 50}}, 0));
  // The scale is the same in both directions, so one point settles the other's place.
  const std::string placing = panel.scanned.valuesOf("transform").front();
  double x = 0;
  double y = 0;
  double scale = 0;
  ASSERT_EQ(std::sscanf(placing.c_str(), "translate(%lf %lf) scale(%lf)", &x, &y, &scale), 3);
  const std::string start = "translate(" + decimal(x - 100 * scale) + " " + decimal(y + 50 * scale);
  EXPECT_TRUE(contains(panel.drawing.markup, start)) << start;
  EXPECT_EQ(panel.scanned.valuesOf("x").front(), "-100");
  EXPECT_EQ(panel.scanned.valuesOf("width").front(), "400");
}

TEST(FloorPanel, pointsOffTheMapAreSaid) {
  EXPECT_EQ(drawnPanel({}, segment(1, {{1, 1}, {1e30F, 1}}, 9)).drawing.note,
            "Part of the route lies off this map.");
  EXPECT_EQ(drawnPanel({}, segment(1, {{1e30F, 1}}, 9)).drawing.note,
            "The route has no place on this map.");
}

TEST(FloorPanel, absurdCoordinatesLeaveAllNumbersSmall) {
  const DrawnPanel panel =
      drawnPanel({.svg = "<svg viewBox='0 0 0.0001 9000000'/>", .mmPerPixel = 1e-300},
                 segment(1, {{9000000, -9000000}, {-9000000, 9000000}, {0, 0}}, 3e38F));
  for (const char* attribute : {"x", "y", "width", "height", "r"}) {
    for (const std::string& value : panel.scanned.valuesOf(attribute)) {
      EXPECT_LE(std::abs(std::stod(value)), 1e12) << attribute;
    }
  }
}

TEST(FloorPanel, scaleBarNeedsAScale) {
  const auto stretch = segment(1, {{40, 40}, {300, 200}}, 420);
  EXPECT_TRUE(contains(drawnPanel({}, stretch).scanned.text, "50 m"));
  EXPECT_FALSE(contains(drawnPanel({.mmPerPixel = nullptr}, stretch).scanned.text, " m"));
}

TEST(FloorPanel, longRouteOfTinyStepsStaysSmall) {
  std::vector<std::pair<float, float>> points;
  for (int i = 0; i < 100'000; ++i) {
    points.emplace_back(static_cast<float>(i % 400), static_cast<float>(i / 400 % 2));
  }
  EXPECT_LT(drawnPanel({}, segment(1, points, 9)).drawing.markup.size(), 5'000'000U);
}

TEST(FloorPanel, changesOfFloorAreNamedOnTheMap) {
  const PictureVenue venue{{.id = 1}, {.id = 2, .name = "First", .level = 1}};
  const Itinerary walk = itineraryOf(venue, {segment(1, {{40, 40}, {90, 40}}, 50, pathType("Lift")),
                                             segment(2, {{90, 40}, {200, 40}}, 160)});
  const FloorDrawing none;
  const FloorPanel first{&walk.visits[0], &none, "p1-", {}, "Café <A>", ""};
  const FloorPanel second{&walk.visits[1], &none, "p2-", {&walk.visits[0]}};
  EXPECT_TRUE(contains(drawFloor(first).markup, "Lift to First"));
  EXPECT_TRUE(contains(drawFloor(first).markup, "Café &lt;A&gt;"));
  EXPECT_TRUE(contains(drawFloor(second).markup, "From Ground floor"));
  EXPECT_TRUE(contains(drawFloor(second).markup, "#8a97a8"));
}

TEST(FloorPanel, namesThatTheRouteIsToldByComeFirstThenThoseNearTheWay) {
  const PictureVenue venue{{.id = 1}};
  const Itinerary walk = itineraryOf(venue, {segment(1, {{40, 250}, {300, 250}}, 260)});
  FloorDrawings drawings;
  const FloorDrawing& drawing = drawings.of(walk.visits[0].map);
  const std::vector<PlaceName> names{{"Far", 1, {{200, 150}}},
                                     {"Near", 2, {{202, 151}}},
                                     {"Landmark", 3, {{190, 148}}},
                                     {"Goal", 4, {{100, 100}}},
                                     {"Elsewhere", 5, {{900, 900}}}};
  const auto drawn = [&](const std::set<std::int64_t>& landmarks) {
    return drawFloor({.visit = &walk.visits[0],
                      .drawing = &drawing,
                      .idPrefix = "p-",
                      .start = "Start",
                      .goal = "The Goal",
                      .names = &names,
                      .landmarks = landmarks})
        .markup;
  };
  const std::string told = drawn({3});
  EXPECT_LT(told.find(">Landmark<"), told.find(">Near<"));
  EXPECT_LT(drawn({}).find(">Near<"), drawn({}).find(">Landmark<"));
  EXPECT_FALSE(contains(told, ">Goal<"));
  EXPECT_FALSE(contains(told, "Elsewhere"));
}

TEST(FloorPanel, wordsTellTheSameAsThePicture) {
  const PictureVenue venue{{.id = 1}, {.id = 2, .name = "First", .level = 1}};
  const Itinerary walk = itineraryOf(venue, {segment(1, {{40, 40}, {90, 40}}, 50, pathType("Lift")),
                                             segment(2, {{90, 40}, {200, 40}}, 160)});
  EXPECT_EQ(inWords({&walk.visits[0], {}, {}, {}, "Bakery"}),
            "Ground floor. Start at Bakery. Walk 50 m. Lift up to First.");
  EXPECT_EQ(inWords({&walk.visits[1], {}, {}, {}, "", "Exit"}),
            "First. Arrive from Ground floor. Walk 110 m. Arrive at Exit.");
}

}  // namespace
}  // namespace tern::picture
