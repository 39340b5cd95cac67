#include "tools/check/CheckVenue.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "TernCoreKit/model/venue/VenueAssembly.hpp"
#include "tests/support/CapturedLog.hpp"
#include "tests/support/MadeRecords.hpp"
#include "tests/support/Paths.hpp"
#include "tests/support/RandomVenue.hpp"
#include "tests/support/ValuePlaces.hpp"
#include "tests/tools/check/CheckedVenue.hpp"
#include "tests/tools/generate/GeneratedVenue.hpp"
#include "tools/tern/VenueFolder.hpp"

namespace tern::check {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

using Floor = test::Drawing::Floor;

// The sound venue with a third floor and more paths.
test::Drawing withThird(Floor third, std::vector<std::string_view> paths) {
  test::Drawing drawing = soundDrawing();
  drawing.floors.push_back(std::move(third));
  drawing.paths.insert(drawing.paths.end(), paths.begin(), paths.end());
  return drawing;
}

TEST(CheckVenue, soundVenueHasNoFinding) {
  const Checked checked(soundDrawing());
  EXPECT_THAT(checked.kinds(), IsEmpty());
  EXPECT_EQ(checked.text(),
            "drawn (venue 1): 1 building, 2 floors, 5 waypoints, 4 paths, 2 destinations\n"
            "Nothing found.\n");
}

TEST(CheckVenue, waypointsThatNothingJoinsAreAnIsland) {
  test::Drawing drawing = soundDrawing();
  drawing.floors[0].lines = {"A  B  C  X  Y"};
  drawing.paths.push_back("X-Y");
  const Findings findings = Checked(drawing).findings();
  ASSERT_EQ(findings.size(), 1U);
  EXPECT_EQ(findings[0].kind, Kind::island);
  EXPECT_THAT(findings[0].ids, ElementsAre(24, 25));
  EXPECT_EQ(findings[0].map, 1);
  EXPECT_EQ(findings[0].message,
            "waypoints 24, 25 on Ground are joined to nothing else, 2 of 7 in all");
}

TEST(CheckVenue, wayInThatIsNoWayOutIsATrap) {
  test::Drawing drawing =
      withThird({.lines = {"F  G"}, .name = "Roof"}, {"D>F Escalator up", "F-G"});
  drawing.pathTypes.push_back({.name = "Escalator"});
  const Findings findings = Checked(drawing).findings();
  ASSERT_EQ(findings.size(), 1U);
  EXPECT_EQ(findings[0].kind, Kind::oneWayTrap);
  EXPECT_THAT(findings[0].ids, ElementsAre(6, 7));
  EXPECT_EQ(findings[0].map, 3);
}

TEST(CheckVenue, placeWithoutAWaypointOrAWayToItIsUnreachable) {
  Checked checked(soundDrawing());
  checked.destination(0).set("locations", Value::list());
  EXPECT_THAT(checked.kinds(), ElementsAre("unreachable"));
  test::Drawing drawing = withThird({.lines = {"F"}, .name = "Roof"}, {"F>D Escalator down"});
  drawing.pathTypes.push_back({.name = "Escalator"});
  drawing.destinations.push_back({.id = 9, .at = "F", .name = "View"});
  const Findings findings = Checked(drawing).findings();
  ASSERT_EQ(findings.size(), 1U);
  EXPECT_EQ(findings[0].kind, Kind::unreachable);
  EXPECT_EQ(findings[0].message, "View (destination 9) on Roof is reached from nowhere else");
}

TEST(CheckVenue, kindOfFacilityThatTheVenueDoesNotHaveIsNoFinding) {
  test::Drawing drawing = soundDrawing();
  drawing.amenities.push_back({.id = 3, .at = "", .name = "Baby care"});
  EXPECT_THAT(Checked(drawing).kinds(), IsEmpty());
}

TEST(CheckVenue, placeThatOnlyStepsLeadToIsToldOfAndNoFailure) {
  test::Drawing drawing = soundDrawing();
  drawing.pathTypes[0].accessibility = 100;
  const Findings findings = Checked(drawing).findings();
  ASSERT_EQ(findings.size(), 1U);
  EXPECT_EQ(findings[0].kind, Kind::notStepFree);
  EXPECT_THAT(findings[0].ids, ElementsAre(8));
  EXPECT_FALSE(hasFailure(findings));
}

TEST(CheckVenue, floorThatNothingLeadsToIsNoIslandBesides) {
  const Findings findings =
      Checked(withThird({.lines = {"F  G"}, .name = "Roof"}, {"F-G"})).findings();
  ASSERT_EQ(findings.size(), 1U);
  EXPECT_EQ(findings[0].kind, Kind::floorWithoutMover);
  EXPECT_THAT(findings[0].ids, ElementsAre(3));
  EXPECT_EQ(findings[0].map, 3);
}

TEST(CheckVenue, moverThatOneCanOnlyGoBackFromLeadsNowhere) {
  EXPECT_THAT(Checked(withThird({.lines = {"F"}, .name = "Roof"}, {"D-F Lift"})).kinds(),
              ElementsAre("moverToNowhere"));
  EXPECT_THAT(
      Checked(withThird({.lines = {"F"}, .name = "Roof"}, {"D-F Lift", "B-F Lift"})).kinds(),
      ElementsAre("moverToNowhere"));
  test::Drawing placed = soundDrawing();
  placed.connectors = {{.id = 2, .at = "AB D"}};
  const Findings findings = Checked(placed).findings();
  ASSERT_EQ(findings.size(), 1U);
  EXPECT_THAT(findings[0].ids, ElementsAre(2, 1));
}

TEST(CheckVenue, landingBetweenTwoFlightsLeadsOn) {
  test::Drawing drawing = soundDrawing();
  drawing.floors.push_back({.lines = {"   L"}, .level = 5, .name = "Landing"});
  drawing.paths.insert(drawing.paths.end(), {"A-L Stairs", "L-E Stairs"});
  drawing.pathTypes.push_back({.name = "Stairs", .accessibility = 100});
  EXPECT_THAT(Checked(drawing).kinds(), IsEmpty());
}

TEST(CheckVenue, idOfWhatIsNotThereDangles) {
  using Change = void (*)(Checked&);
  const Change changes[] = {
      [](Checked& c) {
        c.destination(0).find("locations")->items()[0].find("waypointIds")->append(99);
      },
      [](Checked& c) {
        c.destination(0).find("locations")->append(Value::map({{"mapId", 99}}));
      },
      [](Checked& c) { c.path(0, 0).find("waypointIds")->append(99); },
      [](Checked& c) { c.path(0, 0).set("pathTypeId", 99); },
      [](Checked& c) { c.waypoint(0, 0).set("mapId", 99); },
      [](Checked& c) {
        c.waypoint(0, 0).set("associations", Value::map({{"destinations", Value::list({99})}}));
      },
      [](Checked& c) { c.building.set("defaultFloorId", 99); },
      [](Checked& c) { c.document.find("buildings")->set("defaultId", 99); },
  };
  for (const Change change : changes) {
    Checked checked(soundDrawing());
    change(checked);
    const Findings findings = checked.findings();
    ASSERT_FALSE(findings.empty());
    EXPECT_EQ(textOf(findings[0].kind).name, "danglingId") << findings[0].message;
    EXPECT_EQ(findings.size(), 1U) << checked.text();
    EXPECT_THAT(findings[0].message, HasSubstr("99"));
  }
}

TEST(CheckVenue, idOfTwoRecordsIsRepeated) {
  Checked places(soundDrawing());
  places.document.find("destinations")->find("items")->append(Value(places.destination(0)));
  EXPECT_THAT(places.kinds(), ElementsAre("repeatedId"));
  Checked waypoints(soundDrawing());
  Value again = waypoints.waypoint(0, 0);
  again.set("mapId", 2);
  waypoints.mapOf(1).find("waypoints")->find("items")->append(std::move(again));
  EXPECT_THAT(waypoints.kinds(), ElementsAre("repeatedId"));
}

TEST(CheckVenue, pathThatIsListedOnBothItsMapsIsOne) {
  Checked checked(soundDrawing());
  checked.mapOf(1).find("paths")->find("items")->append(Value(checked.path(0, 2)));
  EXPECT_THAT(checked.kinds(), IsEmpty());
}

TEST(CheckVenue, linkBetweenWaypointsAtOnePointHasNoLength) {
  Checked checked(soundDrawing());
  checked.waypoint(0, 1).set("coordinates", Value::list({0, 0}));
  EXPECT_THAT(checked.kinds(), ElementsAre("zeroLength"));
  Checked loop(soundDrawing());
  loop.path(0, 0).find("waypointIds")->append(1);
  EXPECT_THAT(loop.kinds(), ElementsAre("zeroLength"));
}

TEST(CheckVenue, linkThroughMoreThanTheFloorsWidthIsLong) {
  Checked checked(soundDrawing());
  checked.mapOf(0).set("width", 60);
  checked.mapOf(0).set("height", 60);
  EXPECT_THAT(checked.kinds(), IsEmpty());
  checked.waypoint(0, 2).set("coordinates", Value::list({0, 95}));
  const Findings findings = checked.findings();
  ASSERT_EQ(findings.size(), 1U);
  EXPECT_EQ(findings[0].kind, Kind::longLink);
  EXPECT_THAT(findings[0].ids, ElementsAre(2, 2, 3));
  EXPECT_THAT(findings[0].message, HasSubstr(" goes 10 m, farther than the floor is wide"));
}

constexpr std::string_view wall =
    "<svg viewBox=\"0 0 100 50\"><path class=\"walls\" "
    "d=\"M15 -20v40\"/>";

TEST(CheckVenue, linkThroughAWallIsToldUnlessADoorIsThere) {
  Checked checked(soundDrawing());
  checked.mapOf(0).set("svg", std::string(wall) + "</svg>");
  const Findings findings = checked.findings();
  ASSERT_EQ(findings.size(), 1U);
  EXPECT_EQ(findings[0].kind, Kind::throughWall);
  EXPECT_EQ(findings[0].message, "path 1 from waypoint 1 to 2 on Ground crosses a wall at 15,0");
  checked.mapOf(0).set("svg", std::string(wall) + "<path class=\"doors\" d=\"M15 -4l0 8\"/></svg>");
  EXPECT_THAT(checked.kinds(), IsEmpty());
}

TEST(CheckVenue, wallThatAWayOnlyTouchesIsNotCrossed) {
  Checked checked(soundDrawing());
  for (const char* data : {"M15 2v40", "M0 -20v40", "M15 20v40", "M-5 0h100"}) {
    checked.mapOf(0).set("svg", "<svg viewBox=\"0 0 100 50\"><path class=\"walls\" d=\"" +
                                    std::string(data) + "\"/></svg>");
    EXPECT_THAT(checked.kinds(), IsEmpty()) << data;
  }
}

TEST(CheckVenue, whatIsMissingIsTold) {
  Checked scale(soundDrawing());
  scale.mapOf(0).set("mmPerPixel", 0);
  EXPECT_THAT(scale.kinds(), ElementsAre("missingScale"));
  Checked level(soundDrawing());
  level.floor(0).set("level", nullptr);
  EXPECT_THAT(level.kinds(), ElementsAre("missingLevel"));
  Checked name(soundDrawing());
  name.destination(0).set("name", "");
  name.floor(1).set("name", nullptr);
  EXPECT_THAT(name.kinds(), ElementsAre("missingName", "missingName"));
}

TEST(CheckVenue, nameOfTwoPlacesOnOneFloorIsTold) {
  test::Drawing drawing = soundDrawing();
  drawing.destinations.push_back({.id = 9, .at = "E", .name = "Bakery"});
  EXPECT_THAT(Checked(drawing).kinds(), IsEmpty());
  drawing.destinations.push_back({.id = 10, .at = "C", .name = "Bakery"});
  const Findings findings = Checked(drawing).findings();
  ASSERT_EQ(findings.size(), 1U);
  EXPECT_EQ(findings[0].kind, Kind::repeatedName);
  EXPECT_THAT(findings[0].ids, ElementsAre(7, 10));
}

// 100 m from corner to corner each way, at the equator.
void place(Checked& checked, double degrees) {
  checked.document.set("coordinates", Value::map({{"topLeft", Value::list({degrees, 0})},
                                                  {"bottomRight", Value::list({0, degrees})}}));
  checked.mapOf(0).set("width", 1000);
  checked.mapOf(0).set("height", 1000);
}

TEST(CheckVenue, cornersThatDoNotFitTheScaleAreTold) {
  constexpr double hundredMetres = 100 / 111'319.49;
  Checked checked(soundDrawing());
  place(checked, hundredMetres);
  EXPECT_THAT(checked.kinds(), IsEmpty());
  place(checked, 2 * hundredMetres);
  EXPECT_THAT(checked.kinds(), ElementsAre("placement", "placement"));
  EXPECT_THAT(checked.text(), HasSubstr("the map of Ground is 100 m wide by its scale and 200 m by "
                                        "the venue's corners"));
  place(checked, -hundredMetres);
  EXPECT_THAT(checked.kinds(), ElementsAre("placement"));
  place(checked, 1000);
  EXPECT_THAT(checked.kinds(), ElementsAre("placement"));
}

TEST(CheckVenue, mapOfAnotherScaleThanTheFirstLiesElsewhere) {
  constexpr double hundredMetres = 100 / 111'319.49;
  Checked checked(soundDrawing());
  place(checked, hundredMetres);
  checked.mapOf(1).set("mmPerPixel", 50);
  EXPECT_THAT(checked.kinds(), ElementsAre("placement"));
}

TEST(CheckVenue, textTellsOfTheFirstOfManyAndHowManyMore) {
  test::Drawing drawing = soundDrawing();
  drawing.floors[0].lines = {"A  B  C  P Q R S T U V W"};
  const std::string text = Checked(drawing).text();
  EXPECT_THAT(text,
              HasSubstr("\n8 islands: join them to the rest with a path, or take them out\n"
                        "  waypoint 16 on Ground is joined to nothing else, 1 of 13 in all\n"));
  EXPECT_THAT(text,
              HasSubstr("\n  waypoint 20 on Ground is joined to nothing else, 1 of 13 in all\n"
                        "  and 3 more\n"));
}

TEST(CheckVenue, jsonHasAllFindingsInTheOrderOfTheirKinds) {
  Checked checked(soundDrawing());
  checked.floor(1).set("level", nullptr);
  checked.destination(0).set("locations", Value::list());
  EXPECT_EQ(reportOf(checked.findings()), test::parsed(R"({"findings": [
      {"kind": "unreachable", "ids": [7], "map": null,
       "message": "Bakery (destination 7) has no waypoint"},
      {"kind": "missingLevel", "ids": [2], "map": 2,
       "message": "floor 2 has no level, and counts as level 0"}]})"));
}

TEST(CheckVenue, sampleIsClean) {
  VenueDocuments documents;
  const auto loaded =
      command::loadVenue(test::samplePath(), std::nullopt, std::nullopt, &documents);
  const auto& venue = std::get<std::shared_ptr<TernActiveVenue>>(loaded);
  const Subject subject(*venue, documents.venue, documents.buildings);
  EXPECT_EQ(reportOf(checkVenue(subject)), test::parsed(R"({"findings": []})"));
}

// What is found in one of the generated venues.
Findings findingsIn(const generate::GeneratedVenue& generated, std::int64_t id) {
  const std::string folder = "venue/" + std::to_string(id) + "/";
  const Value& document = generated.documents.at(folder + "full.json");
  auto venue = TernActiveVenue::initWithDictionary(Value(document));
  std::vector<Value> buildings;
  for (const auto& [path, building] : generated.documents) {
    if (!path.starts_with(folder + "building/")) continue;
    buildings.push_back(building);
    addBuilding(*venue, building["id"].integer(), Value(building));
  }
  attachWaypoints(*venue);
  venue->loadGridData();
  return checkVenue(Subject(*venue, document, buildings));
}

// Several of them have exits to each other.
RC_GTEST_PROP(CheckVenue, generatedVenuesAreClean, ()) {
  test::Tape tape(*test::tapes());
  generate::GenerateOptions options;
  options.seed = tape.below(256);
  options.buildings = 1 + static_cast<std::int64_t>(tape.below(3));
  options.floors = 1 + static_cast<std::int64_t>(tape.below(5));
  options.shops = 1 + static_cast<std::int64_t>(tape.below(60));
  options.spacing = 1 + static_cast<std::int64_t>(tape.below(20));
  options.venues = 1 + static_cast<std::int64_t>(tape.below(3));
  const generate::GeneratedVenue generated(options);
  for (std::int64_t id = options.venue; id < options.venue + options.venues; ++id) {
    RC_ASSERT(reportOf(findingsIn(generated, id)) == test::parsed(R"({"findings": []})"));
  }
}

// Documents in which anything may stand anywhere: missing lists, wrong kinds, huge ids.
RC_GTEST_PROP(CheckVenue, hostileDocumentsAreCheckedToTheirEnd, ()) {
  test::CapturedLog log;
  test::Tape tape(*test::tapes());
  test::Drawing drawing = withThird({.lines = {"F  G"}, .name = "Roof"}, {"D>F Lift up", "FG-A"});
  drawing.connectors = {{.id = 2, .at = "B D F"}};
  Checked checked(drawing);
  place(checked, 1e-3);
  checked.mapOf(0).set("svg", std::string(wall) + "</svg>");
  for (std::size_t changes = tape.below(5); changes > 0; --changes) {
    Value& document = tape.oneIn(3) ? checked.document : checked.building;
    std::size_t n = (tape.below(256) * 256 + tape.below(256)) % test::countValues(document);
    // The whole stays an object, without which there is nothing to load.
    if (n > 0) *test::nthValue(document, n) = tape.pick(test::oddValuesAndMaps());
  }
  for (const Finding& finding : checked.findings()) RC_ASSERT(!finding.message.empty());
  // What the library left out of the documents.
  log.take();
}

}  // namespace
}  // namespace tern::check
