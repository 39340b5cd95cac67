#include "TernCoreKit/wayfinding/TernASAlternativePath.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>
#include <limits>
#include <new>
#include <string>

#include "TernCoreKit/model/records/TernWaypoint.hpp"
#include "TernCoreKit/wayfinding/TernASGrid.hpp"
#include "TernCoreKit/wayfinding/TernASSearch.hpp"
#include "tests/support/CapturedLog.hpp"
#include "tests/support/DrawnVenue.hpp"
#include "tests/support/FailingAllocation.hpp"
#include "tests/support/LiteralAlternatives.hpp"
#include "tests/support/RandomVenue.hpp"
#include "tests/support/VenueLists.hpp"

namespace tern::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// Two ways from B to D, both of the same length: one with four turns, and one with five.
const Drawing twoDetours{.floors = {{.lines = {"   F--G--H   ",  //
                                               "   |     |   ",  //
                                               "A--B--C--D--E",  //
                                               "   |     |   ",  //
                                               "   I     K   ",  //
                                               "             ",  //
                                               "      J      "}}},
                         .paths = {"F-G", "G-H", "A-B", "B-C", "C-D", "D-E", "B-F", "H-D",
                                   "B-I ramp", "I-J ramp", "J-K ramp", "K-D ramp"},
                         .pathTypes = {{.name = "ramp", .weight = 25}}};

// A way round C of 160 map units, where the straight one has 120.
const Drawing oneDetour{.floors = {{.lines = {"A--B--C--D--E", "   |     |   ", "   F--G--H   "}}},
                        .paths = {"A-B", "B-C", "C-D", "D-E", "B-F", "F-G", "G-H", "H-D"}};

struct Drawn {
  explicit Drawn(const Drawing& drawing) : venue(drawVenue(drawing)) {
    finder.grid = listsOf(venue).makeGrid();
    finder.maps = venue.maps;
  }

  // "ABCDE, ABFGHDE" for a route and its alternative, "none" for one that is missing.
  std::string letters(char from, char to, const Value& options = {}) {
    std::string text;
    finder.wayfind(venue.waypoint(from), venue.waypoint(to), options, 0,
                   [&](const auto& optimal, const auto& alternatives) {
                     text = optimal ? lettersOf(*optimal) : "none";
                     if (!alternatives) text += ", none";
                     for (const TernRoute& route : alternatives.value_or(Routes())) {
                       text += ", " + lettersOf(route);
                     }
                   });
    return text;
  }
  TernASNode node(char letter) const { return finder.grid->getNodeById(idOf(letter)).value(); }
  std::vector<TernASNode> nodes(std::string_view letters) const {
    std::vector<TernASNode> list;
    for (const char letter : letters) list.push_back(node(letter));
    return list;
  }
  void block(char from, char to) {
    finder.grid->shouldBlockEdgeBetweenNode(node(from), node(to), true);
  }
  bool isBlocked(char from, char to) const {
    return finder.grid->isEdgeBlockedBetweenNode(node(from), node(to));
  }

  using Routes = TernASAlternativePath::Routes;
  CapturedLog log;
  DrawnVenue venue;
  TernASAlternativePath finder;
};

Value matchRatio(double ratio) { return Value::map({{"optimalPathMatchRatio", ratio}}); }

TEST(TernASAlternativePath, aDetourIsOfferedBesideTheRoute) {
  Drawn drawn(oneDetour);
  EXPECT_EQ(drawn.letters('A', 'E'), "ABCDE, ABFGHDE");
  EXPECT_EQ(drawn.finder.optimalPath->back().cost, 120);
  EXPECT_EQ(drawn.finder.bestAlternativePath->back().cost, 160 + 4 * 0.001F) << "four turns";
}

TEST(TernASAlternativePath, matchRatioOneOffersTheRouteItselfWithoutASearch) {
  Drawn drawn(oneDetour);
  drawn.block('D', 'C');
  EXPECT_EQ(drawn.letters('A', 'E', matchRatio(1)), "ABCDE, ABCDE");
  EXPECT_TRUE(drawn.isBlocked('D', 'C')) << "no stretch was closed and opened";
  EXPECT_EQ(drawn.finder.bestAlternativePath, std::nullopt);
}

TEST(TernASAlternativePath, matchRatioAboveOneOffersNothing) {
  Drawn drawn(oneDetour);
  EXPECT_EQ(drawn.letters('A', 'E', matchRatio(1.5)), "ABCDE, none");
}

TEST(TernASAlternativePath, matchRatiosThatMakeNoStretchOfferNothing) {
  for (const double ratio :
       {-5.0, -1e300, std::nan(""), -std::numeric_limits<double>::infinity()}) {
    Drawn drawn(oneDetour);
    EXPECT_EQ(drawn.letters('A', 'E', matchRatio(ratio)), "ABCDE, none") << ratio;
  }
}

TEST(TernASAlternativePath, withoutOptionsTheThresholdsStay) {
  Drawn drawn(oneDetour);
  drawn.finder.pathMatchThreshold = 1;
  EXPECT_EQ(drawn.letters('A', 'E'), "ABCDE, ABCDE");
  EXPECT_EQ(drawn.letters('A', 'E', Value::map()), "ABCDE, ABFGHDE") << "the defaults again";
  EXPECT_EQ(drawn.finder.pathMatchThreshold, 0.6);
  EXPECT_EQ(drawn.finder.distanceThreshold, 2);
  drawn.letters('A', 'E', Value::map({{"optimalPathDistanceRatio", "3"}}));
  EXPECT_EQ(drawn.finder.distanceThreshold, 2) << "a text is no number";
}

// Which of twelve points are closed behind a branch, by the blocks that are lifted behind them.
class TernASAlternativePathOfTwelve
    : public testing::TestWithParam<std::pair<std::string_view, std::string_view>> {};

TEST_P(TernASAlternativePathOfTwelve, closesFourPointsBehindTheBranchWhereTheyFit) {
  const std::string branch = std::string(GetParam().first) + "-M";
  Drawn drawn({.floors = {{.lines = {"A--B--C--D--E--F--G--H--I--J--K--L", "M--N--O"}}},
               .paths = {"A-B", "B-C", "C-D", "D-E", "E-F", "F-G", "G-H", "H-I", "I-J", "J-K",
                         "K-L", "M-N", "N-O", branch}});
  const std::string_view route = "ABCDEFGHIJKL";
  for (std::size_t i = 0; i + 1 < route.size(); ++i) drawn.block(route[i + 1], route[i]);
  EXPECT_EQ(drawn.letters('A', 'L'), "ABCDEFGHIJKL, none");
  std::string lifted;
  for (std::size_t i = 0; i + 1 < route.size(); ++i) {
    if (!drawn.isBlocked(route[i + 1], route[i])) lifted += route[i];
  }
  EXPECT_EQ(lifted, GetParam().second);
}

INSTANTIATE_TEST_SUITE_P(Branches, TernASAlternativePathOfTwelve,
                         testing::Values(std::pair{"C", "DEFG"}, std::pair{"H", "IJK"},
                                         std::pair{"I", ""}));

TEST(TernASAlternativePath, aDetourMoreThanTwiceAsLongIsRejected) {
  std::vector<std::string_view> lines(12, "   |     |   ");
  lines.front() = "A--B--C--D--E";
  lines.back() = "   F--G--H   ";
  Drawing drawing = oneDetour;
  drawing.floors.front().lines = lines;
  Drawn drawn(drawing);
  EXPECT_EQ(drawn.letters('A', 'E'), "ABCDE, none");
  EXPECT_EQ(drawn.letters('A', 'E', Value::map({{"optimalPathDistanceRatio", 3}})),
            "ABCDE, ABFGHDE");
}

TEST(TernASAlternativePath, aRouteOnOneFloorGetsNoAlternativeOverOthers) {
  Drawn drawn({.floors = {{.lines = {"A--B--C--D--E", "   F--G--H"}}, {.lines = {"   I--J--K"}}},
               .paths = {"A-B", "B-C", "C-D", "D-E", "B-F", "F-G", "G-H", "B-I lift", "I-J", "J-K",
                         "K-D lift"},
               .pathTypes = {{.name = "lift", .verticalWeight = -1}}});
  EXPECT_THAT(drawn.finder.getDecisionNodes(drawn.nodes("ABCDE")), ElementsAre(1U))
      << "the dead end at F is a branch";
  EXPECT_EQ(drawn.letters('A', 'E'), "ABCDE, none");
}

TEST(TernASAlternativePath, theFirstNodeBehindAFloorChangeIsNoDecision) {
  Drawn drawn({.floors = {{.lines = {"A--B"}}, {.lines = {"   C--D--E", "   F--G--H"}}},
               .paths = {"A-B", "B-C lift", "C-D", "D-E", "C-F", "D-F", "F-G", "G-H"},
               .pathTypes = {{.name = "lift"}}});
  EXPECT_THAT(drawn.finder.getDecisionNodes(drawn.nodes("ABCDE")), ElementsAre(3U));
}

// The ways round C with the upper or the lower side closed too.
std::string bestOf(Drawn& drawn, std::string_view firstClosed, std::string_view thenClosed) {
  drawn.finder.waypointStart = drawn.venue.waypoint('A');
  drawn.finder.waypointEnd = drawn.venue.waypoint('E');
  drawn.finder.optimalPath = drawn.finder.getShortestPath();
  drawn.finder.blockandgeneratePath(drawn.nodes(firstClosed));
  drawn.finder.blockandgeneratePath(drawn.nodes(thenClosed));
  return lettersOf(*drawn.finder.bestAlternativePath);
}

TEST(TernASAlternativePath, ofDetoursOfOneCostTheOneWithFewerTurnsWins) {
  Drawn drawn(twoDetours);
  // Letters stand in the order of reading: F is 6.
  EXPECT_EQ(bestOf(drawn, "CF", "CI"), "ABFGHDE");
  Drawn reversed(twoDetours);
  EXPECT_EQ(bestOf(reversed, "CI", "CF"), "ABFGHDE");
}

TEST(TernASAlternativePath, ofDetoursOfOnePenalisedCostTheFirstStays) {
  Drawing drawing = twoDetours;
  drawing.floors.front().lines = {"   F--G--H   ", "   |     |   ", "A--B--C--D--E",
                                  "   |     |   ", "   I--J--K   "};
  Drawn drawn(drawing);
  EXPECT_EQ(bestOf(drawn, "CF", "CI"), "ABIJKDE");
  Drawn reversed(drawing);
  EXPECT_EQ(bestOf(reversed, "CI", "CF"), "ABFGHDE");
}

TEST(TernASAlternativePath, aStraightCorridorHasNoDecisionAndNoAlternative) {
  Drawn drawn({.floors = {{.lines = {"A--B--C--D--E"}}}, .paths = {"A-B", "B-C", "C-D", "D-E"}});
  EXPECT_THAT(drawn.finder.getDecisionNodes(drawn.nodes("ABCDE")), IsEmpty());
  EXPECT_EQ(drawn.letters('A', 'E'), "ABCDE, none");
}

TEST(TernASAlternativePath, aBranchThatEndsAfterTwoLinksIsNoDecision) {
  const Drawing branch{.floors = {{.lines = {"A--B--C--D--E", "   F--G--H"}}},
                       .paths = {"A-B", "B-C", "C-D", "D-E", "B-F", "F-G"}};
  Drawn ends(branch);
  EXPECT_THAT(ends.finder.getDecisionNodes(ends.nodes("ABCDE")), IsEmpty());

  Drawing longer = branch;
  longer.paths.push_back("G-H");
  Drawn goesOn(longer);
  EXPECT_THAT(goesOn.finder.getDecisionNodes(goesOn.nodes("ABCDE")), ElementsAre(1U));

  Drawing shortcut = branch;
  shortcut.paths = {"A-B", "B-C", "C-D", "D-E", "B-F", "F-E"};
  Drawn comesToTheEnd(shortcut);
  EXPECT_THAT(comesToTheEnd.finder.getDecisionNodes(comesToTheEnd.nodes("ABCDE")), ElementsAre(1U));
}

TEST(TernASAlternativePath, withoutAParentTheDestinationIsNoShortcut) {
  Drawn drawn({.floors = {{.lines = {"A--B"}}}, .paths = {"A-B"}});
  drawn.finder.destinationNode = drawn.node('B');
  EXPECT_FALSE(drawn.finder.validateNode(drawn.node('A'), std::nullopt, 2));
  EXPECT_TRUE(drawn.finder.validateNode(drawn.node('A'), std::nullopt, 3));
  EXPECT_FALSE(drawn.finder.validateNode(drawn.node('A'), drawn.node('B'), 3)) << "the way back";
}

TEST(TernASAlternativePath, itsStepsReadTheLinksOfTheNodesThatTheyAreGiven) {
  Drawn drawn(oneDetour);
  const auto links = drawn.node('C').neighbors();  // B and D
  const std::int64_t map = drawn.node('A').mapId();
  drawn.finder.destinationNode = drawn.node('E');
  const TernASNode stranger = TernASNode::initASNode(77, 0, 0, 0, map, {}, links);
  EXPECT_TRUE(drawn.finder.validateNode(stranger, std::nullopt, 2));
  const TernASNode alone = TernASNode::initASNode(idOf('C'), 0, 0, 0, map, {}, {});
  EXPECT_FALSE(drawn.finder.validateNode(alone, std::nullopt, 2)) << "C has links in the grid only";
  EXPECT_THAT(drawn.finder.getDecisionNodes({drawn.node('A'), alone, drawn.node('E')}),
              ElementsAre(0U));
  EXPECT_THAT(drawn.finder.getDecisionNodes({drawn.node('A'), stranger, drawn.node('E')}),
              ElementsAre(0U, 1U));
}

TEST(TernASAlternativePath, itClosesTheWaysFromTheNeighboursThatANodeIsGivenWith) {
  Drawn drawn(oneDetour);
  drawn.finder.waypointStart = drawn.venue.waypoint('A');
  drawn.finder.waypointEnd = drawn.venue.waypoint('E');
  drawn.finder.optimalPath = drawn.finder.getShortestPath();
  const std::int64_t map = drawn.node('A').mapId();
  const TernASNode alone = TernASNode::initASNode(idOf('C'), 0, 0, 0, map, {}, {});
  drawn.finder.blockandgeneratePath(std::vector{alone});
  EXPECT_EQ(lettersOf(*drawn.finder.bestAlternativePath), "ABCDE") << "nothing was closed";
}

TEST(TernASAlternativePath, anEdgeBlockedBeforeOnATriedStretchIsOpenAfterwards) {
  Drawn drawn(oneDetour);
  drawn.block('D', 'C');
  drawn.block('C', 'B');
  drawn.letters('A', 'E');
  EXPECT_FALSE(drawn.isBlocked('D', 'C'));
  EXPECT_TRUE(drawn.isBlocked('C', 'B')) << "B is on no stretch";
}

// The edges that a request closes are closed for itself alone.
TEST(TernASAlternativePath, aCopyShowsWhatTheRequestHadClosedAndTheGridDoesNot) {
  Drawn drawn(oneDetour);
  ASSERT_EQ(drawn.letters('A', 'E'), "ABCDE, ABFGHDE");
  const TernASNode& b = drawn.finder.bestAlternativePath->front().points.at(1);
  EXPECT_TRUE(drawn.finder.grid->isEdgeBlockedBetweenNode(b, drawn.node('C')));
  EXPECT_FALSE(drawn.isBlocked('B', 'C'));
}

// A request that runs out of memory, wherever it does, leaves no trace.
TEST(TernASAlternativePath, outOfMemoryAnywhereLeavesTheGridAsItWas) {
  Drawn drawn(oneDetour);
  drawn.block('D', 'C');
  TernASSearch search;
  search.grid = drawn.finder.grid;
  const auto routes = [&] {
    return lettersOf(search.search(idOf('A'), idOf('E'), 0).value()) + ", " +
           lettersOf(search.search(idOf('E'), idOf('A'), 0).value());
  };
  const std::string before = routes();
  std::size_t failures = 0;
  for (bool isOver = false; !isOver; ++failures) {
    TernASAlternativePath finder;
    finder.grid = drawn.finder.grid;
    const auto start = drawn.venue.waypoint('A');
    const auto end = drawn.venue.waypoint('E');
    bool isAnswered = false;
    const FailingAllocation nth(failures);
    try {
      finder.wayfind(start, end, {}, 0,
                     [&](const auto&, const auto& others) { isAnswered = others.has_value(); });
    } catch (const std::bad_alloc&) {
    }
    isOver = !nth.hasFailed();
    if (isOver) {
      EXPECT_TRUE(isAnswered);
      break;
    }
    ASSERT_EQ(routes(), before) << "allocation " << failures;
    ASSERT_TRUE(drawn.isBlocked('D', 'C')) << "allocation " << failures;
  }
  EXPECT_GT(failures, 20U);
  EXPECT_FALSE(drawn.isBlocked('D', 'C')) << "the request that was answered has opened it";
}

TEST(TernASAlternativePath, withoutARouteBothAreMissing) {
  Drawn drawn({.floors = {{.lines = {"A  B"}}}, .paths = {}});
  EXPECT_EQ(drawn.letters('A', 'B'), "none, none");
  EXPECT_EQ(drawn.letters('A', 'Z'), "none, none") << "null";
  drawn.finder.grid = nullptr;
  EXPECT_EQ(drawn.letters('A', 'B'), "none, none");
  EXPECT_THAT(drawn.log.take(), testing::SizeIs(1)) << "the search says that there is no grid";
  EXPECT_THAT(drawn.finder.getDecisionNodes({}), IsEmpty());
}

TEST(TernASAlternativePath, aReusedFinderThatFindsNoRouteHandsOutNone) {
  Drawn drawn(oneDetour);
  EXPECT_EQ(drawn.letters('A', 'E'), "ABCDE, ABFGHDE");
  drawn.block('A', 'B');
  EXPECT_EQ(drawn.letters('A', 'E'), "none, none");
}

TEST(TernASAlternativePath, handedOutRoutesDoNotChangeWithLaterSearches) {
  Drawn drawn(oneDetour);
  drawn.letters('A', 'E');
  const TernRoute route = *drawn.finder.bestAlternativePath;
  ASSERT_EQ(route.back().points.back().g(), 160);
  drawn.letters('C', 'G');
  EXPECT_EQ(route.back().points.back().g(), 160);
}

TEST(TernASAlternativePath, aReusedFinderComparesWithItsOldBest) {
  Drawn drawn(twoDetours);
  drawn.letters('B', 'D');
  const std::string best = lettersOf(*drawn.finder.bestAlternativePath);
  drawn.letters('A', 'E');
  EXPECT_EQ(lettersOf(*drawn.finder.bestAlternativePath), best);
  drawn.letters('A', 'Z');
  EXPECT_EQ(lettersOf(*drawn.finder.bestAlternativePath), best) << "there is no route to compare";
}

TEST(TernASAlternativePath, anglesRunClockwiseFromEastWhichIs360) {
  const auto at = [](double x, double y) {
    return std::optional(TernASNode::initASNode(1, x, y, 0, 1, {}, {}));
  };
  const auto angle = [&](double x, double y) {
    return TernASAlternativePath::getAngleFrom(at(10, 10), at(10 + x, 10 + y));
  };
  EXPECT_EQ(angle(5, 0), 360);
  EXPECT_EQ(angle(0, 0), 360);
  EXPECT_FLOAT_EQ(static_cast<float>(angle(0, 5)), 90);
  EXPECT_FLOAT_EQ(static_cast<float>(angle(-5, 0)), 180);
  EXPECT_FLOAT_EQ(static_cast<float>(angle(0, -5)), 270);
  EXPECT_EQ(TernASAlternativePath::getAngleFrom(at(0, 0), std::nullopt), 0);
  EXPECT_EQ(TernASAlternativePath::getAngleFrom(std::nullopt, at(0, 0)), 0);
}

// The penalty of a route of three points with a bend of so many degrees.
int turnsOfABend(double degrees) {
  const double radians = degrees * 3.14159265358979 / 180;
  std::vector<TernASNode> points;
  for (const auto& [x, y] : {std::pair{-100.0, 0.0}, std::pair{0.0, 0.0},
                             std::pair{100 * std::cos(radians), 100 * std::sin(radians)}}) {
    points.push_back(TernASNode::initASNode(1, x, y, 0, 1, {}, {}));
  }
  TernRoute route(2);
  route.front().points = points;
  TernASAlternativePath::calculateTurns(route);
  EXPECT_EQ(route.front().cost, 0) << "the last segment pays";
  return static_cast<int>(std::lround(route.back().cost * 1000));
}

TEST(TernASAlternativePath, bendsCountAsTurnsAndSharpOnesTwice) {
  const std::pair<double, int> bends[] = {
      {0, 0},   {19.5, 0},  {20.5, 1},  {90, 1},    {134.5, 1}, {135.5, 2}, {159.5, 2}, {160.5, 1},
      {180, 1}, {199.5, 1}, {200.5, 2}, {224.5, 2}, {225.5, 1}, {339.5, 1}, {340.5, 0}};
  for (const auto& [degrees, turns] : bends) EXPECT_EQ(turnsOfABend(degrees), turns) << degrees;
}

TEST(TernASAlternativePath, aChangeOfFloorIsNoTurn) {
  const auto at = [](double x, double y) { return TernASNode::initASNode(1, x, y, 0, 1, {}, {}); };
  TernRoute route(2);
  route.front().points = {at(0, 0), at(100, 0)};
  route.back().points = {at(200, 100), at(200, 200)};
  TernASAlternativePath::calculateTurns(route);
  EXPECT_EQ(route.back().cost, 0);
}

TEST(TernASAlternativePath, aLengthRatioThatIsNoNumberPasses) {
  TernASAlternativePath finder;
  TernRoute route(1);
  finder.optimalPath = route;
  EXPECT_TRUE(finder.isAlternativePathCandidate(route)) << "0 / 0";
  route.back().pixelDistance = 1;
  EXPECT_FALSE(finder.isAlternativePathCandidate(route)) << "1 / 0";
  finder.optimalPath = route;
  route.back().pixelDistance = 2;
  EXPECT_TRUE(finder.isAlternativePathCandidate(route)) << "exactly twice as long";
  route.back().pixelDistance = 2.0001F;
  EXPECT_FALSE(finder.isAlternativePathCandidate(route));
}

Value randomOptions(Tape& tape) {
  static const std::vector<Value> choices = {
      Value(),
      Value::map(),
      matchRatio(0),
      matchRatio(0.3),
      matchRatio(0.8),
      matchRatio(1),
      matchRatio(2),
      Value::map({{"optimalPathMatchRatio", 0.2}, {"optimalPathDistanceRatio", 1.2}})};
  return tape.pick(choices);
}

RC_GTEST_PROP(TernASAlternativePath, answersAsItsLiteralTwinDoes, ()) {
  Tape tape(*tapes());
  CapturedLog log;
  const VenueLists lists = randomVenue(tape);
  const auto maps = collect(lists.maps);
  const std::int64_t level = randomAccessLevel(tape);
  const Value options = randomOptions(tape);
  TernASAlternativePath ours;
  LiteralAlternatives theirs;
  ours.grid = lists.makeGrid();
  theirs.grid = lists.makeGrid();
  ours.maps = theirs.maps = maps;
  const auto from = ours.grid->getWPById(randomWaypointId(tape, lists));
  const auto to = ours.grid->getWPById(randomWaypointId(tape, lists));
  ours.wayfind(from, to, options, level, [&](const auto& optimal, const auto& alternatives) {
    RC_ASSERT(theirs.differenceOf(optimal, alternatives, from, to, options, level) == "");
    if (!alternatives || ours.pathMatchThreshold == 1) return;
    const TernRoute& route = alternatives->front();
    const float ratio = route.back().pixelDistance / optimal->back().pixelDistance;
    RC_ASSERT(!(ratio > ours.distanceThreshold));
    RC_ASSERT(optimal->size() > 1 || route.size() == 1);
  });
  for (const TernASNode& a : ours.grid->nodes()) {
    for (const TernASEdge& edge : a.edges()) RC_ASSERT(!edge.blocked);
  }
  log.take();
}

}  // namespace
}  // namespace tern::test
