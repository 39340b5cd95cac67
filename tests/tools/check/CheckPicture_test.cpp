#include "tools/check/CheckPicture.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/tools/check/CheckedVenue.hpp"

namespace tern::check {
namespace {

using testing::HasSubstr;
using testing::Not;

std::string drawn(const Checked& checked,
                  std::string (*draw)(const picture::PicturePlan&) = picture::svgOf) {
  std::string file;
  checked.use([&](const Subject& subject) { file = draw(planOf(subject, checkVenue(subject))); });
  return file;
}

TEST(CheckPicture, soundVenueIsOfOneColour) {
  const std::string picture = drawn(Checked(soundDrawing()));
  EXPECT_THAT(picture, HasSubstr(">Check of drawn</text>"));
  EXPECT_THAT(picture, HasSubstr(">Joined: 5 waypoints</text>"));
  EXPECT_THAT(picture, HasSubstr(">First</text>"));
  EXPECT_THAT(picture, Not(HasSubstr("Island")));
  EXPECT_THAT(picture, Not(HasSubstr("Leads nowhere")));
}

TEST(CheckPicture, islandsTrapsAndLooseEndsAreInTheKey) {
  test::Drawing drawing = soundDrawing();
  drawing.floors[0].lines = {"A  B  C  X  Y"};
  drawing.floors.push_back({.lines = {"F  G  H"}, .name = "Roof"});
  drawing.paths.insert(drawing.paths.end(), {"X-Y", "D>F Escalator up", "F-G", "E-H Lift"});
  drawing.pathTypes.push_back({.name = "Escalator"});
  const std::string picture = drawn(Checked(drawing));
  EXPECT_THAT(picture, HasSubstr(">1 island, 1 one-way trap, 1 mover that leads nowhere. "));
  EXPECT_THAT(picture, HasSubstr(">Island of 2 on Ground</text>"));
  EXPECT_THAT(picture, HasSubstr(">A way in and none out</text>"));
  EXPECT_THAT(picture, HasSubstr(">Leads nowhere</text>"));
}

TEST(CheckPicture, linksThatCannotBeAreMarked) {
  Checked wrong(soundDrawing());
  wrong.mapOf(0).set("svg",
                     "<svg viewBox=\"0 0 100 50\"><path class=\"walls\" d=\"M15 -20v40\"/></svg>");
  wrong.waypoint(1, 1).set("coordinates", wrong.waypoint(1, 0)["coordinates"]);
  const std::string picture = drawn(wrong);
  EXPECT_THAT(picture, HasSubstr(">A link too long, or through a wall</text>"));
  EXPECT_THAT(picture, HasSubstr(">A link of no length</text>"));
  EXPECT_THAT(picture, HasSubstr(R"(stroke-dasharray="5 4")"));
}

TEST(CheckPicture, islandsBehindTheSixthShareAColour) {
  test::Drawing drawing = soundDrawing();
  drawing.floors[0].lines = {"A  B  C  P Q R S T U V W"};
  const std::string picture = drawn(Checked(drawing));
  EXPECT_THAT(picture, HasSubstr(">Further islands, of at most 1</text>"));
  EXPECT_THAT(picture, HasSubstr(R"(>Joined: 5 waypoints</text>)"));
}

TEST(CheckPicture, pageLoadsAndRunsNothing) {
  const std::string page = drawn(Checked(soundDrawing()), picture::htmlOf);
  EXPECT_THAT(page, HasSubstr("<!DOCTYPE html>"));
  EXPECT_THAT(page, HasSubstr("default-src 'none'"));
  EXPECT_THAT(page, Not(HasSubstr("<script")));
}

TEST(CheckPicture, waypointThatIsNowhereIsLeftOut) {
  Checked checked(soundDrawing());
  checked.waypoint(0, 2).set("coordinates", Value::list({1e300, "x"}));
  EXPECT_THAT(drawn(checked), HasSubstr("</svg>"));
}

}  // namespace
}  // namespace tern::check
