#include "TernCoreKit/wayfinding/joined/TernMultiActiveVenues.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <cmath>
#include <string>
#include <thread>
#include <utility>

#include "TernCoreKit/model/collections/TernMapCollection.hpp"
#include "TernCoreKit/model/records/TernWaypoint.hpp"
#include "TernCoreKit/wayfinding/TernASGrid.hpp"
#include "tests/support/CapturedLog.hpp"
#include "tests/support/FailingAllocation.hpp"
#include "tests/support/JoinedVenues.hpp"
#include "tests/support/Waiting.hpp"
#include "tests/support/WorkQueues.hpp"

namespace tern::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Joined = std::shared_ptr<TernMultiActiveVenues>;
using Venue = std::shared_ptr<TernActiveVenue>;

constexpr const char* notBuilt =
    "Tern SDK: Grid has not been initialized, please wait for multiVenueWayfindDataLoaded callback "
    "before wayfinding.";

class Listener : public TernMultiActiveVenuesDelegate {
 public:
  void multiVenueWayfindDataLoaded() override { ++calls_; }
  void multiVenueWayfindDataFailed() override { ++failures_; }
  int calls() const { return calls_; }
  int failures() const { return failures_; }

 private:
  std::atomic<int> calls_ = 0;
  std::atomic<int> failures_ = 0;
};

// Leaves no venue behind in the process.
class TernMultiActiveVenuesTest : public testing::Test {
 protected:
  ~TernMultiActiveVenuesTest() override {
    const ScopedBackgroundQueue scope(std::make_shared<RunNowQueue>());
    TernMultiActiveVenues::initWithActiveVenues({});
  }

  // Their graph is built at once, until the queue is replaced.
  Joined join(const TernMultiActiveVenues::Venues& venues) const {
    const ScopedBackgroundQueue scope(std::make_shared<RunNowQueue>());
    return TernMultiActiveVenues::initWithActiveVenues(venues, listener_);
  }

  const std::shared_ptr<Listener> listener_ = std::make_shared<Listener>();
  const Venue first_ = rowVenue(1, {{103, "2:201"}});
  const Venue second_ = rowVenue(2, {{201, "1:103"}, {203, "3:301"}});
  const Venue third_ = rowVenue(3, {{301, "2:203"}});
  const Venue alone_ = rowVenue(7);
};

TEST_F(TernMultiActiveVenuesTest, aRebuildChangesNothingOrAllWhateverAllocationFails) {
  CapturedLog log;
  const auto joined = join({first_, second_, third_});
  const ScopedBackgroundQueue atOnce(std::make_shared<RunNowQueue>());
  const auto connections = joined->venueConnections();
  auto grid = joined->globalASGrid();
  int told = 0;
  bool wasBuilt = false;
  std::pair<int*, bool*> record{&told, &wasBuilt};
  const int failed = forFailingAllocations(
      FailingAllocation::Reach::thread,
      [&] {
        joined->updateMultiVenueWayfindDataWithCompletion([&record](bool isBuilt) {
          ++*record.first;
          *record.second = isBuilt;
        });
      },
      [&] {
        ASSERT_EQ(std::exchange(told, 0), 1);
        ASSERT_EQ(joined->globalASGrid() != grid, wasBuilt);
        ASSERT_EQ(joined->venueConnections(), connections);
        ASSERT_FALSE(
            joined->wayfind(waypointOf(*first_, 101), waypointOf(*second_, 203), 100).empty());
        grid = joined->globalASGrid();
        log.take();
      });
  EXPECT_GT(failed, 60);
  EXPECT_EQ(listener_->calls(), 1) << "when they were joined";
  {
    const FailingAllocation every(0, FailingAllocation::Reach::thread,
                                  FailingAllocation::Times::always);
    joined->updateActiveVenues({});
  }
  EXPECT_EQ(listener_->failures(), 1);
  log.take();
}

// The ids of its waypoints, segments apart: "101 102 | 201".
std::string idsOf(const TernRoute& route) {
  std::string text;
  for (const TernPathPerFloor& segment : route) {
    if (!text.empty()) text += " |";
    for (const TernASNode& node : segment.points) {
      text += (text.empty() ? "" : " ") + std::to_string(node.nodeId());
    }
  }
  return text;
}

std::string route(const Joined& venues, const Venue& from, std::int64_t start, const Venue& to,
                  std::int64_t end) {
  return idsOf(venues->wayfind(waypointOf(*from, start), waypointOf(*to, end), 100));
}

// "1>2 1>3": every pair of the table.
std::string pairsOf(const TernMultiActiveVenues::Connections& table) {
  std::string pairs;
  for (const auto& [venue, reached] : table) {
    for (const auto& [other, mark] : reached) {
      EXPECT_EQ(mark, "abc");
      pairs += (pairs.empty() ? "" : " ") + venue + ">" + other;
    }
  }
  return pairs;
}

TEST_F(TernMultiActiveVenuesTest, exitsThatNameEachOtherConnectBothWays) {
  const Joined venues = join({first_, second_});
  EXPECT_EQ(pairsOf(venues->venueConnections()), "1>2 2>1");
  EXPECT_EQ(route(venues, first_, 101, second_, 202), "101 102 103 | 201 202");
  EXPECT_EQ(route(venues, second_, 202, first_, 102), "202 201 | 103 102");
  EXPECT_EQ(listener_->calls(), 1);
}

TEST_F(TernMultiActiveVenuesTest, anExitIntoAVenueThatIsNotThereConnectsNothing) {
  const Joined venues = join({first_, third_});
  EXPECT_EQ(pairsOf(venues->venueConnections()), "");
  EXPECT_EQ(venues->venueConnections().size(), 2U) << "each has its set, though";
  EXPECT_EQ(route(venues, first_, 101, third_, 302), "");
}

TEST_F(TernMultiActiveVenuesTest, venuesAreConnectedThroughAThird) {
  const Joined venues = join({first_, second_, third_});
  EXPECT_TRUE(venues->venueConnections().at("1").contains("3"));
  EXPECT_EQ(route(venues, first_, 102, third_, 302), "102 103 | 201 202 203 | 301 302");
}

TEST_F(TernMultiActiveVenuesTest, anExitWithoutAWayBackLeadsOneWay) {
  const Venue noWayBack = rowVenue(2);
  const Joined venues = join({first_, noWayBack});
  EXPECT_EQ(pairsOf(venues->venueConnections()), "1>2");
  EXPECT_EQ(route(venues, first_, 102, noWayBack, 202), "102 103 | 201 202");
  EXPECT_EQ(route(venues, noWayBack, 202, first_, 102), "");
}

TEST_F(TernMultiActiveVenuesTest, aRouteInsideAVenueWithoutExitsIsFound) {
  const Joined venues = join({alone_, first_});
  EXPECT_EQ(route(venues, alone_, 701, alone_, 703), "701 702 703");
}

TEST_F(TernMultiActiveVenuesTest, waypointsOfNoActiveVenueAreSearchedAllTheSame) {
  const Joined venues = join({alone_});
  const auto queue = std::make_shared<OnDemandQueue>();
  const ScopedBackgroundQueue scope(queue);
  venues->destroyActiveVenue({alone_});
  EXPECT_EQ(route(venues, alone_, 701, alone_, 703), "701 702 703") << "in the old graph";
  queue->runAll();
  EXPECT_EQ(route(venues, alone_, 701, alone_, 703), "");
}

TEST_F(TernMultiActiveVenuesTest, distancesAreMetresAndNeverMillimetres) {
  const Joined venues = join({first_, second_});
  const TernRoute found = venues->wayfind(waypointOf(*first_, 101), waypointOf(*second_, 202), 100);
  ASSERT_EQ(found.size(), 2U);
  for (const TernPathPerFloor& segment : found) EXPECT_EQ(segment.mmDistance, 0);
  EXPECT_NEAR(found.front().pixelDistance, 2 * 111.3, 0.5) << "two thousandths of a degree";
  EXPECT_NEAR(found.front().mapPoints.front().x, 0.011, 1e-6) << "longitude";
  EXPECT_TRUE(venues->globalASGrid()->isMultiVenueLoaded());
}

TEST_F(TernMultiActiveVenuesTest, updatingWithAKnownIdChangesNothingButRebuilds) {
  const Joined venues = join({first_, second_});
  const auto before = venues->globalASGrid();
  const ScopedBackgroundQueue scope(std::make_shared<RunNowQueue>());
  venues->updateActiveVenues({rowVenue(2), nullptr});
  EXPECT_THAT(venues->activeVenues(), ElementsAre(first_, second_));
  EXPECT_EQ(venues->getVenueById(2), second_);
  EXPECT_NE(venues->globalASGrid(), before);
  EXPECT_EQ(listener_->calls(), 2);
}

TEST_F(TernMultiActiveVenuesTest, venuesComeAndGo) {
  const Joined venues = join({first_});
  const ScopedBackgroundQueue scope(std::make_shared<RunNowQueue>());
  venues->updateActiveVenues({second_});
  EXPECT_EQ(route(venues, first_, 101, second_, 202), "101 102 103 | 201 202");
  venues->destroyActiveVenue({first_});
  EXPECT_EQ(venues->getVenueById(1), nullptr);
  EXPECT_EQ(pairsOf(venues->venueConnections()), "");
  venues->destroyAllActiveVenues();
  EXPECT_THAT(venues->activeVenues(), IsEmpty());
  EXPECT_THAT(venues->dictOfActiveVenues(), IsEmpty());
  EXPECT_EQ(venues->globalASGrid()->nodeCount(), 0U);
  EXPECT_EQ(listener_->calls(), 4);
}

TEST_F(TernMultiActiveVenuesTest, exitWaypointsAreThoseNamedExactlyExit) {
  const Venue marked = rowVenue(4, {{401, "Exit"}, {402, "exit"}, {403, "Exit:5"}});
  const Joined venues = join({marked, first_});
  EXPECT_THAT(venues->getExitWayPoints({9, 4, 1}), ElementsAre(waypointOf(*marked, 401)));
  EXPECT_THAT(TernMultiActiveVenues::getAllConnectedWaypoints(marked),
              ElementsAre(waypointOf(*marked, 403)));
  EXPECT_THAT(TernMultiActiveVenues::getAllConnectedWaypoints(nullptr), IsEmpty());
}

TEST_F(TernMultiActiveVenuesTest, venuesAreFoundByMapAndByName) {
  const Joined venues = join({first_, second_});
  EXPECT_EQ(venues->getVenueByMapId(20), second_);
  EXPECT_EQ(venues->getVenueByMapId(30), nullptr);
  EXPECT_THAT(venues->getVenueByName("Venue 1"), ElementsAre(first_));
  EXPECT_THAT(venues->getVenueByName("venue 1"), IsEmpty());
  first_->name = Value();
  EXPECT_THAT(venues->getVenueByName(""), IsEmpty()) << "which has no name";
  first_->name = "";
  EXPECT_THAT(venues->getVenueByName(""), ElementsAre(first_));
}

TEST_F(TernMultiActiveVenuesTest, beforeTheFirstRebuildRoutesAreEmptyAndThatIsLogged) {
  CapturedLog log;
  const auto queue = std::make_shared<OnDemandQueue>();
  const ScopedBackgroundQueue scope(queue);
  const Joined venues = TernMultiActiveVenues::initWithActiveVenues({alone_, third_}, listener_);
  EXPECT_EQ(venues->globalASGrid(), nullptr);
  EXPECT_EQ(route(venues, alone_, 701, third_, 302), "");
  EXPECT_THAT(log.take(), ElementsAre(notBuilt));
  EXPECT_EQ(route(venues, alone_, 701, alone_, 703), "");
  EXPECT_THAT(log.take(), ElementsAre(notBuilt, testing::HasSubstr("wayfindDataLoaded")))
      << "in one venue the search is asked, too";
  queue->runAll();
  EXPECT_EQ(route(venues, alone_, 701, alone_, 703), "701 702 703");
  EXPECT_EQ(listener_->calls(), 1);
  EXPECT_THAT(venues->wayfind(nullptr, waypointOf(*alone_, 701), 0), IsEmpty());
}

TEST_F(TernMultiActiveVenuesTest, theListAndTheTableAreThoseOfTheProcess) {
  const Joined venues = join({first_, second_});
  const Joined others = join({alone_});
  EXPECT_THAT(venues->activeVenues(), ElementsAre(alone_));
  EXPECT_EQ(venues->venueConnections(), others->venueConnections());
  EXPECT_EQ(venues->getVenueById(1), first_) << "the map is each object's own";
  venues->groupConnectedVenues();
  EXPECT_EQ(others->venueConnections().size(), 1U);
}

TEST_F(TernMultiActiveVenuesTest, theSameVenueTwiceIsReadOnce) {
  const Joined venues = join({alone_, nullptr, alone_});
  EXPECT_EQ(route(venues, alone_, 701, alone_, 703), "701 702 703");
}

TEST_F(TernMultiActiveVenuesTest, aRebuildUnderWayKeepsTheObjectAndNotTheDelegate) {
  const auto queue = std::make_shared<OnDemandQueue>();
  const ScopedBackgroundQueue scope(queue);
  auto listener = std::make_shared<Listener>();
  Joined venues = TernMultiActiveVenues::initWithActiveVenues({alone_}, listener);
  const std::weak_ptr<TernMultiActiveVenues> watched = venues;
  bool isBuilt = false;
  venues->updateMultiVenueWayfindDataWithCompletion([&](bool built) { isBuilt = built; });
  venues->updateMultiVenueWayfindDataWithCompletion({});
  listener.reset();
  venues.reset();
  EXPECT_FALSE(watched.expired());
  queue->runAll();
  EXPECT_TRUE(isBuilt);
  EXPECT_TRUE(watched.expired());
}

class TernMultiActiveVenuesDamaged : public TernMultiActiveVenuesTest,
                                     public testing::WithParamInterface<const char*> {};

TEST_P(TernMultiActiveVenuesDamaged, exitsThatMakeNoSenseConnectNothing) {
  const Venue damaged = rowVenue(1, {{103, GetParam()}});
  const Joined venues = join({damaged, second_});
  EXPECT_EQ(pairsOf(venues->venueConnections()), "2>1");
  EXPECT_EQ(route(venues, damaged, 101, damaged, 103), "101 102 103");
  EXPECT_EQ(route(venues, damaged, 101, second_, 202), "");
}

INSTANTIATE_TEST_SUITE_P(ExternalIds, TernMultiActiveVenuesDamaged,
                         testing::Values("", "abc", ":", "::", "12:", ":201",
                                         "99999999999999999999:1", "-99999999999999999999:1",
                                         "two:201", "2", " 2:201"));

class TernMultiActiveVenuesLost : public TernMultiActiveVenuesTest,
                                  public testing::WithParamInterface<const char*> {};

TEST_P(TernMultiActiveVenuesLost, anExitToNoWaypointConnectsWithoutALink) {
  const Venue lost = rowVenue(1, {{103, GetParam()}});
  const Joined venues = join({lost, second_});
  EXPECT_EQ(pairsOf(venues->venueConnections()), "1>2 2>1");
  EXPECT_EQ(route(venues, lost, 101, second_, 202), "");
}

INSTANTIATE_TEST_SUITE_P(ExternalIds, TernMultiActiveVenuesLost,
                         testing::Values("2:", "2:abc", "2:99999999999999999999", "2:201:"));

// --- Several threads ---

TEST(TernMultiActiveVenuesConcurrent, venuesComeAndGoWhileRoutesAreFound) {
  const Venue first = rowVenue(1, {{103, "2:201"}});
  const Venue second = rowVenue(2, {{201, "1:103"}});
  const Venue alone = rowVenue(7);
  const auto listener = std::make_shared<Listener>();
  const Joined venues = TernMultiActiveVenues::initWithActiveVenues({first, second}, listener);
  venues->loadGridData();
  constexpr int rounds = 60;
  std::vector<std::thread> threads;
  threads.emplace_back([&] {
    for (int i = 0; i < rounds; ++i) venues->updateActiveVenues({alone});
  });
  threads.emplace_back([&] {
    for (int i = 0; i < rounds; ++i) venues->destroyActiveVenue({alone});
  });
  threads.emplace_back([&] {
    for (int i = 0; i < rounds; ++i) {
      venues->loadGridData();
      venues->groupConnectedVenues();
      venues->setDelegate(listener);
    }
  });
  threads.emplace_back([&] {
    for (int i = 0; i < rounds; ++i) {
      EXPECT_EQ(venues->getVenueByMapId(10), first);
      EXPECT_TRUE(venues->venueConnections().at("1").contains("2"));
    }
  });
  for (int i = 0; i < 4 * rounds; ++i) {
    EXPECT_EQ(route(venues, first, 101, second, 202), "101 102 103 | 201 202");
  }
  for (std::thread& thread : threads) thread.join();
  // Rebuilds under way hold the object.
  awaitUntil([&] { return venues.use_count() == 1; }, "the last rebuild");
  EXPECT_EQ(listener->calls(), 1 + 2 * rounds);
}

TEST(TernMultiActiveVenuesConcurrent, objectsMayGoWhileTheyAreRebuilt) {
  std::vector<std::weak_ptr<TernMultiActiveVenues>> watched;
  for (int i = 0; i < 40; ++i) {
    const Joined venues =
        TernMultiActiveVenues::initWithActiveVenues({rowVenue(1)}, std::make_shared<Listener>());
    watched.emplace_back(venues);
    venues->destroyAllActiveVenues();
  }
  for (const auto& venues : watched) {
    awaitUntil([&] { return venues.expired(); }, "the release of the venues");
  }
}

TEST(TernMultiActiveVenuesConcurrent, aVenueMayGrowWhileItIsJoined) {
  const Venue venue = rowVenue(1);
  const Joined venues = TernMultiActiveVenues::initWithActiveVenues({venue});
  for (std::int64_t id = 100; id < 160; ++id) {
    {
      const MutexLock lock(venue->recordsMutex());
      venue->maps->create(Value::map({{"id", id}}));
    }
    venues->updateActiveVenues({});
  }
  awaitUntil([&] { return venues.use_count() == 1; }, "the last rebuild");
  EXPECT_EQ(venues->globalASGrid()->mapFulls().size(), 61U);
}

}  // namespace
}  // namespace tern::test
