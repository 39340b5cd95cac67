#include "TernCoreKit/guidance/TernGuidance.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "TernCoreKit/model/venue/TernActiveVenue.hpp"
#include "TernCoreKit/wayfinding/TernASGrid.hpp"
#include "tests/support/ActiveVenue.hpp"
#include "tests/support/DrawnVenue.hpp"

namespace tern {
namespace {

using test::Drawing;
using testing::ElementsAre;
using testing::IsEmpty;
using Steps = std::vector<TernStep>;

// A character of a drawing is a metre.
Steps stepsOn(const Drawing& drawing, char from, char to, std::string_view language = "en") {
  const auto venue = test::loadDrawnVenue(drawing);
  const TernGuidance guidance({venue}, venue->globalASGrid());
  return *guidance.stepsOf(
      venue->wayfind(test::waypointAt(*venue, from), test::waypointAt(*venue, to), 100), language);
}

std::vector<std::string> textsOf(const Steps& steps) {
  std::vector<std::string> texts;
  for (const TernStep& step : steps) texts.push_back(step.text);
  return texts;
}

const Drawing corner{
    .floors = {{.lines = {"A                   B", "", "", "", "", "", "", "                    C"},
                .name = "Ground Floor"}},
    .paths = {"A-B", "B-C"},
    .destinations = {{7, "A", "Coral Books"}, {8, "C", "Olive Shoes"}}};

TEST(TernGuidance, aCornerIsADepartureATurnAndAnArrival) {
  const Steps steps = stepsOn(corner, 'A', 'C');
  EXPECT_THAT(textsOf(steps),
              ElementsAre("Start at Coral Books", "Turn right", "You have reached Olive Shoes"));
  ASSERT_EQ(steps.size(), 3U);
  EXPECT_EQ(steps[0].kind, TernStep::Kind::depart);
  EXPECT_EQ(steps[1].kind, TernStep::Kind::turn);
  EXPECT_EQ(steps[1].direction, TernDirection::right);
  EXPECT_EQ(steps[1].at, test::idOf('B'));
  EXPECT_EQ(steps[1].mapId, 1);
  EXPECT_EQ(steps[2].kind, TernStep::Kind::arrive);
  EXPECT_DOUBLE_EQ(steps[0].mm, 20'000);
  EXPECT_DOUBLE_EQ(steps[1].mm, 7'000);
  EXPECT_DOUBLE_EQ(steps[2].mm, 0);
  EXPECT_NEAR(steps[0].seconds, 20 / 1.34, 1e-9);
}

TEST(TernGuidance, tellsTheSameInEveryLanguage) {
  EXPECT_THAT(
      textsOf(stepsOn(corner, 'A', 'C', "de")),
      ElementsAre("Start bei Coral Books", "Rechts abbiegen", "Ziel erreicht: Olive Shoes"));
  EXPECT_THAT(textsOf(stepsOn(corner, 'A', 'C', "ja")),
              ElementsAre("Coral Booksから出発します", "右に曲がります", "Olive Shoesに到着です"));
  EXPECT_THAT(textsOf(stepsOn(corner, 'A', 'C', "no-such")),
              ElementsAre("Start at Coral Books", "Turn right", "You have reached Olive Shoes"));
}

TEST(TernGuidance, noRouteHasNoSteps) {
  const auto venue = test::loadDrawnVenue(corner);
  EXPECT_THAT(TernGuidance({venue}, venue->globalASGrid()).stepsOf({}),
              testing::Optional(IsEmpty()));
}

TEST(TernGuidance, aTurnIsToldByADestinationAtItOrByOnePassedBefore) {
  const Drawing drawing{.floors = {{.lines = {"              E",
                                              "",
                                              "A             F    B              G",
                                              "",
                                              "",
                                              "",
                                              "",
                                              "",
                                              "",
                                              "",
                                              "                                   C",
                                              "",
                                              "",
                                              "",
                                              "",
                                              "",
                                              "",
                                              "",
                                              "",
                                              "                   X               D"}}},
                        .paths = {"A-F", "F-B", "B-G", "E-F", "G-C", "C-D", "D-X"},
                        .destinations = {{7, "A", "Start"},
                                         {8, "E", "Coral Books"},
                                         {9, "X", "Olive Shoes"},
                                         {10, "D", "Corner Cafe"}}};
  EXPECT_THAT(textsOf(stepsOn(drawing, 'A', 'X')),
              ElementsAre("Start at Start", "Turn right", "Turn right at Corner Cafe",
                          "You have reached Olive Shoes"))
      << "Coral Books lies 21 m before the first corner";
  const Drawing nearer{
      .floors = {{.lines = {"              E", "", "A             F           B", "", "", "", "",
                            "", "", "", "                          C"}}},
      .paths = {"A-F", "F-B", "E-F", "B-C"},
      .destinations = {{8, "E", "Coral Books"}, {9, "C", "Olive Shoes"}}};
  const Steps steps = stepsOn(nearer, 'A', 'C');
  ASSERT_EQ(steps.size(), 3U);
  EXPECT_EQ(steps[1].text, "Turn right after Coral Books on your left");
  EXPECT_EQ(steps[1].landmark, TernStep::Landmark{8});
}

TEST(TernGuidance, ofSeveralLandmarksTheOneAtATurnTellsItThenTheOnePassedLast) {
  const std::vector<Drawing::Place> passed = {{8, "E", "Coral Books"}, {9, "F", "Olive Shoes"}};
  Drawing drawing{.floors = {{.lines = {"              E  F              G", "",
                                        "A                           B", "", "", "", "", "", "", "",
                                        "                            C"}}},
                  .paths = {"A-B", "B-C"},
                  .destinations = passed};
  EXPECT_EQ(stepsOn(drawing, 'A', 'C')[1].text, "Turn right after Olive Shoes on your left");
  drawing.destinations = {passed[1], passed[0]};
  EXPECT_EQ(stepsOn(drawing, 'A', 'C')[1].text, "Turn right after Olive Shoes on your left");
  drawing.destinations = {passed[0], {10, "G", "Corner Cafe"}, passed[1]};
  EXPECT_EQ(stepsOn(drawing, 'A', 'C')[1].text, "Turn right at Corner Cafe");
}

TEST(TernGuidance, whatIsPassedAtAMetresDistanceHasItsSide) {
  const Drawing drawing{.floors = {{.lines = {"A             F           B", "              E", "",
                                              "", "", "", "", "", "                          C"}}},
                        .paths = {"A-F", "F-B", "E-F", "B-C"},
                        .destinations = {{8, "E", "Coral Books"}, {9, "C", "Olive Shoes"}}};
  EXPECT_EQ(stepsOn(drawing, 'A', 'C').at(1).text, "Turn right after Coral Books on your right");
}

TEST(TernGuidance, nothingIsPassedOnTheWayFromAnotherFloor) {
  const Drawing drawing{.floors = {{.lines = {"", "", "", "", "", "", "A                   K"}},
                                   {.lines = {"      E             B         C", "", "", "", "", "",
                                              "                    L"},
                                    .name = "Up"}},
                        .paths = {"A-K", "K-L lift", "L-B", "B-C"},
                        .pathTypes = {{.name = "lift", .weight = 5}},
                        .destinations = {{8, "E", "Coral Books"}, {9, "C", "Olive Shoes"}}};
  EXPECT_THAT(textsOf(stepsOn(drawing, 'A', 'C')),
              ElementsAre("Start at your position", "Take the lift to Up", "Turn right",
                          "You have reached Olive Shoes"));
}

TEST(TernGuidance, neitherTheGoalNorTheLastLandmarkTellsATurn) {
  const Drawing drawing{.floors = {{.lines = {"A             B", "", "", "              E", "", "",
                                              "              C            D"}}},
                        .paths = {"A-B", "B-E", "E-C", "C-D"},
                        .destinations = {{8, "E", "Coral Books"}, {9, "D", "Olive Shoes"}}};
  EXPECT_THAT(textsOf(stepsOn(drawing, 'A', 'D')),
              ElementsAre("Start at a place near Coral Books", "Turn right at Coral Books",
                          "Turn left", "You have reached Olive Shoes"));
}

const Drawing house{.floors = {{.lines = {"A         B"}, .name = "Ground Floor"},
                               {.lines = {"          C"}, .name = "First Floor"},
                               {.lines = {"          D         E"}, .name = "Second Floor"}},
                    .paths = {"A-B", "B-C lift", "C-D lift", "D-E"},
                    .pathTypes = {{.name = "lift", .weight = 5}},
                    .destinations = {{7, "A", "Coral Books"}, {8, "E", "Olive Shoes"}},
                    .connectors = {{2, "B C D"}}};

TEST(TernGuidance, aRideThroughFloorsIsOneStepAndNamesWhereItLeads) {
  const Steps steps = stepsOn(house, 'A', 'E');
  EXPECT_THAT(textsOf(steps), ElementsAre("Start at Coral Books", "Take the lift to Second Floor",
                                          "You have reached Olive Shoes"));
  ASSERT_EQ(steps.size(), 3U);
  EXPECT_EQ(steps[1].kind, TernStep::Kind::mover);
  EXPECT_EQ(steps[1].at, test::idOf('B'));
  EXPECT_EQ(steps[1].mover, 2);
  EXPECT_EQ(steps[1].mapId, 1);
  EXPECT_EQ(steps[1].toMapId, 3);
  EXPECT_NEAR(steps[1].seconds, 38 + 2 * 4 + 10 / 1.34, 1e-9);
}

TEST(TernGuidance, stairsSayWhetherTheyGoUpOrDown) {
  Drawing drawing = house;
  drawing.paths = {"A-B", "B-C stairs", "C-D stairs", "D-E"};
  drawing.pathTypes = {{.name = "stairs", .weight = 5}};
  EXPECT_EQ(stepsOn(drawing, 'A', 'E')[1].text, "Take the stairs up to Second Floor");
  EXPECT_EQ(stepsOn(drawing, 'E', 'A')[1].text, "Take the stairs down to Ground Floor");
}

TEST(TernGuidance, aGateIsGoneThrough) {
  const Drawing drawing{.floors = {{.lines = {"A         B    C          D"}}},
                        .paths = {"A-B", "B-C Gate", "C-D"},
                        .pathTypes = {{.name = "Gate", .weight = 5}}};
  const Steps steps = stepsOn(drawing, 'A', 'D');
  ASSERT_EQ(steps.size(), 3U);
  EXPECT_EQ(steps[1].kind, TernStep::Kind::mover);
  EXPECT_EQ(steps[1].text, "Go through the gate");
}

TEST(TernGuidance, aFloorIsChangedOnFootByACrossing) {
  Drawing drawing = house;
  drawing.paths = {"A-B", "B-C", "C-D", "D-E"};
  const Steps steps = stepsOn(drawing, 'A', 'C');
  EXPECT_EQ(steps.size(), 2U) << "nothing is said of one that ends at once";
  const Steps further = stepsOn(drawing, 'A', 'E');
  ASSERT_EQ(further.size(), 3U);
  EXPECT_EQ(further[1].kind, TernStep::Kind::crossing);
  EXPECT_EQ(further[1].toMapId, 3);
  EXPECT_EQ(further[1].text, "Go on to Second Floor");
}

TEST(TernGuidance, whatLiesRightAtARideIsPartOfIt) {
  const Drawing drawing{.floors = {{.lines = {"A             B", "", "              C"}},
                                   {.lines = {"", "", "              D        E"}, .name = "Up"}},
                        .paths = {"A-B", "B-C", "C-D stairs", "D-E"},
                        .pathTypes = {{.name = "stairs", .weight = 5}}};
  const Steps steps = stepsOn(drawing, 'A', 'E');
  ASSERT_EQ(steps.size(), 3U);
  EXPECT_EQ(steps[1].direction, TernDirection::right);
  EXPECT_EQ(steps[1].text, "Turn right. Take the stairs up to Up");
  EXPECT_DOUBLE_EQ(steps[0].mm, 16'000);
}

TEST(TernGuidance, aTurnRightBeforeTheGoalIsTheSideWhereItLies) {
  const Drawing drawing{.floors = {{.lines = {"C", "", "B                A"}}},
                        .paths = {"A-B", "B-C"},
                        .destinations = {{8, "C", "Olive Shoes"}}};
  EXPECT_EQ(stepsOn(drawing, 'A', 'C').back().text, "Olive Shoes is on your right");
}

TEST(TernGuidance, whereAnotherWayGoesStraighterOnASlightBendIsTold) {
  const Drawing drawing{
      .floors = {{.lines = {"A                    B                    D", "", "", "", "", "", "",
                            "                                         C"}}},
      .paths = {"A-B", "B-D", "B-C"}};
  const Steps steps = stepsOn(drawing, 'A', 'C');
  ASSERT_EQ(steps.size(), 3U);
  EXPECT_EQ(steps[1].direction, TernDirection::slightRight);
  Drawing alone = drawing;
  alone.paths = {"A-B", "B-C"};
  EXPECT_EQ(stepsOn(alone, 'A', 'C').size(), 2U);
}

// A way from the left that forks into B-C and B-D.
Drawing fork(std::string_view up, std::string_view down,
             std::string_view way = "A                    B") {
  return {.floors = {{.lines = {up, "", "", "", way, "", "", "", down}}},
          .paths = {"A-B", "B-C", "B-D"}};
}

TEST(TernGuidance, whereAnotherWayIsAboutAsStraightABendIsTold) {
  const Drawing both =
      fork("                                   C", "                                   D");
  const Steps up = stepsOn(both, 'A', 'C');
  ASSERT_EQ(up.size(), 3U);
  EXPECT_EQ(up[1].direction, TernDirection::slightLeft);
  EXPECT_EQ(up[1].at, test::idOf('B'));
  EXPECT_EQ(stepsOn(both, 'A', 'D')[1].direction, TernDirection::slightRight);
  const Drawing one = fork("                                   C", "                       D");
  EXPECT_EQ(stepsOn(one, 'A', 'C').size(), 2U) << "the other one is a side way";
}

TEST(TernGuidance, aForkBehindTheStartOrBeforeTheGoalIsToldWithIt) {
  const Drawing behind = fork("                 C", "                 D", "A B");
  const Steps start = stepsOn(behind, 'A', 'C');
  ASSERT_EQ(start.size(), 2U);
  EXPECT_EQ(start[0].direction, TernDirection::slightLeft);
  const Drawing before{.floors = {{.lines = {"                   E  F", "A                 B",
                                             "                   C  D"}}},
                       .paths = {"A-B", "B-C", "C-D", "B-E", "E-F"}};
  const Steps goal = stepsOn(before, 'A', 'C');
  ASSERT_EQ(goal.size(), 2U);
  EXPECT_EQ(goal[1].direction, TernDirection::slightRight);
}

TEST(TernGuidance, aForkThreeMetresBehindTheStartIsAStepOfItsOwn) {
  const Steps steps = stepsOn(fork("                  C", "                  D", "A  B"), 'A', 'C');
  ASSERT_EQ(steps.size(), 3U);
  EXPECT_EQ(steps[1].direction, TernDirection::slightLeft);
  EXPECT_EQ(steps[1].at, test::idOf('B'));
}

TEST(TernGuidance, aDoorBesideTheWayIsNoFork) {
  const Drawing drawing{
      .floors = {{.lines = {"                       D", "A                    B", "", "", "", "",
                            "                                 C"}}},
      .paths = {"A-B", "B-C", "B-D"}};
  EXPECT_EQ(stepsOn(drawing, 'A', 'C').size(), 2U);
}

TEST(TernGuidance, withoutAScaleThereAreTurnsButNoLengths) {
  Drawing drawing = corner;
  drawing.floors[0].mmPerPixel = 0;
  const Steps steps = stepsOn(drawing, 'A', 'C');
  ASSERT_EQ(steps.size(), 3U);
  EXPECT_EQ(steps[1].direction, TernDirection::right);
  EXPECT_EQ(steps[0].mm, 0);
}

TEST(TernGuidance, sumsUpInWords) {
  EXPECT_EQ(TernGuidance::sumOf(stepsOn(corner, 'A', 'C')), "27 m, about 1 minute");
  EXPECT_EQ(TernGuidance::sumOf(stepsOn(corner, 'A', 'C'), "fr"), "27 m, environ 1 minute");
  EXPECT_EQ(TernGuidance::sumOf(stepsOn(corner, 'A', 'C'), "en-US"), "89 ft, about 1 minute");
}

}  // namespace
}  // namespace tern
