#include "TernCoreKit/optimisation/detail/WaypointSelection.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "TernCoreKit/model/collections/TernDestinationCollection.hpp"
#include "tests/support/ActiveVenue.hpp"

namespace tern::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// Three levels; every one of a destination's counts.
class WaypointSelectionTest : public testing::Test {
 protected:
  void place(char start, const std::vector<Drawing::Place>& destinations) {
    venue_ = loadDrawnVenue({.floors = {{.lines = {"A  B  C  D"}},
                                        {.lines = {"E  F  G  H"}},
                                        {.lines = {"I  J  K  L"}}},
                             .destinations = destinations});
    tables_.startWayPoint = waypointAt(*venue_, start);
    tables_.arrange(venue_->destinations->getAll());
    for (std::int64_t map = 1; map <= 3; ++map) {
      tables_.levelComputedDataDict[map].isVisited = false;
      tables_.levelComputedDataDict[map].isReachable = true;
    }
    for (const TernDestination& destination : venue_->destinations->each()) {
      for (const auto& location : destination.locations) {
        ++tables_.levelComputedDataDict[location->mapId.integer()].score;
      }
    }
  }
  void select() { detail::WaypointSelection(tables_).selectWaypointsOfDestinations(); }

  std::string decided(std::int64_t map) {
    const auto& list = tables_.levelComputedDataDict[map].decidedWaypoints;
    return list ? lettersOf(*list) : "none";
  }
  std::string open(std::int64_t map) {
    return lettersOf(tables_.levelComputedDataDict[map].TBDwaypoints);
  }
  const TernTourDestination& record(std::int64_t id) {
    return tables_.intermediateStateOfDestination[id];
  }

  std::shared_ptr<TernActiveVenue> venue_;
  detail::TourTables tables_;
};

TEST_F(WaypointSelectionTest, levelThatComesInLateIsNeitherVisitedNorWaitedFor) {
  place('A', {{7, "A H L"}});
  tables_.levelComputedDataDict[1].isVisited = true;
  tables_.levelComputedDataDict[2].isVisited = true;
  tables_.levelComputedDataDict[3].isVisited = true;
  tables_.levelComputedDataDict[9].decide(waypointAt(*venue_, 'B'));
  EXPECT_FALSE(tables_.levelComputedDataDict[9].isVisited.has_value());
  EXPECT_TRUE(tables_.isAllVisited());
}

TEST_F(WaypointSelectionTest, destinationAtTheStartGetsNoRecordAndLeavesItsOtherLevels) {
  place('A', {{7, "A H L"}});
  select();
  EXPECT_THAT(tables_.intermediateStateOfDestination, IsEmpty());
  EXPECT_EQ(decided(1), "A");
  EXPECT_EQ(tables_.getScore(1), 1);
  EXPECT_EQ(tables_.getScore(2), 0);
  EXPECT_EQ(tables_.getScore(3), 0);
}

TEST_F(WaypointSelectionTest, theLevelThatMostCountIsChosen) {
  place('A', {{7, "E I"}, {8, "J"}});
  select();
  EXPECT_EQ(record(7).decidedMapid, 3);
  EXPECT_EQ(decided(3), "IJ");
  EXPECT_EQ(tables_.getScore(2), 0);
}

TEST_F(WaypointSelectionTest, tieIsOpenUntilTheLeastMeanDistanceSettlesIt) {
  place('A', {{7, "H L"}, {8, "E"}, {9, "K"}});
  detail::WaypointSelection selection(tables_);
  selection.finalizeWaypointFor(*venue_->destinations->getById(7), true);
  EXPECT_THAT(record(7).TBDMapids, ElementsAre(3, 2));
  EXPECT_EQ(open(2) + open(3), "HL");
  tables_.intermediateStateOfDestination.clear();
  tables_.levelComputedDataDict[2].TBDwaypoints.clear();
  tables_.levelComputedDataDict[3].TBDwaypoints.clear();
  select();
  EXPECT_EQ(record(7).decidedMapid, 3);
  EXPECT_THAT(record(7).TBDMapids, IsEmpty());
  EXPECT_EQ(decided(3), "LK");
  EXPECT_EQ(open(3), "");
  EXPECT_EQ(tables_.getScore(2), 1);
  EXPECT_EQ(tables_.getScore(3), 2);
}

TEST_F(WaypointSelectionTest, aTieIsOpenOnTheLevelsThatTieOnly) {
  place('A', {{7, "B H L"}, {8, "E"}, {9, "K"}});
  detail::WaypointSelection(tables_).finalizeWaypointFor(*venue_->destinations->getById(7), true);
  EXPECT_THAT(record(7).TBDMapids, ElementsAre(3, 2));
  EXPECT_EQ(open(1), "");
  EXPECT_EQ(open(2) + open(3), "HL");
}

TEST_F(WaypointSelectionTest, tieWithNothingToCompareWithStaysOpen) {
  place('A', {{7, "H L"}});
  select();
  EXPECT_FALSE(record(7).decidedMapid);
  EXPECT_EQ(open(2) + open(3), "HL");
  EXPECT_EQ(decided(2), "none");
}

TEST_F(WaypointSelectionTest, ofSeveralDoorsTheOneNearestToTheOthersIsChosen) {
  place('A', {{7, "DC"}});
  select();
  EXPECT_EQ(decided(1), "AC");
  EXPECT_EQ(open(1), "");
}

TEST_F(WaypointSelectionTest, unreachableDestinationIsMarkedAndNotSettled) {
  place('A', {{7, "E"}});
  tables_.levelComputedDataDict[2].isReachable = false;
  select();
  EXPECT_FALSE(record(7).isReachable);
  EXPECT_FALSE(record(7).decidedMapid);
  EXPECT_EQ(decided(2), "none");
}

TEST_F(WaypointSelectionTest, changedScoresSettleLaterDestinationsAnew) {
  // 20 and 10 tie between the levels; 20 settles on the second and leaves the third to lose 10.
  place('A', {{10, "I G"}, {20, "L H"}, {30, "F"}, {40, "J"}});
  select();
  EXPECT_EQ(record(20).decidedMapid, 2);
  EXPECT_EQ(record(10).decidedMapid, 2);
  EXPECT_EQ(decided(3), "J");
  EXPECT_EQ(tables_.getScore(2), 3);
  EXPECT_EQ(tables_.getScore(3), 1);
}

TEST_F(WaypointSelectionTest, destinationsRankByScoreThenPlacesThenDoorsThenId) {
  place('A', {{1, "E"}, {2, "F"}, {3, "GH"}, {4, "I"}, {5, "E J"}});
  detail::WaypointSelection(tables_).rearrangeDestinations();
  std::vector<std::int64_t> ids;
  for (const auto& each : tables_.destinations()) ids.push_back(each->id.integer());
  EXPECT_THAT(ids, ElementsAre(5, 3, 2, 1, 4));
}

}  // namespace
}  // namespace tern::test
