#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/support/ActiveVenue.hpp"
#include "tests/support/AskedCommand.hpp"
#include "tests/support/MadeRecords.hpp"

namespace tern::command {
namespace {

using testing::HasSubstr;
using testing::Not;

std::string told(const std::shared_ptr<TernActiveVenue>& venue,
                 const std::vector<std::string>& words = {"floors"}) {
  return std::get<Answer>(test::outcomeOf(words, venue)).text;
}

Value inJson(const std::shared_ptr<TernActiveVenue>& venue) {
  return test::parsed(told(venue, {"floors", "--json"}));
}

std::shared_ptr<TernActiveVenue> threeFloors() {
  return test::loadDrawnVenue({.floors = {{.lines = {"A B"}, .level = 0, .name = "Ground"},
                                          {.lines = {"C"}, .level = 2, .name = "Roof"},
                                          {.lines = {"D"}, .level = 1}},
                               .paths = {"A-B", "A-C Lift", "B-D Stairs", "D-C Ladder"},
                               .pathTypes = {{.name = "Lift"},
                                             {.name = "Stairs", .accessibility = 2},
                                             {.name = "Ladder", .accessibility = 50},
                                             {.name = "Chute", .accessibility = 7}}});
}

TEST(FloorsCommand, floorsAreToldFromTheTopWithTheirMaps) {
  EXPECT_THAT(told(threeFloors()), HasSubstr("\nbuilding 1\n"
                                             "  Roof, level 2, map 2\n"
                                             "  floor 3, level 1, map 3\n"
                                             "  Ground, level 0, map 1\n"));
}

TEST(FloorsCommand, levelsThatMakeADifferenceAreToldWithWhatTheyAdmit) {
  EXPECT_THAT(told(threeFloors()), HasSubstr("\nAccessibility levels, and what each admits\n"
                                             "  0: path type 1, Lift (path type 2)\n"
                                             "  2: also Stairs (path type 3)\n"
                                             "  50: also Ladder (path type 4)\n"));
}

TEST(FloorsCommand, pathTypeThatNothingHasMakesNoDifference) {
  EXPECT_THAT(told(threeFloors()), Not(HasSubstr("Chute")));
  const Value types = inJson(threeFloors())["pathTypes"];
  EXPECT_EQ(types.items()[4], test::parsed(R"({"id": 5, "name": "Chute", "accessibility": 7,
                                               "isUsed": false})"));
}

TEST(FloorsCommand, placedPathTypeMakesADifferenceWithoutAPath) {
  const auto venue = test::loadDrawnVenue({.floors = {{.lines = {"A B"}}, {.lines = {"C"}}},
                                           .paths = {"A-B"},
                                           .pathTypes = {{.name = "Lift", .accessibility = 3}},
                                           .connectors = {{.id = 2, .at = "B C"}}});
  EXPECT_THAT(told(venue), HasSubstr("\n  3: also Lift (path type 2)\n"));
}

TEST(FloorsCommand, jsonHasAllOfIt) {
  const Value floors = inJson(threeFloors());
  EXPECT_EQ(floors["venue"]["id"], Value(1));
  EXPECT_EQ(floors["buildings"].size(), 1U);
  EXPECT_EQ(floors["buildings"].items()[0]["floors"].items()[0],
            test::parsed(R"({"id": 2, "name": "Roof", "shortName": "", "level": 2, "mapId": 2})"));
  EXPECT_EQ(floors["levels"], test::parsed(R"([{"accessibility": 0, "admits": [1, 2]},
                                               {"accessibility": 2, "admits": [1, 2, 3]},
                                               {"accessibility": 50, "admits": [1, 2, 3, 4]}])"));
}

TEST(FloorsCommand, whatIsMissingIsSaid) {
  const auto venue = TernActiveVenue::initWithDictionary(test::parsed(R"({"id": 1,
    "buildings": {"items": [{"id": 1, "name": "Hall", "floors": {"items": [
        {"id": 4, "shortName": "B", "level": null}, {"id": 5, "name": "Attic", "shortName": "A",
         "level": 3}]}}, {"id": 2}]}})"));
  venue->loadGridData();
  EXPECT_EQ(told(venue),
            "venue 1\n\n"
            "Hall (building 1)\n  Attic (A), level 3, no map\n  B, no map\n"
            "building 2\n  not loaded\n\n"
            "Accessibility levels, and what each admits\n");
  EXPECT_TRUE(inJson(venue)["buildings"].items()[0]["floors"].items()[1]["level"].isNull());
  const auto nothing = TernActiveVenue::initWithDictionary(test::parsed(R"({"id": 1})"));
  nothing->loadGridData();
  EXPECT_EQ(told(nothing), "venue 1\n\n\nAccessibility levels, and what each admits\n");
}

}  // namespace
}  // namespace tern::command
