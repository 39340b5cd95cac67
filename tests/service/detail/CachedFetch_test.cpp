// Loads over real HTTP on loopback, from a service that goes wrong in every way it can.
#include "TernCoreKit/service/detail/CachedFetch.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <future>
#include <memory>
#include <optional>
#include <ostream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "TernCoreKit/model/collections/TernMapCollection.hpp"
#include "TernCoreKit/model/venue/TernActiveVenue.hpp"
#include "TernCoreKit/platform/Json.hpp"
#include "TernCoreKit/platform/Log.hpp"
#include "TernCoreKit/service/TernHub.hpp"
#include "tests/support/CapturedLog.hpp"
#include "tests/support/FailingAllocation.hpp"
#include "tests/support/FailingSystemCall.hpp"
#include "tests/support/JoiningThread.hpp"
#include "tests/support/LocalService.hpp"
#include "tests/support/LoopbackServer.hpp"
#include "tests/support/TemporaryFolder.hpp"
#include "tests/support/VenueFolders.hpp"
#include "tests/support/Waiting.hpp"

namespace tern {
namespace {

using test::httpAnswer;
using test::LocalService;
using testing::StartsWith;

constexpr std::string_view cachedVenue = R"({"id":1,"name":"cached","generatedAt":"T1"})";
constexpr std::string_view freshVenue = R"({"id":1,"name":"fresh","generatedAt":"T2"})";
constexpr const char* venueEntry =
    "Tern/cache/5.12.2/QRVS/api/customer/1/venue/1/full?v=4.12&locale=en-US&geojson=false/"
    "data.json";

// A venue and an error, as a load gave them.
struct Loaded {
  std::shared_ptr<TernActiveVenue> venue;
  std::optional<TernError> error;
};

// The local service over two floors, and an empty documents folder.
class Scene {
 public:
  explicit Scene(std::chrono::milliseconds stallTimeout = std::chrono::minutes(1)) {
    HttpSettings settings;
    settings.stallTimeout = stallTimeout;
    settings.mostBodyBytes = 1 << 20;
    setHttpTransport(makeHttpTransport(settings));
    setFileSystem(makeFileSystem(documents.path().string()));
  }
  ~Scene() {
    setHttpTransport(nullptr);
    setFileSystem(nullptr);
  }
  Scene(const Scene&) = delete;
  Scene& operator=(const Scene&) = delete;

  std::shared_ptr<TernHub> makeHub() const {
    return TernHub::initWithCustomerId(1, true, service.url(), LocalService::clientId,
                                       LocalService::clientSecret);
  }
  static Loaded loadVenue(TernHub& hub) {
    std::promise<Loaded> loaded;
    hub.populateVenueByVenueId(1, [&](auto venue, auto error) {
      loaded.set_value({std::move(venue), std::move(error)});
    });
    return test::await(loaded, "the venue");
  }

 private:
  struct Folder : test::TemporaryFolder {
    Folder() { test::writeTwoFloors(*this); }
  };

 public:
  const test::TemporaryFolder documents;
  const Folder venues;
  LocalService service{venues.path().string()};
};

// The fresh venue.
const std::string gzipped(
    "\x1f\x8b\x08\x00\x00\x00\x00\x00\x02\x03\xab\x56\xca\x4c\x51\xb2\x32\xd4\x51\xca\x4b\xcc"
    "\x4d\x55\xb2\x52\x4a\x2b\x4a\x2d\xce\x50\xd2\x51\x4a\x4f\xcd\x4b\x2d\x4a\x2c\x49\x4d\x71"
    "\x2c\x01\x8a\x86\x18\x29\xd5\x02\x00\x52\x94\x0d\x0d\x2a\x00\x00\x00",
    61);

std::string chunked(std::string_view body) {
  std::string bytes = "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n";
  for (const char byte : body) bytes += std::string("1\r\n") + byte + "\r\n";
  return bytes + "0\r\n\r\n";
}

std::string nestedName(int levels) {
  const auto count = static_cast<std::size_t>(levels);
  return R"({"id":1,"name":)" + std::string(count, '[') + std::string(count, ']') + "}";
}

// How the service answers the venue, and what becomes of it with and without a cached answer.
struct Case {
  const char* name;
  // Empty for a connection that closes without an answer.
  std::string reply;
  enum class Outcome { fresh, fallsBack, error } outcome;
  const char* code = "";
  const char* text = "";
};

void PrintTo(const Case& fault, std::ostream* out) { *out << fault.name; }

std::vector<Case> cases() {
  using enum Case::Outcome;
  const std::string cut = httpAnswer("200 OK", freshVenue);
  return {
      {"plain", httpAnswer("200 OK", freshVenue), fresh},
      {"chunked", chunked(freshVenue), fresh},
      {"gzip", httpAnswer("200 OK", gzipped, "Content-Encoding: gzip\r\n"), fresh},
      {"gzipCut",
       httpAnswer("200 OK", gzipped.substr(0, gzipped.size() - 8), "Content-Encoding: gzip\r\n"),
       error, "TN001", "The answer broke off"},
      {"redirect", httpAnswer("302 Found", "", "Location: /moved\r\nConnection: close\r\n"), fresh},
      {"redirectWithoutEnd",
       httpAnswer("302 Found", "", "Location: /round\r\nConnection: close\r\n"), error, "TN001",
       "Redirect refused"},
      {"notModified", "HTTP/1.1 304 Not Modified\r\n\r\n", fallsBack},
      {"notModifiedWithABody", "HTTP/1.1 304 Not Modified\r\n\r\n" + std::string(freshVenue),
       fallsBack},
      {"serverErrorWithText", httpAnswer("500 Oops", R"({"statusDesc":"broken"})"), fallsBack},
      {"serverErrorWithoutText", httpAnswer("500 Oops", "{}"), fallsBack},
      {"serverErrorWithoutJson", httpAnswer("500 Oops", "<html>"), fallsBack},
      {"closed", "", fallsBack},
      {"notHttp", "220 mail.example.com ESMTP\r\n", fallsBack},
      {"cut", cut.substr(0, cut.size() - 5), error, "TN001"},
      {"empty", httpAnswer("200 OK", ""), error, "TN001", "An error occured during "},
      {"huge", httpAnswer("200 OK", std::string(2 << 20, ' ')), error, "TN001"},
      {"noJson", httpAnswer("200 OK", "hello"), error, "TN001", "Error parsing JSON: "},
      {"list", httpAnswer("200 OK", "[1]"), error, "TN001"},
      {"deep", httpAnswer("200 OK", nestedName(100'000)), error, "TN001", "Error parsing JSON: "},
      {"invalidUtf8", httpAnswer("200 OK", "{\"name\":\"\xff\xfe\"}"), error, "TN001",
       "Error parsing JSON: "},
      {"unauthorized", httpAnswer("401 No", R"({"statusCode":401,"message":"m"})"), error, "TN002"},
      {"forbidden", httpAnswer("403 No", R"({"statusCode":403,"message":"m"})"), error, "TN008"},
      {"notFound", httpAnswer("404 No", R"({"statusCode":404,"message":"m"})"), error, "TN007"},
      {"notFoundAsHtml", httpAnswer("404 No", "<html>"), error, "TN001", "Error parsing JSON: "},
      {"unavailableAsHtml", httpAnswer("503 No", "<html>"), error, "TN001", "Error parsing JSON: "},
  };
}

class CachedFetch : public testing::TestWithParam<Case> {
 protected:
  CachedFetch() {
    scene_.service.fault("/venue/1/full", GetParam().reply, LocalService::Times::always);
    scene_.service.fault("/moved", httpAnswer("200 OK", freshVenue));
    scene_.service.fault("/round",
                         httpAnswer("302 Found", "", "Location: /round\r\nConnection: close\r\n"),
                         LocalService::Times::always);
  }

  Scene scene_;
};

TEST_P(CachedFetch, endsAsDescribedWithACachedAnswer) {
  scene_.documents.write(venueEntry, cachedVenue);
  const auto hub = scene_.makeHub();
  const Loaded loaded = Scene::loadVenue(*hub);
  const auto requests = scene_.service.takeRequests();
  EXPECT_EQ(requests.at(0).target, "/QRVS/api/auth/token");
  EXPECT_EQ(test::headerOf(requests.at(1), "If-Modified-Since"), "T1");
  switch (GetParam().outcome) {
    case Case::Outcome::fresh:
      EXPECT_EQ(loaded.venue->name.text(), "fresh");
      EXPECT_EQ(decodeJson(scene_.documents.read(venueEntry)).value["name"].text(), "fresh");
      return;
    case Case::Outcome::fallsBack:
      ASSERT_FALSE(loaded.error) << loaded.error->errorDescription;
      EXPECT_EQ(loaded.venue->name.text(), "cached");
      break;
    case Case::Outcome::error:
      EXPECT_EQ(loaded.venue, nullptr);
      ASSERT_TRUE(loaded.error);
      EXPECT_EQ(loaded.error->code, GetParam().code);
      EXPECT_THAT(loaded.error->errorDescription, StartsWith(GetParam().text));
  }
  EXPECT_EQ(scene_.documents.read(venueEntry), cachedVenue);
  hub->setAutoCache(false);
  EXPECT_EQ(Scene::loadVenue(*hub).venue->name.text(), "cached");
}

TEST_P(CachedFetch, endsAsDescribedWithoutACachedAnswer) {
  const auto hub = scene_.makeHub();
  const Loaded loaded = Scene::loadVenue(*hub);
  const bool isError = GetParam().outcome == Case::Outcome::error;
  ASSERT_EQ(loaded.error.has_value(), isError);
  EXPECT_EQ(loaded.venue == nullptr, isError);
  if (GetParam().outcome == Case::Outcome::fallsBack) {
    EXPECT_TRUE(loaded.venue->name.isAbsent());
  }
  EXPECT_EQ(scene_.documents.read(venueEntry).empty(), GetParam().outcome != Case::Outcome::fresh);
}

INSTANTIATE_TEST_SUITE_P(Answers, CachedFetch, testing::ValuesIn(cases()),
                         [](const auto& fault) { return fault.param.name; });

TEST(CachedFetchOverHttp, aServiceThatStaysSilentCountsAsGone) {
  Scene scene(std::chrono::milliseconds(100));
  scene.documents.write(venueEntry, cachedVenue);
  scene.service.delay("/venue/1/full", std::chrono::seconds(1));
  const Loaded loaded = Scene::loadVenue(*scene.makeHub());
  EXPECT_FALSE(loaded.error);
  EXPECT_EQ(loaded.venue->name.text(), "cached");
}

TEST(CachedFetchOverHttp, anAnswerOfAnotherHostIsHandedOnButNotKept) {
  test::CapturedLog log;
  test::LoopbackServer other([](const test::LoopbackServer::Request&) {
    return test::LoopbackServer::Reply{httpAnswer("200 OK", freshVenue)};
  });
  Scene scene;
  scene.documents.write(venueEntry, cachedVenue);
  scene.service.fault(
      "/venue/1/full",
      httpAnswer("302 Found", "", "Location: " + other.url() + "/\r\nConnection: close\r\n"));
  const Loaded loaded = Scene::loadVenue(*scene.makeHub());
  ASSERT_FALSE(loaded.error);
  EXPECT_EQ(loaded.venue->name.text(), "fresh");
  EXPECT_EQ(scene.documents.read(venueEntry), cachedVenue);
  EXPECT_THAT(log.take(),
              testing::ElementsAre("Tern SDK: an answer that came by way of another host is not "
                                   "cached: /QRVS/api/customer/1/venue/1/full?v=4.12&locale=en-US"
                                   "&geojson=false"));
}

TEST(CachedFetchOverHttp, aServiceThatIsGoneLeavesTheCachedAnswers) {
  Scene scene;
  scene.service.fault("/venue/1/full", httpAnswer("200 OK", freshVenue));
  const auto hub = scene.makeHub();
  const auto other = scene.makeHub();
  EXPECT_FALSE(Scene::loadVenue(*hub).error);
  scene.service.stop();
  for (const auto& still : {hub, other}) {
    const Loaded loaded = Scene::loadVenue(*still);
    ASSERT_FALSE(loaded.error);
    EXPECT_EQ(loaded.venue->name.text(), "fresh");
  }
}

// Loads over real threads and files, an answer each time.
class FailingLoads : public testing::Test {
 protected:
  FailingLoads() {
    setLogSink([](std::string_view) {});
    hub_ = scene_.makeHub();
  }
  ~FailingLoads() override { setLogSink({}); }

  void load() {
    ended_.times = 0;
    hub_->populateVenueWithDefaultBuildingByVenueId(
        1, [ended = &ended_](std::shared_ptr<TernActiveVenue> venue, const auto& error) {
          ended->venue = std::move(venue);
          ended->hasError = error.has_value();
          ++ended->times;
        });
    test::awaitUntil([&] { return ended_.times == 1; }, "the venue");
  }

  // An error, the venue, or the empty one of a service that is gone.
  void expectAnAnswerAndForgetIt() {
    ASSERT_TRUE(ended_.hasError || ended_.venue != nullptr);
    hub_->clearAllCache();
    hub_ = scene_.makeHub();
  }

  void expectTheVenueAgain() {
    load();
    EXPECT_FALSE(ended_.hasError);
    ASSERT_NE(ended_.venue, nullptr);
    EXPECT_GT(ended_.venue->maps->getCount(), 0U);
  }

 private:
  Scene scene_;
  std::shared_ptr<TernHub> hub_;
  struct Ended {
    std::atomic<int> times = 0;
    bool hasError = false;
    std::shared_ptr<TernActiveVenue> venue;
  } ended_;
};

using CachedFetchConcurrentFailing = FailingLoads;

TEST_F(CachedFetchConcurrentFailing, aLoadOverHttpEndsWhateverAllocationFails) {
  const int failed = test::forFailingAllocations(
      test::FailingAllocation::Reach::process, [this] { load(); },
      [this] { expectAnAnswerAndForgetIt(); });
  EXPECT_GT(failed, 60);
  expectTheVenueAgain();
}

TEST_F(CachedFetchConcurrentFailing, aLoadOverHttpEndsWhateverSystemCallFails) {
  const int failed = test::forFailingSystemCalls(
      test::FailingAllocation::Reach::process, [this] { load(); },
      [this] { expectAnAnswerAndForgetIt(); });
  EXPECT_GT(failed, 40);
  expectTheVenueAgain();
}

// Several hubs at once, each dropped while its loads and graphs are under way.
TEST(CachedFetchConcurrent, loadsRebuildsAndDestructionOverlap) {
  const Scene scene;
  class Delegate final : public TernHubDelegate {
   public:
    void wayfindDataLoaded() override { ++count; }
    std::atomic<int> count = 0;
  };
  const auto delegate = std::make_shared<Delegate>();
  constexpr int threadCount = 3;
  constexpr int loadsEach = 5;
  std::atomic<int> loads = 0;
  const auto work = [&] {
    for (int i = 0; i < loadsEach; ++i) {
      std::promise<std::shared_ptr<TernActiveVenue>> loaded;
      auto hub = scene.makeHub();
      hub->setDelegate(delegate);
      hub->populateVenueWithDefaultBuildingByVenueId(
          1, [&](std::shared_ptr<TernActiveVenue> venue, const std::optional<TernError>&) {
            loaded.set_value(std::move(venue));
          });
      // What is read meanwhile is the old or the new.
      EXPECT_EQ(hub->locale(), "en-US");
      static_cast<void>(hub->activeVenue());
      static_cast<void>(hub->temporaryCache());
      hub.reset();
      const auto venue = test::await(loaded, "the venue");
      loads += venue != nullptr ? 1 : 0;
      // A building comes into a venue whose graph is being built.
      std::promise<void> isAdded;
      scene.makeHub()->populateBuildingInVenue(venue, 1, [&](auto&&...) { isAdded.set_value(); });
      test::await(isAdded, "the building");
    }
  };
  {
    std::vector<test::JoiningThread> threads;
    for (int i = 0; i < threadCount; ++i) threads.emplace_back(work);
  }
  EXPECT_EQ(loads, threadCount * loadsEach);
}

}  // namespace
}  // namespace tern
