#include "TernCoreKit/wayfinding/TernASSearch.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <atomic>
#include <thread>

#include "TernCoreKit/model/records/TernPathType.hpp"
#include "TernCoreKit/model/records/TernWaypoint.hpp"
#include "TernCoreKit/wayfinding/TernASGrid.hpp"
#include "tests/support/CapturedLog.hpp"
#include "tests/support/DrawnVenue.hpp"
#include "tests/support/RandomVenue.hpp"
#include "tests/support/Twins.hpp"
#include "tests/support/VenueLists.hpp"

namespace tern::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr const char* noPath = "Tern SDK: NO PATH";
constexpr const char* noEnds = "Tern SDK: no start and/or end";
constexpr const char* noGrid =
    "Tern SDK: Grid has not been initialized, please wait for wayfindDataLoaded callback before "
    "wayfinding.";

// A search through a drawing. Lines that no test takes from the log fail it.
struct SearchedDrawing {
  explicit SearchedDrawing(const Drawing& drawing) : venue(drawVenue(drawing)) {
    search.grid = listsOf(venue).makeGrid();
    search.maps = venue.maps;
  }

  std::optional<TernRoute> route(char from, char to, std::int64_t level = 0) {
    return search.search(idOf(from), idOf(to), level);
  }
  // As letters; "none" without a route.
  std::string letters(char from, char to, std::int64_t level = 0) {
    const auto found = route(from, to, level);
    return found ? lettersOf(*found) : "none";
  }
  std::optional<TernRoute> routeToAny(char from, std::string_view to, std::int64_t level = 0) {
    TernASGrid::Waypoints ends;
    for (const char letter : to) ends.push_back(venue.waypoint(letter));
    return search.searchInArray(idOf(from), ends, level);
  }
  std::string lettersToAny(char from, std::string_view to, std::int64_t level = 0) {
    const auto found = routeToAny(from, to, level);
    return found ? lettersOf(*found) : "none";
  }
  TernASNode node(char letter) const { return search.grid->getNodeById(idOf(letter)).value(); }

  CapturedLog log;
  DrawnVenue venue;
  TernASSearch search;
};

const Drawing corridorDrawing{.floors = {{.lines = {"A--B--C"}}}, .paths = {"A-B", "B-C"}};

// A and B lie on one map, C and D on the next one, E on the first again.
const Drawing upAndDown{.floors = {{.lines = {"A  B     E"}, .mmPerPixel = 100},
                                   {.lines = {"   C  D   "}, .mmPerPixel = 50}},
                        .paths = {"A-B", "B-C lift", "C-D", "D-E stairs"},
                        .pathTypes = {{.name = "lift", .weight = 5, .verticalWeight = -1},
                                      {.name = "stairs", .weight = 9, .verticalWeight = -1}}};

TEST(TernASSearch, startThatIsTheEndIsNoPath) {
  SearchedDrawing drawn(corridorDrawing);
  EXPECT_EQ(drawn.letters('B', 'B'), "none");
  EXPECT_THAT(drawn.log.take(), ElementsAre(noPath));
  EXPECT_EQ(drawn.lettersToAny('B', "AB"), "none");
  EXPECT_THAT(drawn.log.take(), ElementsAre(noPath));
}

TEST(TernASSearch, routeOfTwoNodesOnOneMapIsOneSegment) {
  SearchedDrawing drawn(corridorDrawing);
  const TernRoute route = drawn.route('A', 'B').value();
  ASSERT_EQ(route.size(), 1U);
  EXPECT_EQ(lettersOf(route), "AB");
  EXPECT_EQ(route[0].mapId, 1);
  EXPECT_EQ(route[0].cost, 30);
  EXPECT_EQ(route[0].pixelDistance, 30);
  EXPECT_EQ(route[0].mover, drawn.venue.pathTypes[0]);
}

TEST(TernASSearch, fieldsThatTheSearchDoesNotSetStayEmpty) {
  SearchedDrawing drawn(corridorDrawing);
  const TernRoute route = drawn.route('A', 'B').value();
  EXPECT_EQ(route[0].accessibility, 0);
  EXPECT_TRUE(route[0].obstacles.isAbsent());
  EXPECT_THAT(route[0].waypoints, IsEmpty());
}

TEST(TernASSearch, mapChangeAtTheLastNodeEndsWithASegmentOfOneNode) {
  SearchedDrawing drawn(upAndDown);
  const TernRoute route = drawn.route('A', 'C').value();
  EXPECT_EQ(lettersOf(route), "AB C");
  EXPECT_EQ(route[0].mover->name, Value("lift")) << "the link into C";
  EXPECT_EQ(route[1].mover->name, Value("lift")) << "the route's last link";
  EXPECT_EQ(route[1].mapId, 2);
}

TEST(TernASSearch, routeThatLeavesAMapAndReturnsHasThreeSegments) {
  SearchedDrawing drawn(upAndDown);
  const TernRoute route = drawn.route('A', 'E').value();
  ASSERT_EQ(lettersOf(route), "AB CD E");
  EXPECT_EQ(route[0].mapId, 1);
  EXPECT_EQ(route[1].mapId, 2);
  EXPECT_EQ(route[2].mapId, 1);
  EXPECT_EQ(route[0].cost, 30);
  EXPECT_EQ(route[1].cost, 30 + 5 + 30);
  EXPECT_EQ(route[2].cost, 30 + 5 + 30 + 9);
  EXPECT_EQ(route[0].pixelDistance, 30);
  EXPECT_EQ(route[1].pixelDistance, 30 + 1 + 30);
  EXPECT_EQ(route[2].pixelDistance, 30 + 1 + 30 + 1);
  EXPECT_EQ(route[0].mover->name, Value("lift"));
  EXPECT_EQ(route[1].mover->name, Value("stairs"));
  EXPECT_EQ(route[2].mover->name, Value("stairs"));
}

TEST(TernASSearch, millimetresAreTheDistanceByTheScaleOfTheSegmentsMap) {
  SearchedDrawing drawn(upAndDown);
  const TernRoute route = drawn.route('A', 'E').value();
  EXPECT_EQ(route[0].mmDistance, 30 * 100);
  EXPECT_EQ(route[1].mmDistance, 61 * 50);
  EXPECT_EQ(route[2].mmDistance, 62 * 100);
}

TEST(TernASSearch, distanceOnAnUnknownMapIsNoMillimetres) {
  SearchedDrawing drawn(upAndDown);
  EXPECT_EQ(drawn.search.convertIntoMMDistance(3, 2), 150);
  EXPECT_EQ(drawn.search.convertIntoMMDistance(3, 9), 0);
  drawn.search.maps = nullptr;
  EXPECT_EQ(drawn.search.convertIntoMMDistance(3, 2), 0);
  EXPECT_EQ(drawn.route('A', 'B').value()[0].mmDistance, 0);
}

TEST(TernASSearch, mapPointsCarryTheMapInTheirThirdNumber) {
  SearchedDrawing drawn(upAndDown);
  const TernRoute route = drawn.route('A', 'C').value();
  EXPECT_THAT(route[0].mapPoints, ElementsAre(TernPoint{0, 0, 1}, TernPoint{30, 0, 1}));
  EXPECT_THAT(route[1].mapPoints, ElementsAre(TernPoint{30, 0, 2}));
}

TEST(TernASSearch, moverOfAnUnknownPathTypeIsAbsent) {
  VenueLists lists = rowOfWaypoints(2);
  lists.paths = {pathOver({1, 2}, 99)};
  TernASSearch search;
  search.grid = lists.makeGrid();
  EXPECT_EQ(search.search(1, 2, 0).value().at(0).mover, nullptr);
}

TEST(TernASSearch, linkIsUsedFromItsAccessibilityLevelOn) {
  SearchedDrawing drawn({.floors = {{.lines = {"A  B"}}},
                         .paths = {"A-B staff"},
                         .pathTypes = {{.name = "staff", .accessibility = 100}}});
  EXPECT_EQ(drawn.letters('A', 'B', 0), "none");
  EXPECT_EQ(drawn.letters('A', 'B', 99), "none");
  EXPECT_EQ(drawn.letters('A', 'B', 100), "AB");
}

TEST(TernASSearch, pathOfAnUnknownTypeIsOpenFromLevelZeroOn) {
  VenueLists lists = rowOfWaypoints(2);
  lists.paths = {pathOver({1, 2}, 99)};
  TernASSearch search;
  search.grid = lists.makeGrid();
  EXPECT_TRUE(search.search(1, 2, 0));
  EXPECT_FALSE(search.search(1, 2, -1));
}

TEST(TernASSearch, blockedEntryKeepsRoutesOutAndLetsThemLeave) {
  SearchedDrawing drawn({.floors = {{.lines = {"A--B--C", "|     |", "D-----E"}}},
                         .paths = {"A-B", "B-C", "A-D", "D-E", "E-C"}});
  drawn.search.grid->shouldBlockEntryToNode(drawn.node('B'), true);
  EXPECT_EQ(drawn.letters('A', 'C'), "ADEC");
  EXPECT_EQ(drawn.letters('A', 'B'), "none");
  EXPECT_EQ(drawn.letters('B', 'C'), "BC");
  drawn.search.grid->shouldBlockEntryToNode(drawn.node('B'), false);
  EXPECT_EQ(drawn.letters('A', 'C'), "ABC");
}

TEST(TernASSearch, blockedExitKeepsRoutesIn) {
  SearchedDrawing drawn(corridorDrawing);
  drawn.search.grid->shouldBlockExitFromNode(drawn.node('B'), true);
  EXPECT_EQ(drawn.letters('A', 'B'), "AB");
  EXPECT_EQ(drawn.letters('A', 'C'), "none");
  EXPECT_EQ(drawn.letters('B', 'A'), "none");
}

TEST(TernASSearch, blocksOutlastSearches) {
  SearchedDrawing drawn(corridorDrawing);
  drawn.search.grid->shouldBlockEdgeBetweenNode(drawn.node('A'), drawn.node('B'), true);
  EXPECT_EQ(drawn.letters('C', 'A'), "CBA");
  EXPECT_EQ(drawn.letters('A', 'C'), "none");
  EXPECT_EQ(drawn.letters('A', 'C'), "none");
}

TEST(TernASSearch, ofRoutesOfEqualCostTheOneReachedFirstStays) {
  const std::vector<std::string_view> lines = {"   B   ", "A     D", "   C   "};
  SearchedDrawing overB({.floors = {{.lines = lines}}, .paths = {"A-B", "A-C", "B-D", "C-D"}});
  EXPECT_EQ(overB.letters('A', 'D'), "ABD");
  SearchedDrawing overC({.floors = {{.lines = lines}}, .paths = {"A-C", "A-B", "B-D", "C-D"}});
  EXPECT_EQ(overC.letters('A', 'D'), "ACD");
}

TEST(TernASSearch, cheaperOfTwoPathsBetweenTheSameWaypointsIsTaken) {
  SearchedDrawing drawn({.floors = {{.lines = {"A  B"}}},
                         .paths = {"A-B", "A-B belt"},
                         .pathTypes = {{.name = "belt", .weight = 7}}});
  const TernRoute route = drawn.route('A', 'B').value();
  EXPECT_EQ(route[0].cost, 7);
  EXPECT_EQ(route[0].mover->name, Value("belt"));
}

TEST(TernASSearch, severalGoalsGiveTheRouteToTheCheapest) {
  SearchedDrawing drawn(
      {.floors = {{.lines = {"C------A--B", "", "D"}}}, .paths = {"A-B", "A-C", "C-D"}});
  EXPECT_EQ(drawn.lettersToAny('A', "CBD"), "AB");
  EXPECT_EQ(drawn.lettersToAny('A', "DC"), "AC");
  EXPECT_EQ(drawn.lettersToAny('A', "D"), "ACD");
  EXPECT_EQ(drawn.routeToAny('A', "CBD").value()[0].cost, 30);
}

TEST(TernASSearch, noGoalsGiveNoRoute) {
  SearchedDrawing drawn(corridorDrawing);
  EXPECT_EQ(drawn.lettersToAny('A', ""), "none");
  EXPECT_TRUE(drawn.node('C').closed()) << "the search has looked everywhere";
}

TEST(TernASSearch, unknownGoalsArePassedOver) {
  SearchedDrawing drawn(corridorDrawing);
  auto stranger = std::make_shared<TernWaypoint>();
  stranger->id = 99;
  EXPECT_FALSE(drawn.search.searchInArray(1, {stranger}, 0));
  EXPECT_EQ(
      lettersOf(
          drawn.search.searchInArray(1, {stranger, nullptr, drawn.venue.waypoint('C')}, 0).value()),
      "ABC");
}

TEST(TernASSearch, waypointOfIdZeroAlwaysCountsAsAGoal) {
  VenueLists lists = corridor(4);
  lists.waypoints[1]->id = 0;
  lists.paths = {pathOver({1, 2}), pathOver({2, 3})};
  // The map knows the second waypoint as 2; its record says 0.
  TernASSearch search;
  search.grid = lists.makeGrid();
  const TernRoute route = search.searchInArray(1, {lists.waypoints[2]}, 0).value();
  EXPECT_EQ(route.back().points.back().nodeId(), 0);
  EXPECT_EQ(search.search(1, 99, 0).value().back().points.back().nodeId(), 0)
      << "an end that is not there reads as 0";
}

TEST(TernASSearch, unknownStartGivesNoRoute) {
  SearchedDrawing drawn(corridorDrawing);
  EXPECT_FALSE(drawn.search.search(99, 1, 0));
  EXPECT_FALSE(drawn.search.searchInArray(99, {drawn.venue.waypoint('A')}, 0));
}

TEST(TernASSearch, unknownEndExhaustsTheSearch) {
  SearchedDrawing drawn(corridorDrawing);
  EXPECT_FALSE(drawn.search.search(1, 99, 0));
  EXPECT_TRUE(drawn.node('C').closed());
  EXPECT_THAT(drawn.search.openStartHeap(), IsEmpty());
}

TEST(TernASSearch, absentGridIsLogged) {
  CapturedLog log;
  TernASSearch search;
  EXPECT_FALSE(search.search(1, 2, 0));
  EXPECT_THAT(log.take(), ElementsAre(noGrid));
  EXPECT_FALSE(search.searchInArray(1, {}, 0));
  EXPECT_THAT(log.take(), ElementsAre(noGrid));
  EXPECT_THAT(search.openStartHeap(), IsEmpty());
}

TEST(TernASSearch, routeWithoutAnEndOrAStartIsLogged) {
  SearchedDrawing drawn(corridorDrawing);
  EXPECT_FALSE(drawn.search.pathTo(std::nullopt, drawn.node('A')));
  EXPECT_FALSE(drawn.search.pathTo(drawn.node('A'), std::nullopt));
  EXPECT_FALSE(drawn.search.pathTo(std::nullopt, std::nullopt));
  EXPECT_THAT(drawn.log.take(), ElementsAre(noEnds, noEnds, noEnds));
}

TEST(TernASSearch, routeCanBeAssembledAgainFromTheMarksOfTheSearch) {
  SearchedDrawing drawn(upAndDown);
  ASSERT_EQ(drawn.letters('A', 'E'), "AB CD E");
  EXPECT_EQ(lettersOf(drawn.search.pathTo(drawn.node('E'), drawn.node('A')).value()), "AB CD E");
  EXPECT_EQ(lettersOf(drawn.search.pathTo(drawn.node('C'), drawn.node('A')).value()), "AB C");
}

// The chain of parents ends at A, on whose map and at whose place nothing is read of it any more.
TEST(TernASSearch, routeBeginsWithTheStartThatIsGivenAndWithItsFacts) {
  SearchedDrawing drawn(upAndDown);
  ASSERT_EQ(drawn.letters('A', 'E'), "AB CD E");
  const TernASNode elsewhere = TernASNode::initASNode(77, 5, 6, 0, 9, {}, {});
  const TernRoute route = drawn.search.pathTo(drawn.node('E'), elsewhere).value();
  ASSERT_EQ(route.size(), 4U);
  EXPECT_EQ(route[0].mapId, 9);
  EXPECT_EQ(route[0].points.at(0).nodeId(), 77);
  EXPECT_EQ(route[0].mapPoints.at(0).x, 5);
  EXPECT_EQ(route[0].cost, 0);
  const TernRoute behind = drawn.search.pathTo(drawn.node('E'), drawn.node('C')).value();
  EXPECT_EQ(behind[0].points.at(0), drawn.node('C'));
  EXPECT_EQ(behind[0].cost, drawn.node('C').f()) << "C stands alone on its map before B";
  EXPECT_EQ(behind[0].pixelDistance, drawn.node('C').distance());
}

TEST(TernASSearch, comparesNodesByTheirScores) {
  SearchedDrawing drawn(corridorDrawing);
  ASSERT_EQ(drawn.letters('A', 'C'), "ABC");
  EXPECT_EQ(TernASSearch::compare(drawn.node('A'), drawn.node('B')), -1);
  EXPECT_EQ(TernASSearch::compare(drawn.node('C'), drawn.node('B')), 1);
  EXPECT_EQ(TernASSearch::compare(drawn.node('B'), drawn.node('B')), 0);
}

TEST(TernASSearch, nodeThatTheSearchDidNotReachIsNoRoute) {
  SearchedDrawing drawn(upAndDown);
  ASSERT_EQ(drawn.letters('A', 'B'), "AB");
  EXPECT_FALSE(drawn.search.pathTo(drawn.node('E'), drawn.node('A')));
  EXPECT_THAT(drawn.log.take(), ElementsAre(noPath));
}

// The nodes of a route are the grid's: the second search finds nothing of the first one's goal.
TEST(TernASSearch, laterSearchOverwritesTheNodesOfARoute) {
  SearchedDrawing drawn(corridorDrawing);
  const TernRoute first = drawn.route('A', 'C').value();
  EXPECT_EQ(first[0].points[2], drawn.node('C'));
  EXPECT_EQ(first[0].points[2].f(), 60);
  ASSERT_EQ(drawn.letters('C', 'B'), "CB");
  EXPECT_EQ(first[0].points[2].f(), 0);
  EXPECT_EQ(first[0].points[2].parent(), std::nullopt);
  EXPECT_EQ(first[0].cost, 60) << "the segment's own numbers stay";
}

// What a route of its own says is what the search of the grid says.
TEST(TernASSearch, routeOfItsOwnIsTheRouteOfTheSearch) {
  SearchedDrawing drawn(upAndDown);
  const TernRoute own = drawn.search.route(idOf('A'), idOf('E'), 0).value();
  const TernRoute found = drawn.route('A', 'E').value();
  ASSERT_EQ(lettersOf(own), "AB CD E");
  for (std::size_t i = 0; i < found.size(); ++i) {
    EXPECT_EQ(own[i].cost, found[i].cost);
    EXPECT_EQ(own[i].pixelDistance, found[i].pixelDistance);
    EXPECT_EQ(own[i].mmDistance, found[i].mmDistance);
    EXPECT_EQ(own[i].mover, found[i].mover);
    EXPECT_EQ(own[i].mapPoints, found[i].mapPoints);
    EXPECT_EQ(own[i].points, found[i].points) << "the nodes are the grid's";
  }
  EXPECT_EQ(lettersOf(drawn.search.routeToAny(idOf('A'), {drawn.venue.waypoint('C')}, 0).value()),
            "AB C");
  EXPECT_FALSE(drawn.search.route(idOf('A'), 99, 0));
  EXPECT_FALSE(drawn.search.route(idOf('A'), idOf('A'), 0));
  EXPECT_THAT(drawn.log.take(), ElementsAre(noPath));
}

// B has the id 0, which any of several goals may have.
TEST(TernASSearch, routeToOneOfEndsNowhereElse) {
  SearchedDrawing drawn(corridorDrawing);
  drawn.venue.waypoint('B')->id = 0;
  drawn.venue.paths[0]->waypointIds = Value::list({idOf('A'), 0});
  drawn.venue.paths[1]->waypointIds = Value::list({0, idOf('C')});
  drawn.search.grid = listsOf(drawn.venue).makeGrid();
  const auto c = drawn.venue.waypoint('C');
  EXPECT_EQ(lettersOf(drawn.search.routeToAny(idOf('A'), {c}, 0).value()), "A@");
  EXPECT_EQ(lettersOf(drawn.search.routeToOneOf(idOf('A'), {nullptr, c}, 0).value()), "A@C");
  const auto unknown = TernWaypoint::initWithDictionary(Value::map({{"id", 99}}));
  EXPECT_FALSE(drawn.search.routeToOneOf(idOf('A'), {unknown}, 0));
  EXPECT_FALSE(drawn.search.routeToOneOf(idOf('A'), {}, 0));
  EXPECT_FALSE(TernASSearch().routeToOneOf(idOf('A'), {c}, 0)) << "there is no grid";
}

TEST(TernASSearch, laterSearchLeavesARouteOfItsOwnAsItWas) {
  SearchedDrawing drawn(corridorDrawing);
  const TernRoute own = drawn.search.route(idOf('A'), idOf('C'), 0).value();
  EXPECT_EQ(drawn.node('C').f(), 60) << "the grid shows the search";
  ASSERT_EQ(drawn.letters('C', 'B'), "CB");
  EXPECT_EQ(drawn.node('C').f(), 0);
  const TernASNode& end = own[0].points[2];
  EXPECT_EQ(end.f(), 60);
  EXPECT_EQ(end.distance(), 60.0F);
  EXPECT_EQ(end.usedEdgeTypeId(), 1);
  std::vector<std::int64_t> chain;
  for (auto at = std::optional(end); at; at = at->parent()) chain.push_back(at->nodeId());
  EXPECT_THAT(chain, testing::ElementsAre(idOf('C'), idOf('B'), idOf('A')));
}

TEST(TernASSearch, blockingAPointOfARouteOfItsOwnBlocksTheGrid) {
  SearchedDrawing drawn(corridorDrawing);
  const TernRoute own = drawn.search.route(idOf('A'), idOf('C'), 0).value();
  drawn.search.grid->shouldBlockEdgeBetweenNode(own[0].points[0], own[0].points[1], true);
  EXPECT_EQ(drawn.letters('A', 'C'), "none");
  EXPECT_TRUE(own[0].points[0].edges()[0].blocked);
}

TEST(TernASSearch, searchAfterOneThatFoundNothingAnswersAsAFreshOne) {
  SearchedDrawing drawn({.floors = {{.lines = {"A--B--C", "", "D"}}}, .paths = {"A-B", "B-C"}});
  EXPECT_EQ(drawn.letters('A', 'D'), "none");
  EXPECT_EQ(drawn.letters('A', 'C'), "ABC");
  EXPECT_EQ(drawn.letters('D', 'A'), "none");
  EXPECT_EQ(drawn.letters('C', 'A'), "CBA");
}

TEST(TernASSearch, routeThroughAHundredThousandWaypointsIsFound) {
  TernASSearch search;
  search.grid = corridor(100'000).makeGrid();
  const TernRoute route = search.search(1, 100'000, 0).value();
  EXPECT_EQ(route.at(0).points.size(), 100'000U);
  EXPECT_EQ(route.at(0).cost, 99'999);
}

TEST(TernASSearch, negativeLinksDoNotMakeTheSearchRunOn) {
  SearchedDrawing drawn({.floors = {{.lines = {"A--B--C", "   |", "   D"}, .preference = -2}},
                         .paths = {"A-B", "B-C", "C-A", "B-D"}});
  EXPECT_EQ(drawn.letters('A', 'D'), "ACBD") << "round the circle once";
  EXPECT_EQ(drawn.route('A', 'D').value()[0].cost, -110);
}

// Several threads, one grid.

const Drawing blocks{
    .floors = {{.lines = {"A--B--C--D", "|  |  |  |", "E--F--G--H", "|  |  |  |", "I--J--K--L"}},
               {.lines = {"M--N--O--P", "|        |", "Q--------R"}}},
    .paths = {"A-B", "B-C", "C-D", "E-F", "F-G", "G-H",      "I-J",       "J-K", "K-L",
              "A-E", "B-F", "C-G", "D-H", "E-I", "F-J",      "G-K",       "H-L", "M-N",
              "N-O", "O-P", "Q-R", "M-Q", "P-R", "A-M lift", "L-R stairs"},
    .pathTypes = {{.name = "lift", .weight = 5}, {.name = "stairs", .weight = 9}}};

// Every route of the drawing as text: of its own, and as the grid's search finds it.
std::vector<std::string> allRoutes(const TernASSearch& search, const DrawnVenue& venue) {
  TernASSearch mine = search;
  std::vector<std::string> routes;
  for (char from = 'A'; from <= 'R'; ++from) {
    for (char to = 'A'; to <= 'R'; ++to) {
      if (from == to) continue;
      const auto own = search.route(idOf(from), idOf(to), 0);
      const auto found = mine.search(idOf(from), idOf(to), 0);
      std::string text = found ? lettersOf(*found) : "none";
      if (own) {
        text += " " + lettersOf(*own) + " " + std::to_string(own->back().cost);
        for (const TernASNode& node : own->back().points) text += " " + std::to_string(node.g());
      }
      routes.push_back(std::move(text));
    }
    if (from == 'G' || from == 'O') continue;
    const auto any = search.routeToAny(idOf(from), {venue.waypoint('G'), venue.waypoint('O')}, 0);
    routes.push_back(any ? lettersOf(*any) : "none");
  }
  return routes;
}

// What so many threads find at the same time.
std::vector<std::vector<std::string>> onThreads(std::size_t count, const SearchedDrawing& drawn) {
  std::vector<std::vector<std::string>> found(count);
  std::vector<std::thread> threads;
  for (std::vector<std::string>& mine : found) {
    threads.emplace_back([&] { mine = allRoutes(drawn.search, drawn.venue); });
  }
  for (std::thread& thread : threads) thread.join();
  return found;
}

TEST(TernASSearchConcurrent, severalThreadsFindInOneGridWhatOneFinds) {
  SearchedDrawing drawn(blocks);
  const auto alone = allRoutes(drawn.search, drawn.venue);
  for (const auto& found : onThreads(4, drawn)) EXPECT_EQ(found, alone);
  drawn.search.grid->shouldBlockEntryToNode(drawn.node('F'), true);
  drawn.search.grid->shouldBlockExitFromNode(drawn.node('L'), true);
  const auto blocked = allRoutes(drawn.search, drawn.venue);
  EXPECT_NE(blocked, alone);
  for (const auto& found : onThreads(4, drawn)) EXPECT_EQ(found, blocked);
}

TEST(TernASSearchConcurrent, searchesSeeABlockWholeOrNotAtAll) {
  SearchedDrawing drawn(blocks);
  std::atomic<bool> isOver = false;
  std::thread blocker([&] {
    for (bool block = true; !isOver; block = !block) {
      drawn.search.grid->shouldBlockExitFromNode(drawn.node('A'), block);
    }
  });
  std::vector<std::string> found;
  for (int i = 0; i < 2000; ++i) {
    const auto route = drawn.search.route(idOf('A'), idOf('D'), 0);
    found.push_back(route ? lettersOf(*route) : "none");
    EXPECT_GE(drawn.node('D').g(), 0);
  }
  isOver = true;
  blocker.join();
  EXPECT_THAT(found, testing::Each(testing::AnyOf("ABCD", "none")));
}

// Something that a caller does between or with searches.
std::string doSomething(Tape& tape, Twins& twins, const VenueLists& lists) {
  const std::size_t nodes = std::min<std::size_t>(twins.nodeCount(), 256);
  if (nodes == 0) return {};
  const bool block = !tape.oneIn(3);
  switch (tape.below(6)) {
    case 0:
    case 1:
      return twins.search(randomWaypointId(tape, lists), randomWaypointId(tape, lists),
                          randomAccessLevel(tape));
    case 2: {
      TernASGrid::Waypoints ends;
      for (std::size_t i = tape.below(4); i > 0 && !lists.waypoints.empty(); --i) {
        ends.push_back(
            lists.waypoints[tape.below(std::min<std::size_t>(lists.waypoints.size(), 256))]);
      }
      return twins.searchInArray(randomWaypointId(tape, lists), ends, randomAccessLevel(tape));
    }
    case 3:
      twins.blockEdge(tape.below(nodes), tape.below(nodes), block);
      break;
    case 4:
      twins.blockEntry(tape.below(nodes), block);
      break;
    default:
      twins.blockExit(tape.below(nodes), block);
  }
  return twins.differenceOfBlocks(tape.below(nodes), tape.below(nodes));
}

RC_GTEST_PROP(TernASSearch, findsWhatTheLiteralSearchFinds, ()) {
  Tape tape(*tapes());
  const VenueLists lists = randomVenue(tape);
  Twins twins(lists);
  for (int i = 0; i < 24; ++i) RC_ASSERT(doSomething(tape, twins, lists) == "");
  RC_ASSERT(twins.differenceOfGrids() == "");
  if (twins.nodeCount() > 12) return;
  for (const LiteralNode& start : twins.literal().nodes) {
    for (const LiteralNode& end : twins.literal().nodes) {
      RC_ASSERT(twins.search(start.nodeId, end.nodeId, 1) == "");
    }
  }
}

// Moves every second waypoint to the far end of a long list, so that the grid lays the nodes out in
// an order of its own.
void scatter(VenueLists& lists) {
  constexpr std::int64_t distance = 1100;
  constexpr std::int64_t firstStranger = 1'000'000;
  TernASGrid::Waypoints near;
  TernASGrid::Waypoints far;
  for (std::size_t i = 0; i < lists.waypoints.size(); ++i) {
    (i % 2 == 0 ? near : far).push_back(lists.waypoints[i]);
  }
  for (std::int64_t i = 0; i < distance; ++i) {
    near.push_back(std::make_shared<TernWaypoint>());
    near.back()->id = firstStranger + i;
  }
  near.insert(near.end(), far.begin(), far.end());
  lists.waypoints = std::move(near);
}

RC_GTEST_PROP(TernASSearch, findsTheSameWhenTheNodesAreLaidOutAnew, ()) {
  Tape tape(*tapes());
  VenueLists lists = randomVenue(tape);
  const VenueLists compact = lists;
  scatter(lists);
  Twins twins(lists);
  for (int i = 0; i < 4; ++i) RC_ASSERT(doSomething(tape, twins, compact) == "");
}

}  // namespace
}  // namespace tern::test
