// A hub over a local service that loads a venue building by building, while other threads ask that
// very venue everything that can be asked.
//
// TERN_TEST_SECONDS says for how long; scripts/threads gives it a minute under the thread
// sanitizer.

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <cstdlib>
#include <functional>
#include <future>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "TernCoreKit/model/collections/TernAmenityCollection.hpp"
#include "TernCoreKit/model/collections/TernDestinationCollection.hpp"
#include "TernCoreKit/model/collections/TernMapCollection.hpp"
#include "TernCoreKit/model/records/TernMap.hpp"
#include "TernCoreKit/model/records/TernWaypoint.hpp"
#include "TernCoreKit/model/venue/TernActiveVenue.hpp"
#include "TernCoreKit/optimisation/TernPOIOptimization.hpp"
#include "TernCoreKit/platform/Files.hpp"
#include "TernCoreKit/platform/Http.hpp"
#include "TernCoreKit/service/TernHub.hpp"
#include "TernCoreKit/spatial/TernNearestElement.hpp"
#include "TernCoreKit/wayfinding/TernASSearch.hpp"
#include "TernCoreKit/wayfinding/joined/TernMultiActiveVenues.hpp"
#include "tests/support/CapturedLog.hpp"
#include "tests/support/JoiningThread.hpp"
#include "tests/support/LocalService.hpp"
#include "tests/support/Paths.hpp"
#include "tests/support/TemporaryFolder.hpp"
#include "tests/support/Waiting.hpp"

namespace tern::test {
namespace {

using Venue = std::shared_ptr<TernActiveVenue>;

std::chrono::seconds howLong() {
  const char* seconds = std::getenv("TERN_TEST_SECONDS");
  return std::chrono::seconds(seconds != nullptr ? std::atoi(seconds) : 2);
}

// The venue that everybody asks; a new one takes its place from time to time.
class Stage {
 public:
  Venue venue() const {
    const std::lock_guard lock(mutex_);
    return venue_;
  }
  void show(Venue venue) {
    const std::lock_guard lock(mutex_);
    venue_.swap(venue);
  }

 private:
  mutable std::mutex mutex_;
  Venue venue_;
};

// Numbers that differ from call to call; which ones does not matter.
class Draw {
 public:
  explicit Draw(std::uint32_t seed) : state_(seed) {}
  std::size_t below(std::size_t limit) {
    state_ = state_ * 1664525U + 1013904223U;
    return limit == 0 ? 0 : (state_ >> 8U) % limit;
  }
  template <class T>
  T from(const std::vector<T>& list) {
    return list.empty() ? T() : list[below(list.size())];
  }

 private:
  std::uint32_t state_;
};

using Question = std::function<void(TernActiveVenue&, Draw&)>;

void askRoute(TernActiveVenue& venue, Draw& draw) {
  const auto waypoints = venue.maps->getAllWaypoints();
  const TernRoute route = venue.wayfind(draw.from(waypoints), draw.from(waypoints), 100);
  for (const TernPathPerFloor& segment : route) EXPECT_FALSE(segment.points.empty());
}

void askAlternatives(TernActiveVenue& venue, Draw& draw) {
  const auto waypoints = venue.maps->getAllWaypoints();
  venue.wayfind(draw.from(waypoints), draw.from(waypoints), {}, 100,
                [](const auto& best, const auto& others) { EXPECT_TRUE(best || !others); });
}

void askTour(TernActiveVenue& venue, Draw& draw) {
  const auto all = venue.destinations->getAll();
  const TernPOIOptimization::Destinations some{draw.from(all), draw.from(all), draw.from(all)};
  int calls = 0;
  venue.wayfindToMultipleDestinations(some, draw.from(venue.maps->getAllWaypoints()), 100,
                                      [&](const auto&, const auto&) { ++calls; });
  EXPECT_EQ(calls, 1);
}

void askNearest(TernActiveVenue& venue, Draw& draw) {
  const auto map = draw.from(venue.maps->getAll());
  const auto from = draw.from(venue.maps->getAllWaypoints());
  const auto toilet = draw.from(venue.amenities->getAll());
  if (toilet == nullptr) return;
  int calls = 0;
  venue.searchNearestElement(toilet, {10, 20}, map, [&](auto, auto, auto) { ++calls; });
  EXPECT_EQ(calls, 1);
  const auto nearest = venue.nearestElement();
  if (nearest == nullptr || map == nullptr) return;
  const auto found =
      nearest->another()->getNearestElementFrom(from, map->id.integer(), {toilet}, 1);
  EXPECT_TRUE(!found || found->waypoint != nullptr);
}

void askPlaces(TernActiveVenue& venue, Draw& draw) {
  const TernCoordinate centre = venue.getCenterCoordinates();
  TernUtils::convertPoint(centre, "EPSG:4326", "tern:local", &venue);
  const auto map = draw.from(venue.maps->getAll());
  const auto closest = TernActiveVenue::getClosestWaypointToCoordinateOnMap(map, {1, 2});
  TernASSearch search;
  search.maps = venue.maps;
  EXPECT_GE(search.convertIntoMMDistance(1, map != nullptr ? map->id.integer() : 0), 0);
  const auto some = venue.maps->getAllWaypoints();
  if (closest != nullptr) {
    venue.getClosestWaypointInArray({draw.from(some), draw.from(some)}, closest, 100);
  }
}

void askJoined(TernActiveVenue& venue, Draw& draw) {
  const auto joined = TernMultiActiveVenues::initWithActiveVenues({venue.shared_from_this()});
  const auto waypoints = venue.maps->getAllWaypoints();
  for (int i = 0; i < 3; ++i) {
    joined->wayfind(draw.from(waypoints), draw.from(waypoints), 100);
    joined->getExitWayPoints({venue.id.integer()});
    joined->updateActiveVenues({venue.shared_from_this()});
  }
  // Rebuilds wait in one queue: whoever asks for more before these are done makes it longer and
  // longer.
  auto isBuilt = std::make_shared<std::promise<void>>();
  joined->updateMultiVenueWayfindDataWithCompletion([isBuilt](bool) { isBuilt->set_value(); });
  await(*isBuilt, "the joined rebuilds");
  if (draw.below(4) == 0) joined->destroyAllActiveVenues();
}

void askRebuild(TernActiveVenue& venue, Draw&) {
  auto isBuilt = std::make_shared<std::promise<void>>();
  venue.updateWayfindDataWithCompletion([isBuilt](bool) { isBuilt->set_value(); });
  await(*isBuilt, "a rebuild");
}

class BusyHubConcurrent : public testing::Test {
 protected:
  BusyHubConcurrent() {
    setFileSystem(makeFileSystem(cache_.path().string()));
    setHttpTransport(makeHttpTransport());
    hub_ = TernHub::initCustomerWithDictionary(
        Value::map({{"customerId", 1},
                    {"host", service_.url()},
                    {"clientId", LocalService::clientId},
                    {"clientSecret", LocalService::clientSecret}}));
  }
  ~BusyHubConcurrent() override {
    hub_.reset();
    setHttpTransport(nullptr);
    setFileSystem(nullptr);
  }

  using Load = std::function<void(TernHub::VenueCompletion)>;
  static Venue waitFor(const Load& load) {
    auto loaded = std::make_shared<std::promise<Venue>>();
    auto once = std::make_shared<std::once_flag>();
    load([=](Venue venue, const std::optional<TernError>&) {
      std::call_once(*once, [&] { loaded->set_value(venue); });
    });
    return await(*loaded, "a load");
  }
  // A venue that is on the stage before its buildings are.
  void loadOnce() {
    const Venue venue =
        waitFor([&](auto completion) { hub_->populateVenueByVenueId(1, std::move(completion)); });
    ASSERT_NE(venue, nullptr);
    stage_.show(venue);
    for (const std::int64_t building : {1, 2, 1}) {
      waitFor([&](auto completion) {
        hub_->populateBuildingInVenue(venue, building, std::move(completion));
      });
    }
    ++loads_;
  }

  CapturedLog log_;
  TemporaryFolder cache_;
  LocalService service_{samplePath()};
  std::shared_ptr<TernHub> hub_;
  Stage stage_;
  int loads_ = 0;
};

TEST_F(BusyHubConcurrent, answersWhileItLoadsAndRebuildsAndJoins) {
  loadOnce();
  std::atomic<bool> isOver = false;
  std::vector<std::atomic<int>> asked(7);
  {
    std::vector<JoiningThread> threads;
    const Question questions[] = {askRoute,  askAlternatives, askTour,   askNearest,
                                  askPlaces, askJoined,       askRebuild};
    for (std::size_t i = 0; i < asked.size(); ++i) {
      threads.emplace_back([&, i, ask = questions[i]] {
        Draw draw(static_cast<std::uint32_t>(i + 1));
        do {
          const Venue venue = stage_.venue();
          ask(*venue, draw);
          ++asked[i];
        } while (!isOver);
      });
    }
    const auto end = std::chrono::steady_clock::now() + howLong();
    while (std::chrono::steady_clock::now() < end && !HasFatalFailure()) loadOnce();
    isOver = true;
  }
  TernMultiActiveVenues::initWithActiveVenues({});
  EXPECT_GT(loads_, 1);
  for (const auto& count : asked) EXPECT_GT(count, 0);
  log_.take();
}

}  // namespace
}  // namespace tern::test
