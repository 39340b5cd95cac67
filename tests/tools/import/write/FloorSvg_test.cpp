#include "tools/import/write/FloorSvg.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <set>
#include <string>

namespace tern::imports {
namespace {

using testing::HasSubstr;
using testing::Not;

// A floor with a shape, one without.
Draft draftOf() {
  Draft draft;
  draft.language = "en";
  draft.buildings.push_back({"b", {}, {}});
  draft.floors.resize(2);
  draft.floors[0].id = "0";
  draft.floors[0].shapes = {{{{{0, 0}, {40, 0}, {40, 30}, {0, 30}}}}};
  draft.floors[1].id = "1";
  draft.floors[1].ordinal = 1;
  return draft;
}

std::string drawn(const Draft& draft, std::size_t floor = 0) {
  IdTable ids;
  const VenuePlan plan = planVenue(draft, {}, ids);
  return drawFloor(plan, floor);
}

DraftArea areaOf(AreaKind kind, Names names) {
  return {"area", 0, kind, std::move(names), {{{{{2, 2}, {22, 2}, {22, 12}, {2, 12}}}}}};
}

TEST(FloorSvg, frameIsThatOfTheMap) {
  EXPECT_THAT(drawn(draftOf()), HasSubstr("viewBox=\"0 0 1000 800\""));
}

TEST(FloorSvg, floorIsDrawnWhereItLies) {
  EXPECT_THAT(drawn(draftOf()), HasSubstr("d=\"M100 100l800 0l0 600l-800 0z\""));
}

TEST(FloorSvg, areasAreTintedByWhatTheyAre) {
  std::set<std::string> drawings;
  for (const AreaKind kind : {AreaKind::room, AreaKind::shop, AreaKind::toilets, AreaKind::way,
                              AreaKind::mover, AreaKind::outdoors, AreaKind::closed}) {
    Draft draft = draftOf();
    draft.areas = {areaOf(kind, {})};
    drawings.insert(drawn(draft));
  }
  EXPECT_EQ(drawings.size(), 7U);
}

TEST(FloorSvg, namesOfRoomsAreWrittenInTheirMiddle) {
  Draft draft = draftOf();
  draft.areas = {areaOf(AreaKind::room, {{"ja", "会議室"}, {"en", "Meeting & talks"}})};
  EXPECT_THAT(drawn(draft), HasSubstr(">Meeting &amp; talks</text>"));
  EXPECT_THAT(drawn(draft), HasSubstr("<text x=\"340\""));
}

TEST(FloorSvg, nameThatDoesNotFitItsRoomIsLeftOut) {
  Draft draft = draftOf();
  draft.areas = {areaOf(AreaKind::room, {{"en", std::string(200, 'w')}})};
  EXPECT_THAT(drawn(draft), Not(HasSubstr("<text")));
}

TEST(FloorSvg, placesOnTheSameSpotShowOneName) {
  Draft draft = draftOf();
  draft.nodes.resize(1);
  draft.nodes[0].id = "n";
  draft.categories = {{"exit", {{"en", "Exit"}}}};
  draft.places = {{"p", 0, {{"en", "North"}}, 0, {5, 5}, {0}},
                  {"q", 0, {{"en", "Nord"}}, 0, {5.1, 5}, {0}}};
  EXPECT_THAT(drawn(draft), HasSubstr(">North<"));
  EXPECT_THAT(drawn(draft), Not(HasSubstr(">Nord<")));
}

TEST(FloorSvg, placeThatIsItsAreaShowsOneName) {
  Draft draft = draftOf();
  draft.areas = {areaOf(AreaKind::shop, {{"en", "Bakery"}})};
  draft.nodes = {{"n", 0, {4, 4}, std::nullopt, false}};
  draft.categories = {{"shop", {}}};
  draft.places = {{"p", 0, {{"en", "Bakery"}}, 0, {4, 4}, {0}}};
  const std::string svg = drawn(draft);
  EXPECT_EQ(svg.find("Bakery"), svg.rfind("Bakery"));
}

TEST(FloorSvg, wallsAndDoorsAreLines) {
  Draft draft = draftOf();
  draft.walls = {{0, {{0, 0}, {10, 0}}}};
  draft.doors = {{0, {{4, 0}, {5, 0}}}};
  EXPECT_THAT(drawn(draft), HasSubstr("d=\"M100 100l200 0\""));
  EXPECT_THAT(drawn(draft), HasSubstr("d=\"M180 100l20 0\""));
  EXPECT_THAT(drawn(draft, 1), Not(HasSubstr("l200 0")));
}

TEST(FloorSvg, marksAreDrawnAndNoWalls) {
  Draft draft = draftOf();
  draft.marks = {{0, {{0, 0}, {10, 0}}}};
  EXPECT_THAT(drawn(draft), HasSubstr("d=\"M100 100l200 0\""));
  EXPECT_THAT(drawn(draft), Not(HasSubstr("class=\"walls\"")));
}

TEST(FloorSvg, floorWithoutAShapeShowsItsWays) {
  Draft draft = draftOf();
  draft.nodes.resize(2);
  draft.nodes[0] = {"a", 1, {1, 1}, {}, false};
  draft.nodes[1] = {"b", 1, {11, 1}, {}, false};
  DraftLink link;
  link.id = "ab";
  link.to = 1;
  draft.links = {link};
  EXPECT_THAT(drawn(draft, 1), HasSubstr("d=\"M120 120l200 0\""));
}

TEST(FloorSvg, waysMadeOfAreasAreNotDrawn) {
  Draft draft = draftOf();
  draft.nodes = {{"a", 0, {4, 4}, std::nullopt, false}, {"b", 0, {14, 4}, std::nullopt, false}};
  draft.links.resize(1);
  draft.links[0].id = "ab";
  draft.links[0].to = 1;
  draft.links[0].isWithinArea = true;
  const std::string made = drawn(draft);
  draft.links[0].isWithinArea = false;
  EXPECT_THAT(drawn(draft), HasSubstr("stroke-width=\"56\""));
  EXPECT_THAT(made, Not(HasSubstr("stroke-width=\"56\"")));
}

TEST(FloorSvg, largeSitesAreDrawnInTheirOwnUnits) {
  Draft draft = draftOf();
  draft.walls = {{0, {{0, 0}, {2000, 0}}}};
  EXPECT_THAT(drawn(draft), HasSubstr("<g transform=\"scale(0.5)\">"));
}

double luminance(std::string_view colour) {
  std::array<double, 3> parts{};
  for (std::size_t i = 0; i < 3; ++i) {
    const std::string digits(colour.substr(1 + 2 * i, 2));
    const double part = std::stoi(digits, nullptr, 16) / 255.0;
    parts[i] = part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
  }
  return 0.2126 * parts[0] + 0.7152 * parts[1] + 0.0722 * parts[2];
}

double contrast(std::string_view a, std::string_view b) {
  const double lighter = std::max(luminance(a), luminance(b)) + 0.05;
  return lighter / (std::min(luminance(a), luminance(b)) + 0.05);
}

// The colours that a drawing fills and strokes with.
std::set<std::string> coloursOf(const std::string& svg, std::string_view attribute) {
  std::set<std::string> colours;
  const std::string mark = std::string(attribute) + "=\"#";
  for (std::size_t at = svg.find(mark); at != std::string::npos; at = svg.find(mark, at + 1)) {
    const std::size_t from = at + mark.size() - 1;
    const std::string colour = svg.substr(from, svg.find('"', from) - from);
    if (colour.size() == 7) colours.insert(colour);
  }
  return colours;
}

TEST(FloorSvg, linesAndWordsStandOutFromEveryTint) {
  Draft draft = draftOf();
  for (const AreaKind kind : {AreaKind::room, AreaKind::shop, AreaKind::toilets, AreaKind::way,
                              AreaKind::mover, AreaKind::outdoors, AreaKind::closed}) {
    draft.areas.push_back(areaOf(kind, {{"en", "x"}}));
  }
  draft.walls = {{0, {{0, 0}, {10, 0}}}};
  draft.doors = {{0, {{4, 0}, {5, 0}}}};
  const std::string svg = drawn(draft);
  std::set<std::string> tints = coloursOf(svg, "fill");
  const std::string letters = "#2b3138";
  EXPECT_EQ(tints.erase(letters), 1U);
  EXPECT_EQ(tints.size(), 8U);
  std::set<std::string> lines = coloursOf(svg, "stroke");
  lines.insert(letters);
  EXPECT_EQ(lines.size(), 4U);
  for (const std::string& tint : tints) {
    for (const std::string& line : lines) {
      EXPECT_GE(contrast(tint, line), 3.0) << line << " on " << tint;
    }
  }
}

}  // namespace
}  // namespace tern::imports
