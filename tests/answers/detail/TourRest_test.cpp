#include "TernCoreKit/answers/detail/TourRest.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <string>

#include "TernCoreKit/answers/TernAnswers.hpp"
#include "TernCoreKit/model/collections/TernDestinationCollection.hpp"
#include "TernCoreKit/model/collections/TernMapCollection.hpp"
#include "TernCoreKit/model/records/TernDestination.hpp"
#include "TernCoreKit/platform/Json.hpp"
#include "TernCoreKit/wayfinding/TernASGrid.hpp"
#include "tests/support/ActiveVenue.hpp"
#include "tests/support/CapturedLog.hpp"
#include "tests/support/Paths.hpp"
#include "tests/support/RandomSite.hpp"
#include "tools/tern/VenueFolder.hpp"

namespace tern::test {
namespace {

using testing::ElementsAre;

using Venue = std::shared_ptr<TernActiveVenue>;

//   A  B  C  D      E      the way to E is of level 60, D is a dead end
const Drawing row{.floors = {{.lines = {"A  B  C  D      E"}}},
                  .paths = {"A-B", "B-C", "C-D", "D-E Stairs"},
                  .pathTypes = {{.name = "Stairs", .accessibility = 60}},
                  .destinations = {{1, "A"}, {2, "B"}, {3, "C"}, {4, "D"}, {5, "E"}, {6, "CE"}}};

class TourRestTest : public testing::Test {
 protected:
  explicit TourRestTest(const Drawing& drawing = row) : venue_(loadDrawnVenue(drawing)) {}

  detail::TourStops stops(const std::vector<std::int64_t>& ids) const {
    detail::TourStops list;
    for (const std::int64_t id : ids) list.push_back(venue_->destinations->getById(id));
    return list;
  }
  TernRoute way(char from, char to) const {
    return venue_->wayfind(waypointAt(*venue_, from), waypointAt(*venue_, to), 100);
  }
  // The letters of the legs.
  std::vector<std::string> append(char start, const std::vector<std::int64_t>& wanted,
                                  std::int64_t level = 100) {
    appendTheRest(*venue_, *waypointAt(*venue_, start), stops(wanted), level, tour_);
    std::vector<std::string> letters;
    for (const TernRoute& leg : tour_.legs) letters.push_back(lettersOf(leg));
    return letters;
  }
  std::vector<std::int64_t> visited() const {
    std::vector<std::int64_t> ids;
    for (const auto& each : tour_.destinations) ids.push_back(each->id.integer());
    return ids;
  }

  CapturedLog log_;
  Venue venue_;
  detail::Tour tour_;
};

TEST_F(TourRestTest, whatIsCheapestToReachFromTheLastWaypointComesNextAgainAndAgain) {
  EXPECT_THAT(append('C', {5, 2, 4, 1}), ElementsAre("CB", "BA", "ABCD", "DE"));
  EXPECT_THAT(visited(), ElementsAre(2, 1, 4, 5));
}

TEST_F(TourRestTest, aDestinationAtTheStartOrAtTheEndOfALegIsVisited) {
  tour_ = {{way('A', 'C')}, stops({3})};
  EXPECT_THAT(append('A', {1, 6, 3}), ElementsAre("ABC"));
  EXPECT_THAT(visited(), ElementsAre(3));
}

TEST_F(TourRestTest, allDestinationsOfTheWaypointReachedAreVisited) {
  EXPECT_THAT(append('B', {6, 3, 3}), ElementsAre("BC"));
  EXPECT_THAT(visited(), ElementsAre(6, 3));
}

TEST_F(TourRestTest, itGoesOnFromTheLastLegThatHasARoute) {
  tour_ = {{way('A', 'C'), {}}, stops({3, 5})};
  EXPECT_THAT(append('A', {3, 4}), ElementsAre("ABC", "", "CD"));
}

TEST_F(TourRestTest, whatIsOutOfReachAtThatLevelIsLeftOut) {
  EXPECT_THAT(append('A', {5, 2}, 59), ElementsAre("AB"));
  EXPECT_THAT(visited(), ElementsAre(2));
}

// --- Laws ---

Value tourOf(const Venue& venue, std::int64_t from, const Value& destinations, std::int64_t level) {
  return TernAnswers(venue).answer(Value::map(
      {{"op", "tour"}, {"from", from}, {"destinations", destinations}, {"accessibility", level}}));
}

// The first of the wanted destinations that the answer left out although a route leads on to it.
std::string leftOutWrongly(const Venue& venue, std::int64_t from, const Value& wanted,
                           std::int64_t level) {
  const auto grid = venue->globalASGrid();
  std::vector<std::int64_t> ends{from};
  const Value answer = tourOf(venue, from, wanted, level);
  for (const Value& leg : answer["legs"].items()) {
    if (leg.size() == 0) continue;
    ends.push_back(leg.items().back()["points"].items().back().integer());
  }
  const auto last = grid->getWPById(ends.back());
  for (const Value& id : wanted.items()) {
    const auto& doors = venue->destinations->getById(id.integer())->waypoints;
    const auto isEnd = [&](const auto& door) {
      return std::ranges::count(ends, door->id.integer()) > 0;
    };
    const auto isReached = [&](const auto& door) {
      return !venue->wayfind(last, door, level).empty();
    };
    if (std::ranges::any_of(doors, isEnd) || std::ranges::none_of(doors, isReached)) continue;
    return id.printed();
  }
  return "";
}

RC_GTEST_PROP(TourRest, aTourLeavesNothingOutThatARouteReaches, ()) {
  CapturedLog log;
  Tape tape(*tapes());
  const Venue venue = randomSite(tape);
  Value wanted = Value::list();
  for (const auto& destination : venue->destinations->getAll()) wanted.append(destination->id);
  const std::int64_t from = randomWaypoint(tape, *venue)->id.integer();
  const std::string leftOut = leftOutWrongly(venue, from, wanted, randomSiteLevel(tape));
  log.take();
  RC_ASSERT(leftOut == "");
}

// Of the sample venue's places half were left out of tours like these.
TEST(TourRest, toursOfTheSampleVenueLeaveNothingOutThatARouteReaches) {
  CapturedLog log;
  const auto venue = std::get<Venue>(command::loadVenue(samplePath(), std::nullopt, std::nullopt));
  const auto waypoints = venue->maps->getAllWaypoints();
  const auto destinations = venue->destinations->getAll();
  for (std::size_t i = 0; i < 40; ++i) {
    Value wanted = Value::list();
    for (std::size_t j = 0; j < 6; ++j) {
      wanted.append(destinations[(i * 31 + j * 17) % destinations.size()]->id);
    }
    const std::int64_t from = waypoints[i * 97 % waypoints.size()]->id.integer();
    for (const std::int64_t level : {0, 2, 100}) {
      EXPECT_EQ(leftOutWrongly(venue, from, wanted, level), "") << "from " << from;
    }
  }
  log.take();
}

}  // namespace
}  // namespace tern::test
