#include "TernCoreKit/model/venue/TernActiveVenue.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>
#include <unistd.h>

#include <atomic>
#include <cmath>
#include <fstream>
#include <functional>
#include <future>
#include <limits>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "TernCoreKit/model/collections/TernAmenityCollection.hpp"
#include "TernCoreKit/model/collections/TernBuildingCollection.hpp"
#include "TernCoreKit/model/collections/TernDestinationCollection.hpp"
#include "TernCoreKit/model/collections/TernMapCollection.hpp"
#include "TernCoreKit/model/collections/TernMapLabelCollection.hpp"
#include "TernCoreKit/model/collections/TernPathTypeCollection.hpp"
#include "TernCoreKit/model/collections/TernWaypointCollection.hpp"
#include "TernCoreKit/model/records/TernPosition.hpp"
#include "TernCoreKit/model/venue/VenueAssembly.hpp"
#include "TernCoreKit/platform/Json.hpp"
#include "TernCoreKit/spatial/TernNearestElement.hpp"
#include "TernCoreKit/wayfinding/TernASGrid.hpp"
#include "tests/support/ActiveVenue.hpp"
#include "tests/support/CapturedLog.hpp"
#include "tests/support/FailingAllocation.hpp"
#include "tests/support/JoiningThread.hpp"
#include "tests/support/MadeRecords.hpp"
#include "tests/support/Waiting.hpp"
#include "tests/support/WorkQueues.hpp"

namespace tern::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using Venue = std::shared_ptr<TernActiveVenue>;

Venue venueOf(std::string document) { return made<TernActiveVenue>(std::move(document)); }

// With its graph.
Venue readyDrawn(const Drawing& drawing) {
  auto venue = assembleVenue(drawing);
  venue->loadGridData();
  return venue;
}

TernActiveVenue::Waypoints all(const TernActiveVenue& venue, std::string_view letters) {
  TernActiveVenue::Waypoints waypoints;
  for (const char letter : letters) waypoints.push_back(waypointAt(venue, letter));
  return waypoints;
}

std::string route(const TernActiveVenue& venue, char from, char to, std::int64_t level = 100) {
  return lettersOf(venue.wayfind(waypointAt(venue, from), waypointAt(venue, to), level));
}

// A rebuild gives all of it or leaves all as it was.
TEST(TernActiveVenue, aRebuildChangesNothingOrAllWhateverAllocationFails) {
  CapturedLog log;
  const ScopedBackgroundQueue atOnce(std::make_shared<RunNowQueue>());
  const auto venue = loadDrawnVenue({.floors = {{.lines = {"A  B  C"}}, {.lines = {"D  E"}}},
                                     .paths = {"A-B", "B-C", "C-D Lift", "D-E"},
                                     .pathTypes = {{.name = "Lift", .weight = 5}},
                                     .destinations = {{7, "E"}}});
  const std::string before = route(*venue, 'A', 'E');
  auto grid = venue->globalASGrid();
  auto nearest = venue->nearestElement();
  struct Told {
    int times = 0;
    bool isBuilt = false;
  } told;
  const int failed = forFailingAllocations(
      FailingAllocation::Reach::thread,
      [&] {
        venue->updateWayfindDataWithCompletion([&told](bool isBuilt) {
          ++told.times;
          told.isBuilt = isBuilt;
        });
      },
      [&] {
        ASSERT_EQ(std::exchange(told.times, 0), 1);
        ASSERT_EQ(venue->globalASGrid() != grid, told.isBuilt);
        ASSERT_EQ(venue->nearestElement() != nearest, told.isBuilt);
        ASSERT_EQ(route(*venue, 'A', 'E'), before);
        grid = venue->globalASGrid();
        nearest = venue->nearestElement();
        log.take();
      });
  EXPECT_GT(failed, 60);
}

// --- The document ---

TEST(TernActiveVenue, keepsItsPlainFieldsAsTheDocumentGivesThem) {
  CapturedLog log;
  const auto venue = venueOf(R"({"id": 7, "externalId": "x", "name": "Plaza", "extensors": {"a": 1},
      "defaultMapTemplateId": "t", "mapTemplateData": {"b": 2}, "customerId": 3, "generatedAt": 4,
      "labelType": 5, "clustering": 6})");
  EXPECT_EQ(venue->id, Value(7));
  EXPECT_EQ(venue->externalId, Value("x"));
  EXPECT_EQ(venue->name, Value("Plaza"));
  EXPECT_EQ(venue->extensors, Value::map({{"a", 1}}));
  EXPECT_EQ(venue->defaultMapTemplateId, Value("t"));
  EXPECT_EQ(venue->mapTemplateData, Value::map({{"b", 2}}));
  EXPECT_EQ(venue->customerId, Value(3));
  EXPECT_EQ(venue->generatedAt, Value(4));
  EXPECT_EQ(venue->labelType, Value(5));
  EXPECT_EQ(venue->clustering, Value(6));
}

TEST(TernActiveVenue, mapsOfTheDocumentBecomeCollections) {
  CapturedLog log;
  const auto venue = venueOf(R"({"coordinates": {"topLeft": [1, 2]},
      "buildings": {"items": [{"id": 1}]}, "destinations": {"items": [{"id": 2}]},
      "amenities": {"items": [{"id": 3}]}, "pathTypes": {"items": [{"id": 4}]},
      "mapLabels": {"items": [{"id": 5}]}})");
  EXPECT_EQ(venue->coordinates->topLeft, Value::list({1, 2}));
  EXPECT_THAT(ids(venue->buildings->getAll()), ElementsAre(1));
  EXPECT_THAT(ids(venue->destinations->getAll()), ElementsAre(2));
  EXPECT_THAT(ids(venue->amenities->getAll()), ElementsAre(3));
  EXPECT_THAT(ids(venue->pathTypes->getAll()), ElementsAre(4));
  EXPECT_THAT(ids(venue->mapLabels->getAll()), ElementsAre(5));
}

TEST(TernActiveVenue, whatIsNoMapStaysAPlainValue) {
  CapturedLog log;
  for (const Value& value : oddValues()) {
    const auto venue = TernActiveVenue::initWithDictionary(Value::map({{"coordinates", value},
                                                                       {"buildings", value},
                                                                       {"destinations", value},
                                                                       {"amenities", value},
                                                                       {"pathTypes", value},
                                                                       {"mapLabels", value},
                                                                       {"map", value}}));
    EXPECT_EQ(venue->coordinates.plain(), value);
    EXPECT_EQ(venue->buildings.plain(), value);
    EXPECT_EQ(venue->destinations.plain(), value);
    EXPECT_EQ(venue->amenities.plain(), value);
    EXPECT_EQ(venue->pathTypes.plain(), value);
    EXPECT_EQ(venue->mapLabels.plain(), value);
    EXPECT_EQ(venue->map.plain(), value);
    EXPECT_EQ(venue->maps->getCount(), 0U);
    // Such a venue has a graph too, and there is nothing in it.
    venue->loadGridData();
    EXPECT_EQ(venue->globalASGrid()->nodeCount(), 0U);
  }
}

TEST(TernActiveVenue, anUnknownKeyStopsItBeforeAnythingIsMade) {
  CapturedLog log;
  const auto venue =
      venueOf(R"({"id": 7, "buildings": {"items": []}, "odd": 1, "name": "n", "status": 1})");
  EXPECT_THAT(log.take(), ElementsAre("Tern SDK: unknown key \"odd\" in TernActiveVenue"));
  EXPECT_EQ(venue->id, Value(7));
  EXPECT_TRUE(venue->buildings.plain().isMap());
  EXPECT_TRUE(venue->name.isAbsent());
  EXPECT_TRUE(venue->status.isAbsent());
  EXPECT_TRUE(venue->labelType.isAbsent());
  EXPECT_EQ(venue->maps, nullptr);
}

TEST(TernActiveVenue, aVenueThatWasStoppedAnswersNothing) {
  CapturedLog log;
  const auto venue = venueOf(R"({"odd": 1})");
  venue->loadGridData();
  attachWaypoints(*venue);
  addBuilding(*venue, 1, Value::map({{"id", 1}}));
  EXPECT_EQ(venue->globalASGrid()->nodeCount(), 0U);
  EXPECT_EQ(venue->getCenterCoordinates(), TernCoordinate{});
  EXPECT_THAT(log.take(), ElementsAre("Tern SDK: unknown key \"odd\" in TernActiveVenue",
                                      "Invalid venue map."));
}

TEST(TernActiveVenue, statusIsTrueUnlessTheDocumentSaysOtherwise) {
  EXPECT_EQ(venueOf("{}")->status, Value(true));
  EXPECT_EQ(venueOf(R"({"status": 0})")->status, Value(false));
  EXPECT_EQ(venueOf(R"({"status": false})")->status, Value(false));
  EXPECT_EQ(venueOf(R"({"status": null})")->status, Value(false));
  EXPECT_EQ(venueOf(R"({"status": 2})")->status, Value(true));
}

TEST(TernActiveVenue, aNumberUnderLabelTypeKeepsWhateverClusteringIs) {
  const auto venue = venueOf(R"({"labelType": 2, "clustering": "much"})");
  EXPECT_EQ(venue->labelType, Value(2));
  EXPECT_EQ(venue->clustering, Value("much"));
}

TEST(TernActiveVenue, withoutANumberUnderLabelTypeBothCodesAreZero) {
  for (const char* document : {"{}", R"({"labelType": "2", "clustering": 3})",
                               R"({"labelType": null, "clustering": "much"})"}) {
    const auto venue = venueOf(document);
    EXPECT_EQ(venue->labelType, Value(0)) << document;
    EXPECT_EQ(venue->clustering, Value(0)) << document;
  }
}

TEST(TernActiveVenue, mapsStartEmptyWhateverTheDocumentHolds) {
  CapturedLog log;
  const auto venue = venueOf(R"({"maps": {"items": [{"id": 1}, {"id": 2}]}})");
  ASSERT_NE(venue->maps, nullptr);
  EXPECT_EQ(venue->maps->getCount(), 0U);
}

TEST(TernActiveVenue, theDocumentsOwnMapIsAmongItsMaps) {
  const auto venue = venueOf(R"({"map": {"id": 9, "width": 30}})");
  EXPECT_THAT(ids(venue->maps->getAll()), ElementsAre(9));
  EXPECT_EQ(venue->map->width, Value(30));
  EXPECT_EQ(venue->map.record(), venue->maps->getById(9));
}

TEST(TernActiveVenue, aMapWithoutAnIdStaysAPlainValueAndIsNotAdded) {
  CapturedLog log;
  const auto venue = venueOf(R"({"map": {"width": 30}})");
  EXPECT_EQ(venue->maps->getCount(), 0U);
  EXPECT_EQ(venue->map.plain(), Value::map({{"width", 30}}));
  EXPECT_THAT(log.take(), ElementsAre("Error in parsing data"));
}

TEST(TernActiveVenue, whatTheVenueMakesItselfIsNotReadFromTheDocument) {
  CapturedLog log;
  const auto venue = venueOf(R"({"globalASGrid": 1, "nearestElement": {"a": 2}, "name": "n"})");
  EXPECT_EQ(venue->name, Value("n"));
  EXPECT_EQ(venue->globalASGrid(), nullptr);
}

TEST(TernActiveVenue, aCopyHasSomeOfTheFields) {
  const auto venue = venueOf(R"({"id": 7, "externalId": "x", "name": "Plaza",
      "coordinates": {"topLeft": [1, 2]}, "buildings": {"items": [{"id": 1}]},
      "destinations": {"items": [{"id": 2}]}, "amenities": {"items": [{"id": 3}]},
      "pathTypes": {"items": [{"id": 4}]}, "mapLabels": {"items": [{"id": 5}]},
      "map": {"id": 9, "width": 30}, "defaultMapTemplateId": "t", "extensors": {},
      "status": true, "customerId": 3, "generatedAt": 4, "labelType": 5, "clustering": 6})");
  venue->storeMapTemplateData(Value::map({{"b", 2}}));
  venue->loadGridData();
  const auto copy = venue->copyWithZone();
  EXPECT_EQ(copy->id, Value(7));
  EXPECT_EQ(copy->externalId, Value("x"));
  EXPECT_EQ(copy->name, Value("Plaza"));
  EXPECT_EQ(copy->coordinates->topLeft, Value::list({1, 2}));
  EXPECT_NE(copy->buildings.get(), venue->buildings.get());
  EXPECT_EQ(copy->buildings->getAll(), venue->buildings->getAll());
  EXPECT_EQ(copy->destinations->getAll(), venue->destinations->getAll());
  EXPECT_EQ(copy->amenities->getAll(), venue->amenities->getAll());
  EXPECT_EQ(copy->pathTypes->getAll(), venue->pathTypes->getAll());
  EXPECT_EQ(copy->mapLabels->getAll(), venue->mapLabels->getAll());
  EXPECT_EQ(copy->map->width, Value(30));
  EXPECT_EQ(copy->defaultMapTemplateId, Value("t"));
  EXPECT_EQ(copy->mapTemplateData, Value::map({{"b", 2}}));
  EXPECT_EQ(copy->maps, nullptr);
  EXPECT_EQ(copy->globalASGrid(), nullptr);
  for (const Value* left : {&copy->extensors, &copy->status, &copy->customerId, &copy->generatedAt,
                            &copy->labelType, &copy->clustering}) {
    EXPECT_TRUE(left->isAbsent());
  }
}

// --- Routes ---

const Drawing twoFloors{
    .floors = {{.lines = {"A----B----C"}}, {.lines = {"          D----E"}}},
    .paths = {"A-B", "B-C", "C-D lift", "D-E", "B-D stairs"},
    .pathTypes = {{.name = "lift", .weight = 500}, {.name = "stairs", .accessibility = 2}}};

TEST(TernActiveVenue, routesGoFromFloorToFloor) {
  const auto venue = readyDrawn(twoFloors);
  EXPECT_EQ(route(*venue, 'A', 'E'), "AB DE");
  EXPECT_EQ(route(*venue, 'E', 'A'), "ED BA");
}

TEST(TernActiveVenue, aWayToNobodyLeadsToIdZeroAndIsAsLongAsItsLinkSays) {
  const auto venue = venueOf(R"({"id":1,"buildings":{"items":[{"id":1}]},
      "pathTypes":{"items":[{"id":1,"weight":3}]}})");
  const JsonResult building = decodeJson(R"({"id":1,"floors":{"items":[{"id":1,"map":{"id":1,
      "waypoints":{"items":[{"id":1,"mapId":1,"coordinates":[20,0]},
                            {"id":0,"mapId":1,"coordinates":[50,0]}]},
      "paths":{"items":[{"id":1,"pathTypeId":1,"waypointIds":[1,77]}]}}}]}})");
  addBuilding(*venue, 1, building.value);
  venue->loadGridData();
  const auto grid = venue->globalASGrid();
  const auto links = grid->getNodeById(1)->neighbors();
  ASSERT_EQ(links.size(), 1U);
  const TernRoute route = venue->wayfind(grid->getWPById(1), grid->getWPById(0), 100);
  ASSERT_EQ(route.size(), 1U);
  EXPECT_EQ(route.front().points.back().nodeId(), 0);
  EXPECT_EQ(route.front().points.back().distance(), links.front().distance);
  EXPECT_NE(links.front().distance, 30);
}

TEST(TernActiveVenue, routesHonourTheAccessibilityLevel) {
  const auto venue = readyDrawn(twoFloors);
  EXPECT_EQ(route(*venue, 'A', 'E', 2), "AB DE");
  EXPECT_EQ(route(*venue, 'A', 'E', 1), "ABC DE");
  EXPECT_EQ(route(*venue, 'A', 'E', -1), "");
}

TEST(TernActiveVenue, lengthsInMillimetresUseTheVenuesMaps) {
  const auto venue = readyDrawn(twoFloors);
  const TernRoute found = venue->wayfind(waypointAt(*venue, 'A'), waypointAt(*venue, 'C'), 100);
  ASSERT_EQ(found.size(), 1U);
  EXPECT_EQ(found[0].pixelDistance, 100.0F);
  EXPECT_EQ(found[0].mmDistance, 10000.0F);
}

TEST(TernActiveVenue, noRouteIsAnEmptyList) {
  const auto venue = readyDrawn({.floors = {{.lines = {"A-B  C"}}}, .paths = {"A-B"}});
  EXPECT_THAT(venue->wayfind(waypointAt(*venue, 'A'), waypointAt(*venue, 'C'), 100), IsEmpty());
  EXPECT_THAT(venue->wayfind(nullptr, waypointAt(*venue, 'C'), 100), IsEmpty());
  EXPECT_THAT(venue->wayfind(waypointAt(*venue, 'A'), nullptr, 100), IsEmpty());
}

TEST(TernActiveVenue, aRouteFromAWaypointToItselfIsLoggedAsNone) {
  CapturedLog log;
  const auto venue = readyDrawn(twoFloors);
  EXPECT_EQ(route(*venue, 'A', 'A'), "");
  EXPECT_THAT(log.take(), ElementsAre("Tern SDK: NO PATH"));
}

TEST(TernActiveVenue, routesBeforeTheFirstRebuildAreLoggedAndEmpty) {
  CapturedLog log;
  const auto venue = assembleVenue(twoFloors);
  EXPECT_EQ(route(*venue, 'A', 'B'), "");
  EXPECT_THAT(log.take(), ElementsAre("Tern SDK: Grid has not been initialized, please wait for "
                                      "wayfindDataLoaded callback before wayfinding."));
}

TEST(TernActiveVenue, routesCompareIdsIn32Bits) {
  const auto venue = readyDrawn(twoFloors);
  const auto wide =
      TernWaypoint::initWithDictionary(Value::map({{"id", (std::int64_t{1} << 32) + idOf('C')}}));
  EXPECT_EQ(lettersOf(venue->wayfind(waypointAt(*venue, 'A'), wide, 100)), "ABC");
}

// --- The nearest waypoint ---

TEST(TernActiveVenue, theClosestWaypointIsThatOfTheShortestStraightLine) {
  const auto venue = assembleVenue({.floors = {{.lines = {"A    B", "", "  C"}}}});
  const auto waypoints = all(*venue, "ABC");
  const auto closestTo = [&](TernCoordinate point) {
    return TernActiveVenue::getClosestWaypointInArray(waypoints, point);
  };
  EXPECT_EQ(closestTo({0, 1}), waypointAt(*venue, 'A'));
  EXPECT_EQ(closestTo({1e9, -1e9}), waypointAt(*venue, 'B'));
  EXPECT_EQ(closestTo({20, 20}), waypointAt(*venue, 'C'));
}

TEST(TernActiveVenue, ofEquallyCloseWaypointsTheEarlierOneIsTaken) {
  const auto venue = assembleVenue({.floors = {{.lines = {"A B"}}}});
  const TernCoordinate middle{10, 0};
  EXPECT_EQ(TernActiveVenue::getClosestWaypointInArray(all(*venue, "AB"), middle),
            waypointAt(*venue, 'A'));
  EXPECT_EQ(TernActiveVenue::getClosestWaypointInArray(all(*venue, "BA"), middle),
            waypointAt(*venue, 'B'));
}

TEST(TernActiveVenue, coordinatesAreComparedInSinglePrecision) {
  const auto far = [](int id, double x) {
    return TernWaypoint::initWithDictionary(
        Value::map({{"id", id}, {"coordinates", Value::list({x, 0})}}));
  };
  // Both are 16777216 in single precision.
  const auto first = far(1, 16777216);
  const auto second = far(2, 16777217);
  EXPECT_EQ(TernActiveVenue::getClosestWaypointInArray({first, second}, {16777217, 0}), first);
}

TEST(TernActiveVenue, nothingIsClosestInAnEmptyListOrToNoPlace) {
  const double nowhere = std::numeric_limits<double>::quiet_NaN();
  const auto venue = assembleVenue(twoFloors);
  EXPECT_EQ(TernActiveVenue::getClosestWaypointInArray({}, {1, 2}), nullptr);
  EXPECT_EQ(TernActiveVenue::getClosestWaypointInArray({nullptr}, {1, 2}), nullptr);
  EXPECT_EQ(TernActiveVenue::getClosestWaypointInArray(all(*venue, "AB"), {nowhere, 2}), nullptr);
}

TEST(TernActiveVenue, aWaypointWithoutCoordinatesLiesAtTheOrigin) {
  const auto bare = made<TernWaypoint>(R"({"id": 1})");
  const auto odd = made<TernWaypoint>(R"({"id": 2, "coordinates": ["x", null]})");
  const auto far = made<TernWaypoint>(R"({"id": 3, "coordinates": [5]})");
  EXPECT_EQ(TernActiveVenue::getClosestWaypointInArray({far, bare, odd}, {1, 0}), bare);
  EXPECT_EQ(TernActiveVenue::getClosestWaypointInArray({far, bare}, {5, 1}), far);
}

TEST(TernActiveVenue, theClosestWaypointOnAMapIsOneOfItsOwn) {
  const auto venue = assembleVenue(twoFloors);
  EXPECT_EQ(TernActiveVenue::getClosestWaypointToCoordinateOnMap(venue->maps->getById(1), {140, 0}),
            waypointAt(*venue, 'C'));
  EXPECT_EQ(TernActiveVenue::getClosestWaypointToCoordinateOnMap(venue->maps->getById(2), {0, 0}),
            waypointAt(*venue, 'D'));
}

TEST(TernActiveVenue, nothingIsClosestOnAMapWithoutWaypoints) {
  EXPECT_EQ(TernActiveVenue::getClosestWaypointToCoordinateOnMap(nullptr, {1, 2}), nullptr);
  for (const char* document : {R"({"id": 1})", R"({"id": 1, "waypoints": {"items": []}})"}) {
    EXPECT_EQ(TernActiveVenue::getClosestWaypointToCoordinateOnMap(made<TernMap>(document), {1, 2}),
              nullptr);
  }
}

// B lies next to A, but the way round it is longer than that to C.
const Drawing aroundABlock{.floors = {{.lines = {"B A    C  Z",   //
                                                 "", "", "", "",  //
                                                 "E D"}}},
                           .paths = {"A-C", "A-D", "D-E", "E-B"}};

TEST(TernActiveVenue, theClosestByRouteIsThatOfTheShortestWay) {
  const auto venue = readyDrawn(aroundABlock);
  const auto closest =
      venue->getClosestWaypointInArray(all(*venue, "BCE"), waypointAt(*venue, 'A'), 100);
  EXPECT_EQ(closest, waypointAt(*venue, 'C'));
}

TEST(TernActiveVenue, theClosestByRouteSkipsWhatCannotBeReached) {
  const auto venue = readyDrawn(aroundABlock);
  const auto target = waypointAt(*venue, 'A');
  EXPECT_EQ(venue->getClosestWaypointInArray(all(*venue, "ZB"), target, 100),
            waypointAt(*venue, 'B'));
  EXPECT_EQ(venue->getClosestWaypointInArray(all(*venue, "Z"), target, 100), nullptr);
  EXPECT_EQ(venue->getClosestWaypointInArray({}, target, 100), nullptr);
  EXPECT_EQ(venue->getClosestWaypointInArray({nullptr}, target, 100), nullptr);
  EXPECT_EQ(venue->getClosestWaypointInArray(all(*venue, "B"), nullptr, 100), nullptr);
  EXPECT_EQ(venue->getClosestWaypointInArray(all(*venue, "BC"), target, -1), nullptr);
}

TEST(TernActiveVenue, theTargetItselfIsClosestEvenIfUnreachable) {
  const auto venue = readyDrawn(aroundABlock);
  const auto lonely = waypointAt(*venue, 'Z');
  EXPECT_EQ(venue->getClosestWaypointInArray(all(*venue, "BZ"), lonely, 100), lonely);
}

TEST(TernActiveVenue, aWaypointAtTheTargetsPlaceIsNeverClosestByRoute) {
  const auto venue =
      readyDrawn({.floors = {{.lines = {"A  C"}}, {.lines = {"B"}}}, .paths = {"A-B", "A-C"}});
  const auto target = waypointAt(*venue, 'A');
  EXPECT_EQ(venue->getClosestWaypointInArray(all(*venue, "B"), target, 100), nullptr);
  // Having no length, it is the best, and so there is none.
  EXPECT_EQ(venue->getClosestWaypointInArray(all(*venue, "CB"), target, 100), nullptr);
  EXPECT_EQ(venue->getClosestWaypointInArray(all(*venue, "C"), target, 100),
            waypointAt(*venue, 'C'));
}

TEST(TernActiveVenue, theJumpFromFloorToFloorCountsAsLength) {
  // From C it is 30 to A, from D 40, all of it the jump.
  const auto venue = readyDrawn({.floors = {{.lines = {"A  C"}}, {.lines = {"    D"}}},
                                 .paths = {"A-C", "D-A lift"},
                                 .pathTypes = {{.name = "lift"}}});
  EXPECT_EQ(venue->getClosestWaypointInArray(all(*venue, "DC"), waypointAt(*venue, 'A'), 100),
            waypointAt(*venue, 'C'));
}

// --- The centre ---

TEST(TernActiveVenue, theCentreIsTheMiddleOfTheFirstMap) {
  const auto venue = venueOf(R"({"map": {"id": 1, "width": 1000, "height": 1000},
      "coordinates": {"topLeft": [10, 0], "bottomRight": [-10, 20]}})");
  venue->maps->create(parsed(R"({"id": 2, "width": 5, "height": 5})"));
  const TernCoordinate centre = venue->getCenterCoordinates();
  EXPECT_NEAR(centre.x, 10, 1e-9);
  EXPECT_NEAR(centre.y, 0, 1e-9);
}

TEST(TernActiveVenue, withoutAMapThereIsNoCentre) {
  CapturedLog log;
  EXPECT_EQ(venueOf("{}")->getCenterCoordinates(), TernCoordinate{});
  EXPECT_THAT(log.take(), ElementsAre("Invalid venue map."));
}

// --- Rebuilding ---

TEST(TernActiveVenue, aRebuildRunsOnTheBackgroundQueue) {
  const auto queue = std::make_shared<OnDemandQueue>();
  const ScopedBackgroundQueue scope(queue);
  const auto venue = assembleVenue(twoFloors);
  std::vector<bool> completions;
  venue->updateWayfindDataWithCompletion([&](bool built) { completions.push_back(built); });
  EXPECT_EQ(venue->globalASGrid(), nullptr);
  EXPECT_THAT(completions, IsEmpty());
  queue->runAll();
  EXPECT_THAT(completions, ElementsAre(true));
  EXPECT_EQ(route(*venue, 'A', 'E'), "AB DE");
}

TEST(TernActiveVenue, aRebuildNeedsNoCompletion) {
  const ScopedBackgroundQueue scope(std::make_shared<RunNowQueue>());
  const auto venue = assembleVenue(twoFloors);
  venue->updateWayfindDataWithCompletion(nullptr);
  EXPECT_NE(venue->globalASGrid(), nullptr);
}

TEST(TernActiveVenue, mapsAddedLaterAreSearchedAfterAnotherRebuild) {
  const ScopedBackgroundQueue scope(std::make_shared<RunNowQueue>());
  const auto venue = assembleVenue({.floors = {{.lines = {"A-B"}}}, .paths = {"A-B"}});
  venue->updateWayfindDataWithCompletion(nullptr);
  const auto before = venue->globalASGrid();
  venue->maps->create(parsed(R"({"id": 8, "waypoints": {"items": [{"id": 99}]}})"));
  EXPECT_EQ(venue->globalASGrid()->getNodeById(99), std::nullopt);
  venue->updateWayfindDataWithCompletion(nullptr);
  EXPECT_NE(venue->globalASGrid(), before);
  EXPECT_NE(venue->globalASGrid()->getNodeById(99), std::nullopt);
}

TEST(TernActiveVenue, theGraphIsMadeOfAllMapsPathTypesAndBuildings) {
  const auto venue = readyDrawn(twoFloors);
  const auto grid = venue->globalASGrid();
  EXPECT_THAT(ids(grid->waypoints()), ElementsAre(1, 2, 3, 4, 5));
  EXPECT_THAT(ids(grid->paths()), ElementsAre(1, 2, 3, 5, 4));
  EXPECT_THAT(ids(grid->pathTypes()), ElementsAre(1, 2, 3));
  EXPECT_THAT(ids(grid->mapFulls()), ElementsAre(1, 2));
  EXPECT_THAT(ids(grid->buildings()), ElementsAre(1));
  EXPECT_FALSE(grid->isMultiVenueLoaded());
}

TEST(TernActiveVenue, aRouteOfTheGraphThatIsReplacedStaysReadable) {
  const ScopedBackgroundQueue scope(std::make_shared<RunNowQueue>());
  const auto venue = readyDrawn(twoFloors);
  const TernRoute found = venue->wayfind(waypointAt(*venue, 'A'), waypointAt(*venue, 'C'), 100);
  venue->updateWayfindDataWithCompletion(nullptr);
  EXPECT_EQ(found.front().points.back().f(), 100.0F);
  EXPECT_EQ(lettersOf(found), "ABC");
}

TEST(TernActiveVenue, theReplacedGraphIsLockedUntilTheCompletionHasRun) {
  const ScopedBackgroundQueue scope(std::make_shared<RunNowQueue>());
  const auto venue = readyDrawn(twoFloors);
  const auto before = venue->globalASGrid();
  const auto canBeLocked = [&] {
    return std::async(std::launch::async,
                      [&] {
                        const std::unique_lock lock(before->mutex(), std::try_to_lock);
                        return lock.owns_lock();
                      })
        .get();
  };
  bool duringCompletion = true;
  venue->updateWayfindDataWithCompletion([&](bool) { duringCompletion = canBeLocked(); });
  EXPECT_FALSE(duringCompletion);
  EXPECT_TRUE(canBeLocked());
}

TEST(TernActiveVenue, aCompletionMayAskForAnotherRebuild) {
  const ScopedBackgroundQueue scope(std::make_shared<RunNowQueue>());
  const auto venue = assembleVenue(twoFloors);
  int completions = 0;
  venue->updateWayfindDataWithCompletion([&](bool) {
    ++completions;
    venue->updateWayfindDataWithCompletion([&](bool) { ++completions; });
  });
  EXPECT_EQ(completions, 2);
}

TEST(TernActiveVenue, aVenueThatNobodySharesIsRebuiltAtOnce) {
  const auto queue = std::make_shared<OnDemandQueue>();
  const ScopedBackgroundQueue scope(queue);
  TernActiveVenue venue;
  int completions = 0;
  venue.updateWayfindDataWithCompletion([&](bool) { ++completions; });
  EXPECT_EQ(completions, 1);
  EXPECT_EQ(queue->waiting(), 0U);
  EXPECT_NE(venue.globalASGrid(), nullptr);
}

TEST(TernActiveVenue, aRebuildKeepsTheVenueAliveAndNoLonger) {
  const auto queue = std::make_shared<OnDemandQueue>();
  const ScopedBackgroundQueue scope(queue);
  auto venue = assembleVenue(twoFloors);
  const std::weak_ptr<TernActiveVenue> watched = venue;
  std::shared_ptr<TernASGrid> built;
  venue->updateWayfindDataWithCompletion([&](bool) { built = watched.lock()->globalASGrid(); });
  venue.reset();
  EXPECT_FALSE(watched.expired());
  queue->runAll();
  EXPECT_EQ(built->nodeCount(), 5U);
  EXPECT_TRUE(watched.expired());
}

// Rebuilds and counts the completions, which come on other threads.
class Rebuilds {
 public:
  explicit Rebuilds(int expected) : expected_(expected) {}
  void start(TernActiveVenue& venue) {
    // Only the last completion may still need this object when it counts itself.
    venue.updateWayfindDataWithCompletion([this, expected = expected_](bool built) {
      if (built && ++completed_ == expected) isComplete_.set_value();
    });
  }
  void wait() { await(isComplete_, "the last rebuild"); }
  int completed() const { return completed_; }

 private:
  const int expected_;
  std::atomic<int> completed_ = 0;
  std::promise<void> isComplete_;
};

// The routes, alternatives and closest waypoints of a venue as text.
std::string answersOf(const TernActiveVenue& venue, std::string_view letters) {
  std::string text;
  for (const char from : letters) {
    for (const char to : letters) {
      if (from == to) continue;
      text += route(venue, from, to) + ";";
      venue.wayfind(waypointAt(venue, from), waypointAt(venue, to), {}, 100,
                    [&](const auto& optimal, const auto& others) {
                      if (optimal) text += lettersOf(*optimal) + ",";
                      if (others) text += lettersOf(others->front());
                    });
    }
    const auto closest =
        venue.getClosestWaypointInArray(all(venue, "BHK"), waypointAt(venue, from), 100);
    text += closest != nullptr ? closest->id.printed() + "\n" : "none\n";
  }
  return text;
}

TEST(TernActiveVenueConcurrent, severalThreadsGetTheAnswersOfOne) {
  constexpr std::string_view letters = "ABCDEFGHIJKL";
  const auto venue = readyDrawn(
      {.floors = {{.lines = {"A--B--C--D", "|  |  |  |", "E--F--G--H"}}, {.lines = {"I--J--K--L"}}},
       .paths = {"A-B", "B-C", "C-D", "E-F", "F-G", "G-H", "A-E", "B-F", "C-G", "D-H", "I-J", "J-K",
                 "K-L", "A-I lift", "H-L lift"},
       .pathTypes = {{.name = "lift", .weight = 5}}});
  const auto grid = venue->globalASGrid();
  // A block that the first request for an alternative over it lifts.
  const auto block = [&] {
    grid->shouldBlockEdgeBetweenNode(*grid->getNodeById(idOf('C')), *grid->getNodeById(idOf('B')),
                                     true);
  };
  const std::string alone = answersOf(*venue, letters);
  std::vector<std::string> answers(4);
  std::vector<std::thread> threads;
  for (std::string& mine : answers) {
    threads.emplace_back([&] { mine = answersOf(*venue, letters); });
  }
  for (std::thread& thread : threads) thread.join();
  for (const std::string& mine : answers) EXPECT_EQ(mine, alone);
  block();
  threads.clear();
  for (std::string& mine : answers) {
    threads.emplace_back([&] { mine = answersOf(*venue, letters); });
  }
  for (std::thread& thread : threads) thread.join();
  EXPECT_EQ(answersOf(*venue, letters), alone) << "every block has been lifted";
}

TEST(TernActiveVenueConcurrent, overlappingRebuildsEachCompleteOnce) {
  const auto venue = assembleVenue(twoFloors);
  Rebuilds rebuilds(200);
  for (int i = 0; i < 200; ++i) rebuilds.start(*venue);
  rebuilds.wait();
  EXPECT_EQ(rebuilds.completed(), 200);
  EXPECT_EQ(route(*venue, 'A', 'E'), "AB DE");
}

TEST(TernActiveVenueConcurrent, readersGetAWholeGraphWhileItIsReplaced) {
  const auto venue = readyDrawn(twoFloors);
  Rebuilds rebuilds(100);
  std::atomic<bool> isDone = false;
  std::vector<std::thread> readers;
  for (int reader = 0; reader < 3; ++reader) {
    readers.emplace_back([&] {
      do {
        const auto grid = venue->globalASGrid();
        EXPECT_EQ(grid->nodeCount(), 5U);
        EXPECT_NE(grid->getNodeById(idOf('E')), std::nullopt);
      } while (!isDone);
    });
  }
  for (int i = 0; i < 100; ++i) rebuilds.start(*venue);
  rebuilds.wait();
  isDone = true;
  for (std::thread& reader : readers) reader.join();
}

TEST(TernActiveVenueConcurrent, routesAreFoundWhileTheGraphIsReplaced) {
  const auto venue = readyDrawn(twoFloors);
  Rebuilds rebuilds(100);
  for (int i = 0; i < 100; ++i) {
    rebuilds.start(*venue);
    EXPECT_EQ(route(*venue, 'A', 'E'), "AB DE");
  }
  rebuilds.wait();
}

// Whether a thread of this process waits for something.
bool isAsleep(pid_t thread) {
  std::ifstream file("/proc/self/task/" + std::to_string(thread) + "/stat");
  std::string state;
  std::getline(file, state);
  return state.find(") S ") != std::string::npos;
}

// Does the work while somebody else has the venue's search locked; whether the records could be
// locked when the work had come to wait for the search.
bool areRecordsFreeWhileTheSearchIsAwaited(TernActiveVenue& venue,
                                           const std::function<void()>& work) {
  const auto search = venue.nearestElement();
  std::unique_lock lock(search->mutex());
  std::promise<pid_t> isBegun;
  const JoiningThread worker([&] {
    isBegun.set_value(::gettid());
    work();
  });
  const pid_t thread = await(isBegun, "the worker");
  awaitUntil([&] { return isAsleep(thread); }, "the worker's wait for the search");
  const auto taken =
      std::async(std::launch::async, [&] { const MutexLock records(venue.recordsMutex()); });
  const bool areFree = taken.wait_for(longestWait) == std::future_status::ready;
  lock.unlock();
  return areFree;
}

TEST(TernActiveVenueConcurrent, whoWaitsForASearchLeavesTheRecordsFree) {
  const auto venue = readyDrawn(twoFloors);
  venue->loadKDTree();
  const ScopedBackgroundQueue atOnce(std::make_shared<RunNowQueue>());
  EXPECT_TRUE(areRecordsFreeWhileTheSearchIsAwaited(
      *venue, [&] { venue->updateWayfindDataWithCompletion({}); }));
  EXPECT_TRUE(areRecordsFreeWhileTheSearchIsAwaited(*venue, [&] { venue->loadKDTree(); }));
}

TEST(TernActiveVenueConcurrent, aVenueMayBeReleasedWhileItIsRebuilt) {
  std::vector<std::future<void>> completions;
  std::vector<std::weak_ptr<TernActiveVenue>> watched;
  for (int i = 0; i < 50; ++i) {
    auto venue = assembleVenue(twoFloors);
    watched.emplace_back(venue);
    auto isComplete = std::make_shared<std::promise<void>>();
    completions.push_back(isComplete->get_future());
    venue->updateWayfindDataWithCompletion([isComplete](bool) { isComplete->set_value(); });
  }
  for (auto& completion : completions) await(std::move(completion), "a completion");
  for (const auto& venue : watched) {
    awaitUntil([&] { return venue.expired(); }, "the release of the venue");
  }
}

TEST(TernActiveVenueConcurrent, theCompletionMayReleaseTheLastReference) {
  struct Owner {
    Venue venue;
  };
  const auto owner = std::make_shared<Owner>(Owner{assembleVenue(twoFloors)});
  const std::weak_ptr<TernActiveVenue> watched = owner->venue;
  std::promise<void> isComplete;
  std::promise<void> mayRelease;
  owner->venue->updateWayfindDataWithCompletion([&, owner](bool) {
    await(mayRelease, "the permission to release");
    owner->venue.reset();
    isComplete.set_value();
  });
  mayRelease.set_value();
  await(isComplete, "the completion");
  awaitUntil([&] { return watched.expired(); }, "the release of the venue");
}

// --- Laws ---

RC_GTEST_PROP(TernActiveVenue, noWaypointOfTheListIsCloserThanTheClosest, ()) {
  const auto number = [] { return *rc::gen::inRange(-50, 50) / 4.0; };
  TernActiveVenue::Waypoints waypoints;
  for (int left = *rc::gen::inRange(0, 12); left > 0; --left) {
    waypoints.push_back(TernWaypoint::initWithDictionary(
        Value::map({{"id", left}, {"coordinates", Value::list({number(), number()})}})));
  }
  const TernCoordinate point{number(), number()};
  const auto squaredDistance = [&](const TernWaypoint& waypoint) {
    const double x = waypoint.coordinates.items()[0].number() - point.x;
    const double y = waypoint.coordinates.items()[1].number() - point.y;
    return x * x + y * y;
  };
  const auto closest = TernActiveVenue::getClosestWaypointInArray(waypoints, point);
  RC_ASSERT((closest == nullptr) == waypoints.empty());
  bool isBehindClosest = false;
  for (const auto& waypoint : waypoints) {
    isBehindClosest = isBehindClosest || waypoint == closest;
    const double further = squaredDistance(*waypoint) - squaredDistance(*closest);
    RC_ASSERT(further > 0 || (further == 0 && isBehindClosest));
  }
}

double walkedLength(const TernRoute& route) {
  double length = 0;
  const TernASNode* before = nullptr;
  for (const TernPathPerFloor& segment : route) {
    for (const TernASNode& node : segment.points) {
      if (before != nullptr) length += std::hypot(node.x() - before->x(), node.y() - before->y());
      before = &node;
    }
  }
  return length;
}

RC_GTEST_PROP(TernActiveVenue, noWaypointOfTheListHasAShorterRouteThanTheClosestByRoute, ()) {
  const CapturedLog log;
  const auto venue = readyDrawn(aroundABlock);
  const auto letters = rc::gen::element('A', 'B', 'C', 'D', 'E', 'Z');
  const std::string list = *rc::gen::container<std::string>(letters);
  const char target = *letters;
  const auto closest =
      venue->getClosestWaypointInArray(all(*venue, list), waypointAt(*venue, target), 100);
  if (list.find(target) != std::string::npos) {
    RC_ASSERT(closest == waypointAt(*venue, target));
    return;
  }
  std::optional<double> least;
  for (const char letter : list) {
    const TernRoute way =
        venue->wayfind(waypointAt(*venue, letter), waypointAt(*venue, target), 100);
    if (!way.empty() && walkedLength(way) < least.value_or(1e9)) least = walkedLength(way);
  }
  RC_ASSERT((closest != nullptr) == least.has_value());
  if (closest == nullptr) return;
  RC_ASSERT(walkedLength(venue->wayfind(closest, waypointAt(*venue, target), 100)) == *least);
}

}  // namespace
}  // namespace tern::test
