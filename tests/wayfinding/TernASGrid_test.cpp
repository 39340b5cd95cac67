#include "TernCoreKit/wayfinding/TernASGrid.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <limits>

#include "TernCoreKit/model/records/TernFloor.hpp"
#include "TernCoreKit/model/records/TernPath.hpp"
#include "TernCoreKit/model/records/TernPathType.hpp"
#include "TernCoreKit/model/records/TernWaypoint.hpp"
#include "TernCoreKit/wayfinding/TernASSearch.hpp"
#include "tests/support/CapturedLog.hpp"
#include "tests/support/RandomVenue.hpp"
#include "tests/support/Twins.hpp"
#include "tests/support/VenueLists.hpp"

namespace tern::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// A grid of a drawing, with its nodes by their letters.
struct DrawnGrid {
  explicit DrawnGrid(const Drawing& drawing)
      : venue(drawVenue(drawing)), grid(listsOf(venue).makeGrid()) {}

  TernASNode node(char letter) const { return grid->getNodeById(idOf(letter)).value(); }

  // The letters of a node's neighbours.
  std::string from(char letter) const {
    std::string letters;
    for (const TernNeighbor& link : node(letter).neighbors()) {
      letters += static_cast<char>('A' + link.neighborId.integer() - 1);
    }
    return letters;
  }
  TernNeighbor onlyLink(char letter) const {
    const auto links = node(letter).neighbors();
    EXPECT_EQ(links.size(), 1U);
    return links.empty() ? TernNeighbor() : links[0];
  }
  bool isOpen(char from, char to) const {
    return !grid->isEdgeBlockedBetweenNode(node(from), node(to));
  }

  DrawnVenue venue;
  std::shared_ptr<TernASGrid> grid;
};

std::vector<std::int64_t> idsOf(const std::vector<TernASNode>& nodes) {
  std::vector<std::int64_t> ids;
  for (const TernASNode& node : nodes) ids.push_back(node.nodeId());
  return ids;
}

Value preferred(std::int64_t preference) { return preference; }

Drawing twoOnOneFloor(Value preference) {
  return {.floors = {{.lines = {"A    B"}, .preference = std::move(preference)}},
          .paths = {"A-B", "A-B belt"},
          .pathTypes = {{.name = "belt", .weight = 7}}};
}

TEST(TernASGrid, nodesAreTheWaypointsInTheirOrder) {
  const DrawnGrid drawn({.floors = {{.lines = {"C A"}}, {.lines = {"  B"}}}});
  EXPECT_THAT(idsOf(drawn.grid->nodes()), ElementsAre(3, 1, 2));
  const TernASNode a = drawn.node('A');
  EXPECT_EQ(a.x(), 20);
  EXPECT_EQ(a.y(), 0);
  EXPECT_EQ(a.z(), 0);
  EXPECT_EQ(a.mapId(), 1);
  EXPECT_EQ(drawn.node('B').z(), 100);
  EXPECT_EQ(drawn.node('B').mapId(), 2);
}

TEST(TernASGrid, keepsTheListsThatItIsMadeOf) {
  const VenueLists lists = corridor(3);
  const auto grid = lists.makeGrid();
  EXPECT_EQ(grid->waypoints(), lists.waypoints);
  EXPECT_EQ(grid->paths(), lists.paths);
  EXPECT_EQ(grid->pathTypes(), lists.pathTypes);
  EXPECT_EQ(grid->mapFulls(), lists.maps);
  EXPECT_EQ(grid->buildings(), lists.buildings);
  EXPECT_FALSE(grid->isMultiVenueLoaded());
  EXPECT_EQ(TernASGrid::verticalScale, 100);
}

TEST(TernASGrid, floorsAndEdgesStayEmpty) {
  const DrawnGrid drawn(twoOnOneFloor({}));
  EXPECT_THAT(drawn.grid->floors(), IsEmpty());
  EXPECT_TRUE(drawn.grid->edges().empty());
}

TEST(TernASGrid, emptyVenueGivesAnEmptyGrid) {
  const auto grid = VenueLists().makeGrid();
  EXPECT_EQ(grid->nodeCount(), 0U);
  EXPECT_TRUE(grid->nodes().empty());
  EXPECT_EQ(grid->getNodeById(0), std::nullopt);
  EXPECT_EQ(grid->getWPById(0), nullptr);
}

TEST(TernASGrid, nullRecordsArePassedOver) {
  VenueLists lists = corridor(3);
  const auto putNulls = [](auto& records) {
    records.insert(records.begin(), nullptr);
    records.push_back(nullptr);
  };
  putNulls(lists.waypoints);
  putNulls(lists.paths);
  putNulls(lists.pathTypes);
  putNulls(lists.maps);
  putNulls(lists.buildings);
  const auto grid = lists.makeGrid();
  EXPECT_THAT(idsOf(grid->nodes()), ElementsAre(1, 2, 3));
  EXPECT_THAT(idsOf(grid->getNodesForIds(lists.waypoints)), ElementsAre(1, 2, 3));
  TernASSearch search;
  search.grid = grid;
  EXPECT_EQ(lettersOf(search.search(1, 3, 0).value()), "ABC");
  EXPECT_EQ(lettersOf(search.searchInArray(1, {nullptr, lists.waypoints[3]}, 0).value()), "ABC");
}

// Lookups.

TEST(TernASGrid, findsTheFirstWaypointOfAnIdInTheOrderOfTheMaps) {
  VenueLists lists = rowOfWaypoints(2);
  const VenueLists other = rowOfWaypoints(3);
  lists.maps.push_back(other.maps[0]);
  const auto grid = lists.makeGrid();
  EXPECT_EQ(grid->getWPById(2), lists.waypoints[1]);
  EXPECT_EQ(grid->getWPById(3), other.waypoints[2]);
  EXPECT_EQ(grid->getWPById(4), nullptr);
}

TEST(TernASGrid, findsEveryPathOfAWaypointOnce) {
  VenueLists lists = rowOfWaypoints(3);
  lists.paths = {pathOver({1, 2}), pathOver({2, 3}), pathOver({1, 1, 3})};
  const auto grid = lists.makeGrid();
  EXPECT_THAT(grid->getPathsWithWaypoint(1), ElementsAre(lists.paths[0], lists.paths[2]));
  EXPECT_THAT(grid->getPathsWithWaypoint(9), IsEmpty());
}

TEST(TernASGrid, findsTheFirstPathTypeOfAnId) {
  VenueLists lists = corridor(2);
  lists.pathTypes.push_back(std::make_shared<TernPathType>());
  lists.pathTypes[1]->id = 1;
  const auto grid = lists.makeGrid();
  EXPECT_EQ(grid->getPathTypeById(1), lists.pathTypes[0]);
  EXPECT_EQ(grid->getPathTypeById(0), nullptr);
}

TEST(TernASGrid, findsTheFloorThatShowsAMap) {
  const DrawnGrid drawn({.floors = {{.lines = {"A"}}, {.lines = {"B"}, .level = 7}}});
  EXPECT_EQ(drawn.grid->getFloorByMapId(2)->level, Value(7));
  EXPECT_EQ(drawn.grid->getFloorByMapId(3), nullptr);
  EXPECT_EQ(drawn.grid->getMapZValue(2), 700);
  EXPECT_EQ(drawn.grid->getMapZValue(3), 0);
}

TEST(TernASGrid, findsTheFirstNodeOfAnId) {
  VenueLists lists = rowOfWaypoints(2);
  lists.waypoints.push_back(lists.waypoints[1]);
  const auto grid = lists.makeGrid();
  EXPECT_EQ(grid->nodeCount(), 3U);
  EXPECT_EQ(grid->getNodeById(2), grid->nodes()[1]);
  EXPECT_EQ(grid->getNeighborNodeObject(2), grid->nodes()[1]);
  EXPECT_FALSE(grid->nodes()[1] == grid->nodes()[2]);
  EXPECT_EQ(grid->getNodeById(3), std::nullopt);
}

TEST(TernASGrid, nodesForIdsComeInTheOrderOfTheGrid) {
  const DrawnGrid drawn({.floors = {{.lines = {"D B A C"}}}});
  const auto nodes =
      drawn.grid->getNodesForIds({drawn.venue.waypoint('C'), drawn.venue.waypoint('D'),
                                  drawn.venue.waypoint('C'), drawn.venue.waypoint('B')});
  EXPECT_THAT(idsOf(nodes), ElementsAre(4, 2, 3));
}

TEST(TernASGrid, heuristicIsTheStraightLineThroughSpace) {
  EXPECT_EQ(TernASGrid::heuristic({1, 2, 3}, {3, 5, 9}), 7.0F);
}

TEST(TernASGrid, multiplierFollowsThePreferenceOfTheFloor) {
  EXPECT_EQ(DrawnGrid(twoOnOneFloor({})).grid->getFloorPreferenceMultiplier(1), 1);
  EXPECT_EQ(DrawnGrid(twoOnOneFloor({})).grid->getFloorPreferenceMultiplier(9), 1);
  EXPECT_EQ(DrawnGrid(twoOnOneFloor(preferred(0))).grid->getFloorPreferenceMultiplier(1), 1);
  EXPECT_EQ(DrawnGrid(twoOnOneFloor(preferred(-2))).grid->getFloorPreferenceMultiplier(1), -1);
  for (const std::int64_t other : {-1, 1, 2, -3}) {
    EXPECT_EQ(DrawnGrid(twoOnOneFloor(preferred(other))).grid->getFloorPreferenceMultiplier(1), 0);
  }
}

// Edges and links.

TEST(TernASGrid, everyPathGivesEachOfItsEndsAnEdgeOfItsOwn) {
  const DrawnGrid drawn(
      {.floors = {{.lines = {"A  B"}}},
       .paths = {"A-B lift"},
       .pathTypes = {{.name = "lift", .weight = 5, .accessibility = 3, .verticalWeight = 2}}});
  for (const char letter : {'A', 'B'}) {
    ASSERT_EQ(drawn.node(letter).edges().size(), 1U);
    const TernASEdge edge = drawn.node(letter).edges()[0];
    EXPECT_EQ(edge.edgeId, Value(1));
    EXPECT_THAT(edge.nodes, ElementsAre(1, 2));
    EXPECT_EQ(edge.type, Value(2));
    EXPECT_EQ(edge.cost, Value(5));
    EXPECT_EQ(edge.acc, Value(3));
    EXPECT_EQ(edge.speed, Value(2));
    EXPECT_EQ(edge.direction, Value(0));
    EXPECT_FALSE(edge.blocked);
  }
}

TEST(TernASGrid, linkCarriesTheEdgeAndThePlaceOfTheNeighbour) {
  const DrawnGrid drawn({.floors = {{.lines = {"A"}}, {.lines = {" B"}}},
                         .paths = {"A-B lift"},
                         .pathTypes = {{.name = "lift", .accessibility = 3}}});
  const TernNeighbor link = drawn.onlyLink('A');
  EXPECT_EQ(link.neighborId, Value(2));
  EXPECT_EQ(link.edgeId, Value(1));
  EXPECT_EQ(link.edgeTypeId, Value(2));
  EXPECT_EQ(link.acc, Value(3));
  EXPECT_EQ(link.x, Value(10));
  EXPECT_EQ(link.y, Value(0));
  EXPECT_EQ(link.z, 100);
}

TEST(TernASGrid, upwardPathLeadsUpAndNotDown) {
  const DrawnGrid drawn({.floors = {{.lines = {"A"}}, {.lines = {"B"}}},
                         .paths = {"A>B stairs up"},
                         .pathTypes = {{.name = "stairs"}}});
  EXPECT_EQ(drawn.from('A'), "B");
  EXPECT_EQ(drawn.from('B'), "");
}

TEST(TernASGrid, downwardPathLeadsDownAndNotUp) {
  const DrawnGrid drawn({.floors = {{.lines = {"A"}}, {.lines = {"B"}}},
                         .paths = {"A>B stairs down"},
                         .pathTypes = {{.name = "stairs"}}});
  EXPECT_EQ(drawn.from('A'), "");
  EXPECT_EQ(drawn.from('B'), "A");
}

TEST(TernASGrid, directionHasNoEffectBetweenPlacesOfOneHeight) {
  const DrawnGrid drawn({.floors = {{.lines = {"A  B"}}, {.lines = {"C"}, .level = 0}},
                         .paths = {"A>B up", "A>B down", "B>C up"}});
  EXPECT_EQ(drawn.from('A'), "BB");
  EXPECT_EQ(drawn.from('B'), "AAC");
  EXPECT_EQ(drawn.from('C'), "B");
}

TEST(TernASGrid, walkStraightUpOneLevelCosts5100) {
  const DrawnGrid drawn({.floors = {{.lines = {"A"}}, {.lines = {"B"}}},
                         .paths = {"A-B"},
                         .pathTypes = {{.weight = 1, .verticalWeight = 1}}});
  EXPECT_EQ(drawn.onlyLink('A').cost, 5100);
  EXPECT_EQ(drawn.onlyLink('A').distance, 100);
}

TEST(TernASGrid, linkOfAnyOtherTypeCostsItsWeightWhateverItsLength) {
  const DrawnGrid drawn({.floors = {{.lines = {"AB                    C"}}},
                         .paths = {"A-B belt", "B-C belt"},
                         .pathTypes = {{.name = "belt", .weight = 7}}});
  for (const TernNeighbor& link : drawn.node('B').neighbors()) {
    EXPECT_EQ(link.cost, 7);
    EXPECT_EQ(link.distance, 1);
  }
}

TEST(TernASGrid, walkCostsItsLengthTimesItsWeight) {
  const DrawnGrid drawn({.floors = {{.lines = {"A   ", "    ", "    ", "    B"}}},
                         .paths = {"A-B"},
                         .pathTypes = {{.weight = 2}}});
  EXPECT_EQ(drawn.onlyLink('A').cost, 100);
  EXPECT_EQ(drawn.onlyLink('A').distance, 50);
}

TEST(TernASGrid, floorOfPreferenceOneMakesItsLevelLinksFree) {
  const DrawnGrid drawn(twoOnOneFloor(preferred(1)));
  for (const TernNeighbor& link : drawn.node('A').neighbors()) EXPECT_EQ(link.cost, 0);
  EXPECT_EQ(drawn.node('A').neighbors().at(0).distance, 50);
}

TEST(TernASGrid, floorOfPreferenceMinusTwoMakesItsLevelLinksNegative) {
  const DrawnGrid drawn(twoOnOneFloor(preferred(-2)));
  EXPECT_EQ(drawn.node('A').neighbors().at(0).cost, -50);
  EXPECT_EQ(drawn.node('A').neighbors().at(1).cost, -7);
}

TEST(TernASGrid, preferenceCountsOnTheNeighboursFloorAndOnlyOnTheLevel) {
  const DrawnGrid drawn({.floors = {{.lines = {"A"}, .level = 0},
                                    {.lines = {"B"}, .level = 0, .preference = 1},
                                    {.lines = {"C"}, .level = 1, .preference = 1}},
                         .paths = {"A-B belt", "A-C belt"},
                         .pathTypes = {{.name = "belt", .weight = 7}}});
  EXPECT_EQ(drawn.node('A').neighbors().at(0).cost, 0) << "onto the preferred floor";
  EXPECT_EQ(drawn.onlyLink('B').cost, 7) << "away from it";
  EXPECT_EQ(drawn.node('A').neighbors().at(1).cost, 7 * 101) << "up to it";
}

TEST(TernASGrid, verticalWeightOfMinusOneMakesAFloorChangeAsCheapAsALevelLink) {
  const DrawnGrid drawn({.floors = {{.lines = {"A"}}, {.lines = {"B"}, .level = 5}},
                         .paths = {"A-B lift"},
                         .pathTypes = {{.name = "lift", .weight = 7, .verticalWeight = -1}}});
  EXPECT_EQ(drawn.onlyLink('A').cost, 7);
}

TEST(TernASGrid, pathOfMoreThanTwoWaypointsLinksEachToEveryOther) {
  const DrawnGrid drawn({.floors = {{.lines = {"A B C D"}}}, .paths = {"A-B-C-D"}});
  EXPECT_EQ(drawn.from('A'), "BCD");
  EXPECT_EQ(drawn.from('C'), "ABD");
}

TEST(TernASGrid, pathOfAnUnknownTypeIsFreeAndOpenToAll) {
  VenueLists lists = rowOfWaypoints(2);
  lists.paths = {pathOver({1, 2}, 99)};
  const TernASNode node = lists.makeGrid()->getNodeById(1).value();
  EXPECT_TRUE(node.edges().at(0).cost.isAbsent());
  EXPECT_TRUE(node.edges().at(0).acc.isAbsent());
  EXPECT_TRUE(node.edges().at(0).speed.isAbsent());
  EXPECT_EQ(node.neighbors().at(0).cost, 0);
  EXPECT_EQ(node.neighbors().at(0).edgeTypeId, Value(99));
}

TEST(TernASGrid, waypointThatNoMapKnowsIsALinkWithoutIdOrPlace) {
  VenueLists lists = rowOfWaypoints(4);
  lists.paths = {pathOver({4, 99})};
  const auto grid = lists.makeGrid();
  const TernNeighbor link = grid->getNodeById(4)->neighbors().at(0);
  EXPECT_TRUE(link.neighborId.isAbsent());
  EXPECT_TRUE(link.x.isAbsent());
  EXPECT_EQ(link.cost, 3) << "it lies at the origin";
  EXPECT_EQ(grid->linkCount(), 1U);
}

TEST(TernASGrid, stepsOfTheConstructionCanBeMadeAgain) {
  const DrawnGrid drawn({.floors = {{.lines = {"A  B  C"}}},
                         .paths = {"A-B", "B-C lift"},
                         .pathTypes = {{.name = "lift", .weight = 5}}});
  const auto edges = drawn.grid->generateEdges(2);
  ASSERT_EQ(edges.size(), 2U);
  EXPECT_EQ(edges[1].cost, Value(5));
  const auto links = drawn.grid->generateNeighbors(2, edges);
  ASSERT_EQ(links.size(), 2U);
  EXPECT_EQ(links[0].cost, 30);
  EXPECT_EQ(links[1].cost, 5);
  EXPECT_TRUE(drawn.grid->generateEdges(99).empty());
}

// Everything that a grid says, but for its records.
std::string saidBy(const TernASGrid& grid) {
  std::string said;
  const auto say = [&said](const auto&... values) {
    ((said += Value(values).printed() + " "), ...);
  };
  const auto sayEdge = [&](const TernASEdge& edge) {
    say(edge.edgeId, edge.type, edge.cost, edge.acc, edge.speed, edge.direction);
    for (const std::int64_t id : edge.nodes) say(id);
  };
  const auto sayLink = [&](const TernNeighbor& link) {
    say(link.neighborId, link.cost, link.acc, link.edgeId, link.edgeTypeId, link.distance, link.x,
        link.y, link.z);
  };
  for (const TernASNode& node : grid.nodes()) {
    const std::int64_t id = node.nodeId();
    say(id, node.x(), node.y(), node.z(), node.mapId(), grid.getPathsWithWaypoint(id).size() > 1,
        grid.getWPById(id) != nullptr, grid.getMapZValue(node.mapId()),
        grid.getFloorPreferenceMultiplier(node.mapId()));
    for (const TernASEdge& edge : node.edges()) sayEdge(edge);
    for (const TernNeighbor& link : node.neighbors()) sayLink(link);
    for (const TernASEdge& edge : grid.generateEdges(id)) sayEdge(edge);
    for (const TernNeighbor& link : grid.generateNeighbors(id, node.edges())) sayLink(link);
  }
  sayEdge(grid.generateVirtualEdges(1, 2));
  return said;
}

TEST(TernASGrid, recordsThatChangeLaterChangeNothingInIt) {
  const DrawnGrid drawn({.floors = {{.lines = {"A  B  C"}}, {.lines = {"D  E"}, .preference = 1}},
                         .paths = {"A-B", "B-C lift", "C-D lift", "D-E"},
                         .pathTypes = {{.name = "lift", .weight = 5}}});
  const std::string before = saidBy(*drawn.grid);
  ASSERT_NE(before, "");
  for (const auto& waypoint : drawn.venue.waypoints) {
    waypoint->id = waypoint->id.integer() + 100;
    waypoint->mapId = 7;
    waypoint->coordinates = Value::list({-1, -2});
  }
  for (const auto& path : drawn.venue.paths) {
    path->id = 77;
    path->pathTypeId = 9;
    path->direction = 1;
    path->waypointIds = Value::list({1, 5});
  }
  for (const auto& type : drawn.venue.pathTypes) {
    type->id = 50;
    type->weight = 99;
    type->accessibility = 99;
    type->verticalWeight = 99;
  }
  for (const std::int64_t mapId : {1, 2}) {
    const auto floor = drawn.grid->getFloorByMapId(mapId);
    floor->level = 9;
    floor->preference = -2;
  }
  EXPECT_EQ(saidBy(*drawn.grid), before);
  TernASSearch search;
  search.grid = drawn.grid;
  EXPECT_EQ(lettersOf(search.search(idOf('A'), idOf('E'), 0).value()), "ABC DE");
}

// Several venues.

VenueLists twoVenues() {
  // Half a degree apart on the equator.
  VenueLists lists = rowOfWaypoints(31);
  lists.isForMultiVenue = true;
  for (const auto& waypoint : lists.waypoints) waypoint->coordinates = Value::list({0, 0});
  lists.waypoints[30]->coordinates = Value::list({0.5, 0});
  lists.pathTypes[0]->weight = 2;
  lists.pathTypes[0]->accessibility = 4;
  return lists;
}

TEST(TernASGrid, exitIsJoinedToTheWaypointThatItsExternalIdNames) {
  VenueLists lists = twoVenues();
  lists.waypoints[6]->externalId = "mall:east:31";
  const auto grid = lists.makeGrid();
  EXPECT_TRUE(grid->isMultiVenueLoaded());
  const TernASNode exit = grid->getNodeById(7).value();
  ASSERT_EQ(exit.edges().size(), 1U);
  const TernASEdge edge = exit.edges()[0];
  EXPECT_EQ(edge.edgeId, Value(731));
  EXPECT_THAT(edge.nodes, ElementsAre(7, 31));
  EXPECT_EQ(edge.type, Value(1));
  EXPECT_EQ(edge.cost, Value(2));
  EXPECT_EQ(edge.acc, Value(4));
  EXPECT_EQ(edge.direction, Value(0));
  EXPECT_EQ(exit.neighbors().at(0).neighborId, Value(31));
  EXPECT_TRUE(grid->getNodeById(31)->edges().empty()) << "the other names no exit";
}

TEST(TernASGrid, virtualEdgeIdHasTheSmallerIdFirst) {
  const auto grid = VenueLists().makeGrid();
  EXPECT_EQ(grid->generateVirtualEdges(7, 31).edgeId, Value(731));
  EXPECT_EQ(grid->generateVirtualEdges(31, 7).edgeId, Value(731));
  EXPECT_THAT(grid->generateVirtualEdges(31, 7).nodes, ElementsAre(31, 7));
  EXPECT_EQ(grid->generateVirtualEdges(345, 12).edgeId, Value(12345));
  EXPECT_EQ(grid->generateVirtualEdges(31, 7).direction, Value(0)) << "it is walked both ways";
  EXPECT_TRUE(grid->generateVirtualEdges(1, 2).cost.isAbsent()) << "there is no path type 1";
}

TEST(TernASGrid, virtualEdgeIdThatDoesNotFitSaturates) {
  const auto grid = VenueLists().makeGrid();
  const std::int64_t large = 5'000'000'000'000;
  EXPECT_EQ(grid->generateVirtualEdges(large, large + 1).edgeId,
            Value(std::numeric_limits<std::int64_t>::max()));
  EXPECT_EQ(grid->generateVirtualEdges(-large, large).edgeId,
            Value(std::numeric_limits<std::int64_t>::min()));
}

TEST(TernASGrid, costsBetweenVenuesAreMeasuredInMetres) {
  VenueLists lists = twoVenues();
  lists.waypoints[6]->externalId = "x:31";
  const TernNeighbor link = lists.makeGrid()->getNodeById(7)->neighbors().at(0);
  EXPECT_NEAR(link.distance, 55659.75, 0.01);
  EXPECT_EQ(link.cost, 2 * link.distance);
  EXPECT_EQ(link.x, Value(0.5)) << "the neighbour's place is not projected";
}

TEST(TernASGrid, partOfAnExternalIdWithoutLeadingDigitsReadsAsZero) {
  VenueLists lists = twoVenues();
  for (const char* text : {"x:", "x:y31", ":", "31:x"}) {
    lists.waypoints[6]->externalId = text;
    EXPECT_TRUE(lists.makeGrid()->getNodeById(7)->edges().empty()) << text;
  }
  lists.waypoints[6]->externalId = "x:31y";
  EXPECT_EQ(lists.makeGrid()->getNodeById(7)->edges().size(), 1U);
}

TEST(TernASGrid, exitToAnUnknownWaypointIsNone) {
  VenueLists lists = twoVenues();
  lists.waypoints[6]->externalId = "x:99";
  EXPECT_TRUE(lists.makeGrid()->getNodeById(7)->edges().empty());
}

TEST(TernASGrid, colonMeansNothingInASingleVenue) {
  VenueLists lists = twoVenues();
  lists.isForMultiVenue = false;
  lists.waypoints[6]->externalId = "x:31";
  EXPECT_TRUE(lists.makeGrid()->getNodeById(7)->edges().empty());
}

// Blocks.

const Drawing triangle{.floors = {{.lines = {"A  B", "", "C"}}}, .paths = {"A-B", "B-C", "C-A"}};

TEST(TernASGrid, blockedWayStaysOpenInTheOtherDirection) {
  const DrawnGrid drawn(triangle);
  drawn.grid->shouldBlockEdgeBetweenNode(drawn.node('A'), drawn.node('B'), true);
  EXPECT_FALSE(drawn.isOpen('A', 'B'));
  EXPECT_TRUE(drawn.isOpen('B', 'A'));
  EXPECT_TRUE(drawn.isOpen('A', 'C'));
  drawn.grid->shouldBlockEdgeBetweenNode(drawn.node('A'), drawn.node('B'), false);
  EXPECT_TRUE(drawn.isOpen('A', 'B'));
}

TEST(TernASGrid, blockingAWayClosesEveryPathThatJoinsBoth) {
  const DrawnGrid drawn({.floors = {{.lines = {"A  B  C"}}}, .paths = {"A-B", "A-B-C", "A-C"}});
  drawn.grid->shouldBlockEdgeBetweenNode(drawn.node('A'), drawn.node('B'), true);
  std::vector<bool> marks;
  for (const TernASEdge& edge : drawn.node('A').edges()) marks.push_back(edge.blocked);
  EXPECT_THAT(marks, ElementsAre(true, true, false));
  EXPECT_FALSE(drawn.isOpen('A', 'C')) << "the first path that joins them is closed";
}

TEST(TernASGrid, nodesWithoutACommonPathAreNotBlocked) {
  const DrawnGrid drawn({.floors = {{.lines = {"A  B  C"}}}, .paths = {"A-B"}});
  drawn.grid->shouldBlockExitFromNode(drawn.node('A'), true);
  EXPECT_TRUE(drawn.isOpen('A', 'C'));
}

TEST(TernASGrid, blockedEntryClosesTheWaysInAndLeavesTheWaysOut) {
  const DrawnGrid drawn(triangle);
  drawn.grid->shouldBlockEntryToNode(drawn.node('A'), true);
  EXPECT_FALSE(drawn.isOpen('B', 'A'));
  EXPECT_FALSE(drawn.isOpen('C', 'A'));
  EXPECT_TRUE(drawn.isOpen('A', 'B'));
  EXPECT_TRUE(drawn.isOpen('B', 'C'));
  drawn.grid->shouldBlockEntryToNode(drawn.node('A'), false);
  EXPECT_TRUE(drawn.isOpen('B', 'A'));
}

TEST(TernASGrid, blockedEntryLeavesTheWayInFromWhereNoLinkLeadsBack) {
  const DrawnGrid drawn({.floors = {{.lines = {"A"}}, {.lines = {"B  C"}}},
                         .paths = {"A>B stairs up", "B-C"},
                         .pathTypes = {{.name = "stairs"}}});
  drawn.grid->shouldBlockEntryToNode(drawn.node('B'), true);
  EXPECT_TRUE(drawn.isOpen('A', 'B'));
  EXPECT_FALSE(drawn.isOpen('C', 'B'));
}

TEST(TernASGrid, blockedExitClosesEveryWayOut) {
  const DrawnGrid drawn(triangle);
  drawn.grid->shouldBlockExitFromNode(drawn.node('A'), true);
  EXPECT_FALSE(drawn.isOpen('A', 'B'));
  EXPECT_FALSE(drawn.isOpen('A', 'C'));
  EXPECT_TRUE(drawn.isOpen('B', 'A'));
}

TEST(TernASGrid, resetForgetsTheSearchAndKeepsTheBlocks) {
  const DrawnGrid drawn(triangle);
  TernASSearch search;
  search.grid = drawn.grid;
  drawn.grid->shouldBlockEdgeBetweenNode(drawn.node('A'), drawn.node('B'), true);
  ASSERT_EQ(lettersOf(search.search(idOf('A'), idOf('B'), 0).value()), "ACB");
  drawn.grid->reset();
  EXPECT_EQ(drawn.node('B').f(), 0);
  EXPECT_FALSE(drawn.node('B').visited());
  EXPECT_EQ(drawn.node('B').parent(), std::nullopt);
  EXPECT_TRUE(search.openStartHeap().empty());
  EXPECT_FALSE(drawn.isOpen('A', 'B'));
}

// A walk over each of the million links for each of the million links would not end.
TEST(TernASGrid, entryThatAMillionPathsLeadToIsBlockedOnce) {
  VenueLists lists = rowOfWaypoints(2);
  lists.paths.resize(1'000'000, pathOver({1, 2}));
  const auto grid = lists.makeGrid();
  grid->shouldBlockEntryToNode(grid->getNodeById(2).value(), true);
  EXPECT_TRUE(
      grid->isEdgeBlockedBetweenNode(grid->getNodeById(1).value(), grid->getNodeById(2).value()));
}

// Exits are looked up without a walk over all the maps.
TEST(TernASGrid, manyMapsWithManyExitsAreJoined) {
  constexpr std::int64_t count = 20'000;
  VenueLists lists;
  lists.isForMultiVenue = true;
  for (std::int64_t i = 0; i < count; ++i) {
    const VenueLists one = rowOfWaypoints(1);
    one.waypoints[0]->externalId = "x:1";
    lists.maps.push_back(one.maps[0]);
    lists.waypoints.push_back(one.waypoints[0]);
  }
  EXPECT_EQ(lists.makeGrid()->nodes().back().edges().size(), 1U);
}

RC_GTEST_PROP(TernASGrid, isTheLiteralGrid, ()) {
  Tape tape(*tapes());
  const Twins twins(randomVenue(tape));
  RC_ASSERT(twins.differenceOfGrids() == "");
  RC_ASSERT(twins.differenceOfStates() == "");
}

RC_GTEST_PROP(TernASGrid, looksUpWhatTheLiteralGridLooksUp, ()) {
  Tape tape(*tapes());
  const VenueLists lists = randomVenue(tape);
  Twins twins(lists);
  TernASGrid& ours = twins.grid();
  LiteralGrid& theirs = twins.literal();
  for (int i = 0; i < 8; ++i) {
    const std::int64_t id = randomWaypointId(tape, lists);
    RC_ASSERT(ours.getWPById(id).get() == theirs.getWPById(id));
    RC_ASSERT(ours.getPathsWithWaypoint(id) == theirs.getPathsWithWaypoint(id));
  }
  for (std::int64_t id = -1; id < 8; ++id) {
    RC_ASSERT(ours.getPathTypeById(id) == theirs.getPathTypeById(id));
    RC_ASSERT(ours.getFloorByMapId(id).get() == theirs.getFloorByMapId(id));
    RC_ASSERT(ours.getMapZValue(id) == theirs.getMapZValue(id));
    RC_ASSERT(ours.getFloorPreferenceMultiplier(id) == theirs.getFloorPreferenceMultiplier(id));
  }
}

RC_GTEST_PROP(TernASGrid, blocksWhatTheLiteralGridBlocks, ()) {
  Tape tape(*tapes());
  Twins twins(randomVenue(tape));
  if (twins.nodeCount() == 0) return;
  const auto anyNode = [&] { return tape.below(std::min<std::size_t>(twins.nodeCount(), 256)); };
  for (int i = 0; i < 12; ++i) {
    const bool block = !tape.oneIn(3);
    const std::size_t node = anyNode();
    const std::size_t kind = tape.below(3);
    if (kind == 0) twins.blockEdge(node, anyNode(), block);
    if (kind == 1) twins.blockEntry(node, block);
    if (kind == 2) twins.blockExit(node, block);
    RC_ASSERT(twins.differenceOfBlocks(node, anyNode()) == "");
    RC_ASSERT(twins.differenceOfBlocks(anyNode(), node) == "");
  }
  RC_ASSERT(twins.differenceOfGrids() == "");
}

}  // namespace
}  // namespace tern::test
