#include "TernCoreKit/optimisation/TernPOIOptimization.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <limits>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "TernCoreKit/model/collections/TernDestinationCollection.hpp"
#include "TernCoreKit/model/collections/TernMapCollection.hpp"
#include "TernCoreKit/model/records/TernLocation.hpp"
#include "TernCoreKit/platform/Log.hpp"
#include "TernCoreKit/spatial/TernNearestElement.hpp"
#include "tests/support/ActiveVenue.hpp"
#include "tests/support/CapturedLog.hpp"
#include "tests/support/FailingAllocation.hpp"
#include "tests/support/Mutations.hpp"

namespace tern::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// A lift (path type 2) at B, F and J, which is as near to every floor as to any other; all paths
// lead both ways.
const Drawing threeFloors{
    .floors = {{.lines = {"A  B  C  D"}}, {.lines = {"E  F  G  H"}}, {.lines = {"I  J  K  L"}}},
    .paths = {"A-B", "B-C", "C-D", "E-F", "F-G", "G-H", "I-J", "J-K", "K-L", "B-F lift", "F-B lift",
              "F-J lift", "J-F lift", "B-J lift", "J-B lift"},
    .pathTypes = {{.name = "lift", .weight = 5}},
    .connectors = {{2, "B F J"}}};

struct Tour {
  int calls = 0;
  TernPOIOptimization::Legs legs;
  std::vector<std::int64_t> order;

  std::string letters() const {
    std::string all;
    for (const TernRoute& leg : legs) all += (all.empty() ? "" : ", ") + lettersOf(leg);
    return all;
  }
};

using Places = std::vector<Drawing::Place>;

class TernPOIOptimizationTest : public testing::Test {
 protected:
  void load(Drawing drawing, Places destinations = {}) {
    drawing.destinations = std::move(destinations);
    venue_ = loadDrawnVenue(drawing);
    ordering_ = TernPOIOptimization::initWithActiveVenue(venue_, venue_->nearestElement());
  }
  Tour visit(char start, const TernPOIOptimization::Destinations& destinations,
             std::int64_t level = 100) {
    Tour tour;
    ordering_->wayfindToMultipleDestinations(destinations, waypointAt(*venue_, start), level,
                                             [&](auto legs, auto order) {
                                               ++tour.calls;
                                               tour.legs = std::move(legs);
                                               for (const auto& each : order)
                                                 tour.order.push_back(each->id.integer());
                                             });
    EXPECT_EQ(tour.calls, 1);
    EXPECT_EQ(tour.legs.size() + 1, ordering_->finalOrderOfWaypoints().size());
    EXPECT_TRUE(ordering_->isAllVisited());
    EXPECT_EQ(venue_->nearestElement()->delegate, nullptr);
    return tour;
  }
  Tour visitAll(char start, std::int64_t level = 100) {
    return visit(start, venue_->destinations->getAll(), level);
  }
  std::string stops() const { return lettersOf(ordering_->finalOrderOfWaypoints()); }

  CapturedLog log_;
  std::shared_ptr<TernActiveVenue> venue_;
  std::shared_ptr<TernPOIOptimization> ordering_;
};

TEST_F(TernPOIOptimizationTest, withoutDestinationsOnlyTheStartIsVisited) {
  load(threeFloors);
  const Tour tour = visit('A', {});
  EXPECT_EQ(stops(), "A");
  EXPECT_THAT(tour.legs, IsEmpty());
  EXPECT_THAT(tour.order, IsEmpty());
}

TEST_F(TernPOIOptimizationTest, destinationAtTheStartIsServedByIt) {
  load(threeFloors, {{7, "A H"}, {8, "D"}});
  const Tour tour = visitAll('A');
  EXPECT_EQ(stops(), "AD");
  EXPECT_THAT(tour.order, ElementsAre(7, 8));
  EXPECT_EQ(ordering_->getScore(2), 0);
}

TEST_F(TernPOIOptimizationTest, twoDestinationsOnTheStartsLevelAreOrderedFromTheStart) {
  load(threeFloors, {{7, "D"}, {8, "A"}});
  const Tour tour = visitAll('B');
  EXPECT_EQ(stops(), "BAD");
  EXPECT_THAT(tour.order, ElementsAre(8, 7));
  EXPECT_EQ(tour.letters(), "BA, ABCD");
}

TEST_F(TernPOIOptimizationTest, ambiguousDestinationGoesWhereItIsNearestToTheOthers) {
  load(threeFloors, {{7, "H L"}, {8, "E"}, {9, "K"}});
  const Tour tour = visitAll('A');
  EXPECT_THAT(tour.order, ElementsAre(8, 9, 7));
  EXPECT_EQ(stops(), "AEKL");
  EXPECT_EQ(ordering_->getScore(2), 1);
  EXPECT_EQ(ordering_->getScore(3), 2);
}

TEST_F(TernPOIOptimizationTest, levelReachedForAnOpenDestinationDropsItsOtherLevels) {
  load(threeFloors, {{7, "H K"}});
  const Tour tour = visitAll('A');
  EXPECT_EQ(stops(), "AK");
  EXPECT_THAT(tour.order, ElementsAre(7));
  EXPECT_EQ(tour.letters(), "AB JK");
}

TEST_F(TernPOIOptimizationTest, openDestinationGoesToTheNearestDoorOfItsLevel) {
  load(threeFloors, {{7, "EGH"}});
  visitAll('A');
  EXPECT_EQ(stops(), "AE");
}

TEST_F(TernPOIOptimizationTest, repeatedDestinationsCountOnce) {
  load(threeFloors, {{7, "D"}, {8, "A"}});
  const auto all = venue_->destinations->getAll();
  const Tour tour = visit('B', {all[0], all[1], all[0], nullptr, all[1]});
  EXPECT_EQ(stops(), "BAD");
  EXPECT_EQ(ordering_->getScore(1), 3);
}

TEST_F(TernPOIOptimizationTest, levelsAreVisitedFromNearToFar) {
  load(threeFloors, {{7, "H"}, {8, "I"}, {9, "C"}});
  const Tour tour = visitAll('A');
  EXPECT_THAT(tour.order, ElementsAre(9, 8, 7));
  EXPECT_EQ(tour.letters(), "ABC, CB JI, IJ FGH");
}

TEST_F(TernPOIOptimizationTest, ofEquallyNearLevelsTheLowerMapIdComesFirst) {
  load(threeFloors, {{7, "I"}, {8, "E"}});
  EXPECT_THAT(visitAll('A').order, ElementsAre(8, 7));
}

TEST_F(TernPOIOptimizationTest, unreachableDestinationsAreLeftOut) {
  Drawing drawing = threeFloors;
  drawing.paths = {"A-B", "B-C", "C-D", "E-F", "F-G", "G-H"};
  load(drawing, {{7, "H"}, {8, "D"}});
  const Tour tour = visitAll('A');
  EXPECT_THAT(tour.order, ElementsAre(8));
  EXPECT_FALSE(ordering_->isReachable(2));
  EXPECT_TRUE(ordering_->isReachable(1));
}

TEST_F(TernPOIOptimizationTest, whatOnlyARouteReachesIsVisited) {
  Drawing drawing = threeFloors;
  drawing.connectors.clear();
  load(drawing, {{7, "H"}, {8, "D"}});
  EXPECT_THAT(visitAll('A').order, ElementsAre(8, 7));
}

TEST_F(TernPOIOptimizationTest, accessibilityClosesConnectors) {
  Drawing drawing = threeFloors;
  drawing.pathTypes[0].accessibility = 50;
  load(drawing, {{7, "H"}});
  EXPECT_THAT(visitAll('A', 0).order, IsEmpty());
  EXPECT_THAT(visitAll('A', 100).order, ElementsAre(7));
}

TEST_F(TernPOIOptimizationTest, levelFoundByNoSearchIsTakenNextAndStartsAtItsFirstStop) {
  // Lifts go up from the first floor only: from the second the search finds no way on.
  Drawing drawing = threeFloors;
  drawing.paths = {"A-B", "B-C", "C-D", "E-F",         "F-G",        "G-H",
                   "I-J", "J-K", "K-L", "B>F lift up", "B>J lift up"};
  load(drawing, {{7, "G"}, {8, "I"}, {9, "L"}, {10, "K"}});
  EXPECT_THAT(visitAll('A').order, ElementsAre(7, 10, 9, 8));
}

// E says that it lies on the third floor, which no destination is placed on.
TEST_F(TernPOIOptimizationTest, levelThatComesInWithAWaypointIsVisitedToo) {
  load(threeFloors, {{7, "EGH"}, {8, "F"}});
  waypointAt(*venue_, 'E')->mapId = 3;
  EXPECT_THAT(visitAll('A').order, ElementsAre(7, 8));
  EXPECT_EQ(stops(), "AEF");
}

TEST_F(TernPOIOptimizationTest, itsStepsOneAfterAnotherAreTheWholeRun) {
  load(threeFloors, {{7, "H L"}, {8, "E"}, {9, "K"}, {10, "C"}, {11, "D"}});
  const Tour whole = visitAll('A');
  const auto order = ordering_->finalOrderOfWaypoints();
  const auto levels = ordering_->levelComputedDataDict();
  ASSERT_EQ(order.size(), 6U);

  ordering_->resetValues();
  EXPECT_EQ(ordering_->startWayPoint(), nullptr);
  EXPECT_EQ(ordering_->accessible(), 100);
  EXPECT_THAT(ordering_->levelComputedDataDict(), IsEmpty());
  EXPECT_THAT(ordering_->dictOfTernPathPerFloor(), IsEmpty());
  ordering_->getOptimalOrderOfDestinations();
  EXPECT_THAT(ordering_->finalOrderOfWaypoints(), IsEmpty()) << "there is no start";

  ordering_->setStartWayPoint(waypointAt(*venue_, 'A'));
  ordering_->setDestinations(venue_->destinations->getAll());
  ordering_->createPriorityLevelScore();
  EXPECT_EQ(ordering_->getScore(1), 3);
  EXPECT_FALSE(ordering_->isAllVisited());
  ordering_->selectWaypointsOfDestinations();
  EXPECT_EQ(ordering_->intermediateStateOfDestination().at(9).decidedMapid, 3);
  ordering_->getOptimalOrderOfDestinations();
  EXPECT_EQ(ordering_->finalOrderOfWaypoints(), order);
  EXPECT_EQ(ordering_->levelComputedDataDict().at(2).score, levels.at(2).score);
  const auto destinations = ordering_->getDestinationOrderFor(order);
  ASSERT_EQ(destinations.size(), whole.order.size());
  for (std::size_t i = 0; i < destinations.size(); ++i) {
    EXPECT_EQ(destinations[i]->id.integer(), whole.order[i]);
  }
  const auto legs = ordering_->generatePathPerFloorFor(order);
  ASSERT_EQ(legs.size(), whole.legs.size());
  for (std::size_t i = 0; i < legs.size(); ++i) {
    EXPECT_EQ(lettersOf(legs[i]), lettersOf(whole.legs[i]));
  }
}

TEST_F(TernPOIOptimizationTest, itsStepsSettleADestinationByTheScoresOfItsLevels) {
  load(threeFloors, {{7, "H L"}, {8, "E"}, {9, "K"}, {10, "C"}});
  EXPECT_EQ(ordering_->activeVenue(), venue_);
  EXPECT_EQ(ordering_->searchElement(), venue_->nearestElement());
  ordering_->setStartWayPoint(waypointAt(*venue_, 'A'));
  EXPECT_EQ(ordering_->startWayPoint(), waypointAt(*venue_, 'A'));
  ordering_->setAccessible(5);
  EXPECT_EQ(ordering_->accessible(), 5);
  ordering_->setDestinations(venue_->destinations->getAll());
  ordering_->createPriorityLevelScore();
  EXPECT_EQ(ordering_->getScore(2), 2);
  EXPECT_EQ(ordering_->getScore(3), 2);

  const auto either = venue_->destinations->getById(7);
  ordering_->adjustTheScore(*either, {3});
  EXPECT_EQ(ordering_->getScore(2), 1) << "that of the level that is not among them";
  EXPECT_EQ(ordering_->getScore(3), 2);
  const auto settled = ordering_->finalizeWaypointFor(*either, false);
  ASSERT_NE(settled, nullptr);
  EXPECT_EQ(settled->mapId.integer(), 3) << "where the score is greater";
  EXPECT_EQ(ordering_->intermediateStateOfDestination().at(7).decidedMapid, 3);
  ordering_->rearrangeDestinations();
  std::vector<std::int64_t> ids;
  for (const auto& each : ordering_->destinations()) ids.push_back(each->id.integer());
  EXPECT_THAT(ids, ElementsAre(7, 10, 9, 8)) << "of one score the greater id first";

  ordering_->adjustTheScore(*venue_->destinations->getById(9), {});
  ordering_->adjustTheScore(*either, {2});
  ASSERT_EQ(ordering_->getScore(3), 0);
  ordering_->updateDecidedLocationForNewScore(*either);
  EXPECT_EQ(ordering_->intermediateStateOfDestination().at(7).decidedMapid, 2);
  EXPECT_EQ(ordering_->getScore(2), 2) << "it counts where it is now";
  EXPECT_EQ(ordering_->getScore(3), -1);
}

TEST_F(TernPOIOptimizationTest, itsStepsOrderASingleLevelFromAnyStop) {
  load(threeFloors, {{7, "D"}, {8, "C"}, {9, "E"}});
  ordering_->setStartWayPoint(waypointAt(*venue_, 'A'));
  ordering_->setDestinations(venue_->destinations->getAll());
  ordering_->createPriorityLevelScore();
  ordering_->selectWaypointsOfDestinations();
  ordering_->getShortestDistanceandTour(1, waypointAt(*venue_, 'A'));
  EXPECT_EQ(stops(), "ACD");
}

TEST_F(TernPOIOptimizationTest, searchEndsWhereItIsToldTo) {
  load(threeFloors);
  ordering_->setSearchElementConditionWaypoints({waypointAt(*venue_, 'B')});
  EXPECT_THAT(ordering_->searchElementConditionWaypoints(), ElementsAre(waypointAt(*venue_, 'B')));
  EXPECT_TRUE(ordering_->isConditionPassedWithWaypoint(waypointAt(*venue_, 'B')));
  EXPECT_FALSE(ordering_->isConditionPassedWithWaypoint(waypointAt(*venue_, 'A')));
}

TEST_F(TernPOIOptimizationTest, itsMatrixIsFilledStopByStopAlongAChain) {
  load(threeFloors);
  const TernPOIOptimization::Waypoints chain{waypointAt(*venue_, 'A'), waypointAt(*venue_, 'B'),
                                             waypointAt(*venue_, 'D')};
  ordering_->generatePathPerFloorFor(chain);
  EXPECT_THAT(ordering_->dictOfTernPathPerFloor(), testing::SizeIs(2));
  ordering_->createPathandDoCorrectionInOrder(chain);
  EXPECT_EQ(ordering_->intermediateDistanceFromStartNode().at(chain[2]->id.integer()), 90);
  ordering_->createGraph(chain, 1);
  EXPECT_THAT(ordering_->costToPathGraph(),
              ElementsAre(ElementsAre(0, 30, -1), ElementsAre(30, 0, 60), ElementsAre(-1, 60, 0)));
  ordering_->createGraph(chain, 0);
  EXPECT_THAT(ordering_->costToPathGraph()[0], ElementsAre(0, 30, 90));
  EXPECT_EQ(TernPOIOptimization::getOptimalPathWithTSPAlgo(chain, ordering_->costToPathGraph()),
            chain);
}

TEST_F(TernPOIOptimizationTest, itsStepsPassOverWhatIsNull) {
  load(threeFloors, {{7, "D"}});
  ordering_->setDestinations({nullptr, venue_->destinations->getById(7)});
  EXPECT_THAT(ordering_->destinations(), testing::SizeIs(1));
  EXPECT_THAT(ordering_->generatePathPerFloorFor({nullptr, waypointAt(*venue_, 'A'), nullptr}),
              IsEmpty());
  EXPECT_EQ(ordering_->finalizeWaypointFor(*venue_->destinations->getById(7), true), nullptr);
  ordering_->updateDecidedLocationForNewScore(*venue_->destinations->getById(7));
  EXPECT_THAT(ordering_->intermediateStateOfDestination(), IsEmpty());
}

struct Refusing : TernNearestElementDelegate {
  bool isConditionPassedWithWaypoint(const std::shared_ptr<TernWaypoint>&) override {
    return false;
  }
};

TEST_F(TernPOIOptimizationTest, theApplicationsDelegateIsThereAgainAndRestrictsNoTour) {
  load(threeFloors, {{7, "H"}});
  const auto delegate = std::make_shared<Refusing>();
  venue_->nearestElement()->delegate = delegate;
  TernPOIOptimization::Destinations order;
  ordering_->wayfindToMultipleDestinations(venue_->destinations->getAll(), waypointAt(*venue_, 'A'),
                                           100,
                                           [&](auto, auto found) { order = std::move(found); });
  EXPECT_EQ(order.size(), 1U);
  EXPECT_EQ(venue_->nearestElement()->delegate, delegate);
}

TEST_F(TernPOIOptimizationTest, isWholeOrHasNoStopsWhateverAllocationFails) {
  load(threeFloors, {{7, "H L"}, {8, "E"}, {9, "K"}, {10, "C"}, {11, "D"}});
  const auto all = venue_->destinations->getAll();
  const auto start = waypointAt(*venue_, 'A');
  const auto delegate = std::make_shared<Refusing>();
  venue_->nearestElement()->delegate = delegate;
  struct Told {
    int times = 0;
    std::size_t legs = 0;
    TernPOIOptimization::Destinations order;
  } told;
  const TernPOIOptimization::Completion completion = [&told](auto legs, auto order) {
    ++told.times;
    told.legs = legs.size();
    told.order = std::move(order);
  };
  const auto run = [&] {
    EXPECT_NO_THROW(ordering_->wayfindToMultipleDestinations(all, start, 100, completion));
  };
  run();
  const Told whole = std::exchange(told, {});
  ASSERT_EQ(whole.legs, 5U);
  const int failed = forFailingAllocations(FailingAllocation::Reach::thread, run, [&] {
    const Told now = std::exchange(told, {});
    ASSERT_EQ(now.times, 1);
    ASSERT_TRUE(now.order.empty() || now.order == whole.order);
    ASSERT_EQ(now.legs, now.order.empty() ? 0U : whole.legs);
    ASSERT_EQ(ordering_->finalOrderOfWaypoints().empty(), now.order.empty());
    ASSERT_EQ(venue_->nearestElement()->delegate, delegate);
    log_.take();
    run();
    ASSERT_EQ(std::exchange(told, {}).order, whole.order) << "the next one has memory again";
  });
  EXPECT_GT(failed, 60);
}

TEST_F(TernPOIOptimizationTest, legWithoutARouteIsEmpty) {
  Drawing drawing = threeFloors;
  drawing.paths[0] = "C-B";
  load(drawing, {{7, "D"}});
  const Tour tour = visitAll('A');
  EXPECT_THAT(tour.order, ElementsAre(7));
  EXPECT_THAT(tour.legs, ElementsAre(IsEmpty()));
}

TEST_F(TernPOIOptimizationTest, stopsThatNoRouteReachesAreLostAndTheOneBeforeThemIsRepeated) {
  // A stands alone.
  Drawing drawing = threeFloors;
  drawing.paths[0] = "C-B";
  load(drawing, {{7, "B"}, {8, "C"}, {9, "D"}});
  EXPECT_THAT(visitAll('A').order, ElementsAre(7));
  EXPECT_EQ(stops(), "ABAA");
  EXPECT_THAT(log_.take(), ElementsAre("Tern SDK: NO PATH"));
}

TEST_F(TernPOIOptimizationTest, moreStopsThanAreSolvedKeepTheChain) {
  std::string line;
  std::vector<std::string> paths;
  Places destinations;
  for (char letter = 'A'; letter <= 'Z'; ++letter) {
    line += letter;
    if (letter == 'A') continue;
    paths.push_back(std::string{static_cast<char>(letter - 1), '-', letter});
    destinations.push_back({letter, std::string(1, letter)});
  }
  load({.floors = {{.lines = {line}}},
        .paths = std::vector<std::string_view>(paths.begin(), paths.end())},
       destinations);
  visitAll('A');
  EXPECT_EQ(stops(), line);
  EXPECT_THAT(log_.take(), ElementsAre("Tern SDK: a tour of 26 stops is not solved, only of 22"));
}

TEST_F(TernPOIOptimizationTest, knowsItsDestinationsAndTheirWaypoints) {
  load(threeFloors, {{7, "D"}, {8, "A"}});
  visitAll('B');
  EXPECT_EQ(ordering_->getDesinationById(8), venue_->destinations->getById(8));
  EXPECT_EQ(ordering_->getDesinationById(9), nullptr);
  EXPECT_EQ(ordering_->getbyWayPointId(idOf('D')), venue_->destinations->getById(7));
  EXPECT_EQ(ordering_->getbyWayPointId(idOf('C')), nullptr);
  const auto eight = venue_->destinations->getById(8);
  EXPECT_EQ(TernPOIOptimization::getWayPointById(idOf('A'), *eight), waypointAt(*venue_, 'A'));
  EXPECT_EQ(TernPOIOptimization::getWayPointById(idOf('D'), *eight), nullptr);
  EXPECT_EQ(ordering_->getScore(99), 0);
  EXPECT_FALSE(ordering_->isReachable(99));
}

TEST_F(TernPOIOptimizationTest, searchMayEndAnywhereWhileNothingIsAsked) {
  load(threeFloors);
  EXPECT_TRUE(ordering_->isConditionPassedWithWaypoint(waypointAt(*venue_, 'A')));
}

TEST_F(TernPOIOptimizationTest, routeWithinAListGoesToTheCheapest) {
  load(threeFloors);
  const auto route = ordering_->wayfindWithinArray(
      *waypointAt(*venue_, 'A'), {waypointAt(*venue_, 'H'), waypointAt(*venue_, 'C')}, 100);
  EXPECT_EQ(lettersOf(route), "ABC");
  EXPECT_THAT(ordering_->wayfindWithinArray(*waypointAt(*venue_, 'A'), {}, 100), IsEmpty());
}

TEST_F(TernPOIOptimizationTest, eachRunForgetsTheOneBefore) {
  load(threeFloors, {{7, "D"}, {8, "H"}});
  visitAll('A');
  const Tour tour = visit('D', {});
  EXPECT_EQ(stops(), "D");
  EXPECT_EQ(ordering_->getDesinationById(7), nullptr);
  EXPECT_EQ(ordering_->getScore(2), 0);
}

TEST_F(TernPOIOptimizationTest, withoutAStartNothingIsVisited) {
  load(threeFloors, {{7, "D"}});
  int calls = 0;
  ordering_->wayfindToMultipleDestinations(venue_->destinations->getAll(), nullptr, 100,
                                           [&](const auto& legs, const auto& order) {
                                             ++calls;
                                             EXPECT_THAT(legs, IsEmpty());
                                             EXPECT_THAT(order, IsEmpty());
                                           });
  EXPECT_EQ(calls, 1);
}

TEST_F(TernPOIOptimizationTest, outlivesItsVenue) {
  load(threeFloors, {{7, "D"}, {8, "H"}});
  const auto start = waypointAt(*venue_, 'A');
  const auto all = venue_->destinations->getAll();
  venue_ = nullptr;
  int calls = 0;
  ordering_->wayfindToMultipleDestinations(all, start, 100, [&](const auto& legs, const auto&) {
    ++calls;
    EXPECT_THAT(legs, ElementsAre(IsEmpty()));
  });
  EXPECT_EQ(calls, 1);
  EXPECT_THAT(ordering_->wayfindWithinArray(*start, {start}, 100), IsEmpty());
}

TEST_F(TernPOIOptimizationTest, venueForwardsToIt) {
  load(threeFloors, {{7, "D"}, {8, "H"}});
  Tour tour;
  venue_->wayfindToMultipleDestinations(venue_->destinations->getAll(), waypointAt(*venue_, 'A'),
                                        100, [&](auto legs, const auto& order) {
                                          ++tour.calls;
                                          tour.legs = std::move(legs);
                                          EXPECT_EQ(order.size(), 2U);
                                        });
  EXPECT_EQ(tour.calls, 1);
  EXPECT_EQ(tour.letters(), "ABCD, DCB FGH");
  EXPECT_EQ(venue_->nearestElement()->delegate, nullptr);
}

TEST_F(TernPOIOptimizationTest, theSearchItIsGivenKeepsItsDelegateAndItsAnswer) {
  struct Nowhere : TernNearestElementDelegate {
    bool isConditionPassedWithWaypoint(const std::shared_ptr<TernWaypoint>&) override {
      return false;
    }
  };
  load(threeFloors, {{7, "D"}, {8, "H"}});
  const auto nearest = venue_->nearestElement();
  const auto former = std::make_shared<Nowhere>();
  nearest->delegate = former;
  int calls = 0;
  ordering_->wayfindToMultipleDestinations(venue_->destinations->getAll(), waypointAt(*venue_, 'A'),
                                           100, [&](const auto&, const auto& order) {
                                             ++calls;
                                             EXPECT_EQ(order.size(), 2U);
                                           });
  EXPECT_EQ(calls, 1);
  EXPECT_EQ(nearest->delegate, former);
  EXPECT_FALSE(nearest->userNode());
}

// Without a venue there are no routes; which stops, and in which order, the search alone decides.
TEST_F(TernPOIOptimizationTest, toursOverOneSearchRunConcurrently) {
  load(threeFloors, {{7, "D H"}, {8, "EG"}, {9, "L"}});
  const auto all = venue_->destinations->getAll();
  const auto nearest = venue_->nearestElement();
  const auto stopsFrom = [&](char letter) {
    const auto tour = TernPOIOptimization::initWithActiveVenue({}, nearest);
    tour->wayfindToMultipleDestinations(all, waypointAt(*venue_, letter), 100, {});
    return lettersOf(tour->finalOrderOfWaypoints());
  };
  const std::string letters = "ABCDEFGHIJKL";
  std::vector<std::string> expected;
  for (const char letter : letters) expected.push_back(stopsFrom(letter));
  std::vector<std::thread> running;
  std::vector<std::vector<std::string>> found(4);
  for (auto& each : found) {
    running.emplace_back([&] {
      for (const char letter : letters) each.push_back(stopsFrom(letter));
    });
  }
  for (std::thread& thread : running) thread.join();
  for (const auto& each : found) EXPECT_EQ(each, expected);
}

// Up to six destinations, each with a location or two of a door or two that it shares with none.
Places randomDestinations() {
  std::vector<char> doors = {'A', 'B', 'C', 'D', 'E', 'F', 'G', 'H', 'I', 'J', 'K', 'L'};
  Places destinations;
  const int count = *rc::gen::inRange(0, 7);
  for (int id = 1; id <= count; ++id) {
    std::map<int, std::string> byMap;
    for (int i = *rc::gen::inRange(1, 4); i > 0 && !doors.empty(); --i) {
      const auto at = doors.begin() + *rc::gen::inRange<std::ptrdiff_t>(0, std::ssize(doors));
      byMap[1 + (*at - 'A') / 4] += *at;
      doors.erase(at);
    }
    std::string words;
    for (const auto& [map, letters] : byMap) words += letters + " ";
    destinations.push_back({id, words});
  }
  return destinations;
}

RC_GTEST_PROP(TernPOIOptimizationProperty, visitsEachReachableDestinationAtMostOnce, ()) {
  const CapturedLog log;
  Drawing drawing = threeFloors;
  drawing.destinations = randomDestinations();
  const auto venue = loadDrawnVenue(drawing);
  const auto start = waypointAt(*venue, static_cast<char>('A' + *rc::gen::inRange(0, 12)));
  const auto all =
      venue->destinations ? venue->destinations->getAll() : TernPOIOptimization::Destinations();
  int calls = 0;
  venue->wayfindToMultipleDestinations(
      all, start, *rc::gen::element(0, 1, 100),
      [&](const TernPOIOptimization::Legs& legs, const auto& order) {
        ++calls;
        const std::set<std::shared_ptr<TernDestination>> different(order.begin(), order.end());
        RC_ASSERT(different.size() == order.size());
        RC_ASSERT(legs.size() <= order.size());
        for (const TernRoute& leg : legs) RC_ASSERT(!leg.empty());
      });
  RC_ASSERT(calls == 1);
}

// Destinations of one door each, some of them at the same door.
Places randomDoors() {
  Places destinations;
  const int count = *rc::gen::inRange(0, 7);
  for (int id = 1; id <= count; ++id) {
    destinations.push_back({id, std::string(1, static_cast<char>('A' + *rc::gen::inRange(0, 12)))});
  }
  return destinations;
}

RC_GTEST_PROP(TernPOIOptimizationProperty, visitsEveryDoorOnceAndWalksFromStopToStop, ()) {
  CapturedLog log;
  Drawing drawing = threeFloors;
  drawing.destinations = randomDoors();
  const auto venue = loadDrawnVenue(drawing);
  const auto ordering = TernPOIOptimization::initWithActiveVenue(venue, venue->nearestElement());
  const char start = static_cast<char>('A' + *rc::gen::inRange(0, 12));
  std::set<char> doors = {start};
  for (const Drawing::Place& place : drawing.destinations) doors.insert(place.at.front());
  const auto all =
      venue->destinations ? venue->destinations->getAll() : TernPOIOptimization::Destinations();
  ordering->wayfindToMultipleDestinations(
      all, waypointAt(*venue, start), 100,
      [&](const TernPOIOptimization::Legs& legs, const TernPOIOptimization::Destinations&) {
        const std::string stops = lettersOf(ordering->finalOrderOfWaypoints());
        RC_ASSERT(stops.front() == start);
        RC_ASSERT(std::set<char>(stops.begin(), stops.end()) == doors);
        RC_ASSERT(legs.size() + 1 == stops.size());
        for (std::size_t i = 0; i < legs.size(); ++i) {
          if (stops[i] == stops[i + 1]) continue;
          RC_ASSERT(!legs[i].empty());
          RC_ASSERT(legs[i].front().points.front().nodeId() == idOf(stops[i]));
          RC_ASSERT(legs[i].back().points.back().nodeId() == idOf(stops[i + 1]));
        }
      });
  // From a door to itself there is no way.
  for (const std::string& line : log.take()) RC_ASSERT(line == "Tern SDK: NO PATH");
}

// Connectors that lead nowhere, ids that nobody has, absurd numbers, values of the wrong kind.
TEST(TernPOIOptimizationRobustness, damagedVenuesNeverHang) {
  setLogSink([](std::string_view) {});
  Drawing drawing = threeFloors;
  drawing.destinations = {{7, "EGH"}, {8, "I E"}, {9, "C"}, {10, "D"}, {11, "KL"}};
  for (std::uint64_t seed = 0; seed < 400; ++seed) {
    Mutations mutations(seed);
    Value document = drawVenueDocument(drawing);
    Value building = drawBuildingDocument(drawing);
    mutations.damage(document, static_cast<int>(seed % 7));
    mutations.damage(building, static_cast<int>(seed % 5));
    const auto venue = loadVenue(std::move(document), std::move(building));
    const auto all =
        venue->destinations ? venue->destinations->getAll() : TernPOIOptimization::Destinations();
    // A document that ends too early has no maps.
    if (venue->maps == nullptr) continue;
    for (const auto& start : venue->maps->getAllWaypoints()) {
      int calls = 0;
      venue->wayfindToMultipleDestinations(all, start, 100,
                                           [&](const auto&, const auto&) { ++calls; });
      EXPECT_EQ(calls, 1) << seed;
    }
  }
  setLogSink({});
}

// Places that are no finite numbers, which no document can bring about.
TEST(TernPOIOptimizationRobustness, absurdPlacesNeverWinAndNeverHang) {
  setLogSink([](std::string_view) {});
  constexpr double absurd[] = {std::numeric_limits<double>::quiet_NaN(),
                               std::numeric_limits<double>::infinity(), -1e308, 1e308};
  Drawing drawing = threeFloors;
  drawing.destinations = {{7, "EGH"}, {8, "I F"}, {9, "CD"}};
  const auto venue = loadDrawnVenue(drawing);
  const auto waypoints = venue->maps->getAllWaypoints();
  for (std::uint64_t seed = 0; seed < 200; ++seed) {
    Mutations random(seed);
    const auto changed = waypoints[random.below(waypoints.size())];
    const Value before = changed->coordinates;
    changed->coordinates = Value::list({absurd[random.below(4)], absurd[random.below(4)]});
    venue->loadGridData();
    venue->loadKDTree();
    const auto ordering = TernPOIOptimization::initWithActiveVenue(venue, venue->nearestElement());
    int calls = 0;
    ordering->wayfindToMultipleDestinations(venue->destinations->getAll(),
                                            waypoints[random.below(waypoints.size())], 100,
                                            [&](const auto&, const auto&) { ++calls; });
    EXPECT_EQ(calls, 1) << seed;
    EXPECT_TRUE(ordering->isAllVisited()) << seed;
    if (random.below(3) > 0) changed->coordinates = before;
  }
  setLogSink({});
}

}  // namespace
}  // namespace tern::test
