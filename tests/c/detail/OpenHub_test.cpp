// Hubs of the C interface, over a host that has a service, files and a log.
#include "TernCoreKit/c/detail/OpenHub.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <map>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "TernCoreKit/c/detail/Handles.hpp"
#include "tests/c/CTexts.hpp"
#include "tests/c/FakeHost.hpp"
#include "tests/support/CapturedLog.hpp"
#include "tests/support/FailingAllocation.hpp"
#include "tests/support/JoiningThread.hpp"
#include "tests/support/LocalService.hpp"
#include "tests/support/TemporaryFolder.hpp"
#include "tests/support/VenueFolders.hpp"
#include "tests/support/Waiting.hpp"

namespace tern {
namespace {

using test::CError;
using test::errorLine;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::StartsWith;

const char* const route = R"({"op":"route","from":1,"to":3})";

// What came of loads, each once.
class CLoads {
 public:
  ~CLoads() {
    for (tern_venue* venue : venues_) tern_venue_close(venue, nullptr);
  }

  static void takeVenue(void* context, tern_venue* venue, const char* error) {
    auto& self = *static_cast<CLoads*>(context);
    const std::lock_guard lock(self.mutex_);
    if (venue != nullptr) self.venues_.push_back(venue);
    self.results_.push_back(error != nullptr ? errorLine(error) : "loaded");
  }
  static void takeText(void* context, const char* text) {
    auto& self = *static_cast<CLoads*>(context);
    const std::lock_guard lock(self.mutex_);
    self.results_.push_back(errorLine(text));
  }

  // When there are so many.
  std::vector<std::string> await(std::size_t count) {
    test::awaitUntil([&] { return results().size() >= count; }, "loads");
    return results();
  }
  std::vector<std::string> results() {
    const std::lock_guard lock(mutex_);
    return results_;
  }
  tern_venue* venue() {
    const std::lock_guard lock(mutex_);
    return venues_.at(0);
  }

 private:
  std::mutex mutex_;
  std::vector<std::string> results_;
  std::vector<tern_venue*> venues_;
};

class COpenHub : public testing::Test {
 protected:
  COpenHub() {
    host_.documents = test::twoFloorsDocuments();
    host_.settle();
  }
  tern_hub* open() {
    tern_hub* const hub = tern_hub_open(test::fakeHubOptions, error_.out());
    EXPECT_NE(hub, nullptr) << error_.text();
    return hub;
  }
  std::string load(tern_hub* hub, const char* options = nullptr) {
    EXPECT_TRUE(tern_hub_load(hub, options, CLoads::takeVenue, &loads_, error_.out()))
        << error_.text();
    return loads_.await(++asked_).back();
  }

  // The first venue once more, as venue 2.
  void addSecondVenue() {
    for (const std::string part : {"full", "building/1/full"}) {
      host_.documents["venue/2/" + part] = host_.documents["venue/1/" + part];
    }
    std::string& text = host_.documents["venue/2/full"];
    text.replace(text.find("\"id\":1"), 6, "\"id\":2");
  }

  test::FakeHost host_;
  CLoads loads_;
  CError error_;
  std::size_t asked_ = 0;
};
using COpenHubConcurrentTest = COpenHub;

TEST_F(COpenHub, onlyVenueIsLoadedWithItsBuildings) {
  tern_hub* const hub = open();
  EXPECT_EQ(load(hub), "loaded");
  EXPECT_THAT(test::answerOf(loads_.venue(), route), StartsWith(R"({"route":[{"mapId":1,)"));
  EXPECT_TRUE(tern_hub_close(hub, nullptr));
  EXPECT_THAT(test::answerOf(loads_.venue(), route), StartsWith(R"({"route":[{"mapId":1,)"));
}

TEST_F(COpenHub, namedVenueIsLoadedWithoutTheList) {
  tern_hub* const hub = open();
  EXPECT_EQ(load(hub, R"({"venues":[1]})"), "loaded");
  const std::string customer = "GET https://h/QRVS/api/customer/1";
  const std::string query = "?v=4.12&locale=en-US&geojson=false";
  auto requests = host_.requests();
  std::erase(requests, "POST https://h/QRVS/api/auth/token");
  EXPECT_THAT(requests, ElementsAre(customer + "/venue/1/full" + query,
                                    customer + "/venue/1/building/1/full" + query));
  tern_hub_close(hub, nullptr);
}

TEST_F(COpenHub, venuesAreListed) {
  tern_hub* const hub = open();
  EXPECT_TRUE(tern_hub_list(hub, CLoads::takeText, &loads_, error_.out()));
  EXPECT_EQ(loads_.await(1).back(), R"({"venues":[{"id":1,"externalId":"v1","name":"drawn"}]})");
  tern_hub_close(hub, nullptr);
}

TEST_F(COpenHub, aCustomerMayHaveNoVenuesAndAnAnswerWithNeitherIsNoList) {
  const auto listOf = [this](std::string_view customer) {
    host_.documents["full"] = customer;
    tern_hub* const hub = open();
    EXPECT_TRUE(tern_hub_list(hub, CLoads::takeText, &loads_, error_.out()));
    const std::string told = loads_.await(++asked_).back();
    tern_hub_close(hub, nullptr);
    return told;
  };
  EXPECT_EQ(listOf(R"({"id":1})"), R"({"venues":[]})");
  EXPECT_EQ(listOf(R"({"venues":{"items":[{"id":1}]}})"),
            R"({"venues":[{"id":1,"externalId":"","name":""}]})");
  EXPECT_EQ(listOf("{}"), "TN001 https://h: the list of venues cannot be had");
}

TEST_F(COpenHub, whatIsNotThereIsAnError) {
  tern_hub* const hub = open();
  EXPECT_THAT(load(hub, R"({"venues":[9]})"), StartsWith("TN"));
  host_.documents["full"] = R"({"id":1,"venues":{"items":[{"id":1},{"id":2}]}})";
  EXPECT_EQ(load(hub), "TN006 name one of the venues 1, 2");
  host_.documents["venue/1/full"] = R"({"id":1})";
  EXPECT_EQ(load(hub, R"({"venues":[1]})"), "TN007 venue 1 of https://h: has no buildings");
  tern_hub_close(hub, nullptr);
}

TEST_F(COpenHub, wrongArgumentsBeginNoLoad) {
  tern_hub* const hub = open();
  EXPECT_FALSE(tern_hub_load(hub, "{}x", CLoads::takeVenue, &loads_, error_.out()));
  EXPECT_THAT(error_.line(), StartsWith("TN006 the options are not JSON"));
  EXPECT_FALSE(tern_hub_load(hub, nullptr, nullptr, nullptr, error_.out()));
  EXPECT_EQ(error_.line(), "TN006 the callback is NULL");
  EXPECT_FALSE(tern_hub_list(hub, nullptr, nullptr, error_.out()));
  EXPECT_EQ(error_.line(), "TN006 the callback is NULL");
  EXPECT_TRUE(tern_hub_close(hub, nullptr));
  EXPECT_FALSE(tern_hub_load(hub, nullptr, CLoads::takeVenue, &loads_, error_.out()));
  EXPECT_EQ(error_.line(), "TN006 the hub is closed, or never was one");
  EXPECT_TRUE(loads_.results().empty());
}

TEST_F(COpenHub, optionsOfAHubAreChecked) {
  const auto errorOf = [this](const std::string& options) {
    EXPECT_EQ(tern_hub_open(options.c_str(), error_.out()), nullptr);
    return error_.line();
  };
  const std::string begun = R"({"customerId":1,"host":"h","clientId":"c","clientSecret":"s")";
  EXPECT_EQ(errorOf("{}"), "TN006 \"customerId\" is missing");
  EXPECT_EQ(errorOf(R"({"customerId":"1"})"), "TN006 \"customerId\" must be a whole number");
  EXPECT_EQ(errorOf(R"({"customerId":1,"host":""})"), "TN006 \"host\" must be a text");
  EXPECT_EQ(errorOf(R"({"customerId":1,"host":"h"})"), "TN006 \"clientId\" is missing");
  EXPECT_EQ(errorOf(begun + R"(,"geoJSON":1})"), "TN006 \"geoJSON\" must be true or false");
  EXPECT_EQ(errorOf(begun + R"(,"locale":7})"), "TN006 \"locale\" must be a text");
  EXPECT_EQ(errorOf(begun + R"(,"hots":"h"})"), "TN006 \"hots\" is no option");
}

TEST_F(COpenHub, whatWasLoadedIsKeptInTheHostsFiles) {
  tern_hub* hub = open();
  EXPECT_EQ(load(hub), "loaded");
  tern_hub_close(hub, nullptr);
  EXPECT_EQ(host_.files().size(), 3U);
  EXPECT_TRUE(host_.files().begin()->first.starts_with("Tern/cache/5.12.2/QRVS/api/customer/1/"));
}

TEST_F(COpenHub, withoutTheServiceTheHostsFilesAnswer) {
  for (auto& [path, text] : host_.documents) text.insert(1, R"("generatedAt":"T1",)");
  tern_hub* hub = open();
  EXPECT_EQ(load(hub, R"({"venues":[1]})"), "loaded");
  tern_hub_close(hub, nullptr);
  host_.keepsWaiting = true;
  hub = open();
  EXPECT_TRUE(tern_hub_load(hub, R"({"venues":[1]})", CLoads::takeVenue, &loads_, nullptr));
  for (std::size_t i = 1; i <= 2; ++i) {
    test::awaitUntil([&] { return host_.waiting().size() == i; }, "a request");
    tern_http_response response{};
    response.size = sizeof response;
    response.error = "no network";
    EXPECT_TRUE(tern_http_complete(host_.waiting().back(), &response, nullptr));
  }
  EXPECT_EQ(loads_.await(2).back(), "loaded");
  tern_hub_close(hub, nullptr);
}

TEST_F(COpenHub, aHostThatDoesNotWriteLoadsAllTheSame) {
  host_.refusesFiles = true;
  tern_hub* const hub = open();
  EXPECT_EQ(load(hub), "loaded");
  EXPECT_THAT(host_.lines(), testing::Contains(HasSubstr("the host did not write")));
  tern_hub_close(hub, nullptr);
}

TEST_F(COpenHub, aServiceThatIsGoneIsNamed) {
  host_.keepsWaiting = true;
  tern_hub* const hub = open();
  EXPECT_TRUE(tern_hub_load(hub, R"({"venues":[1]})", CLoads::takeVenue, &loads_, nullptr));
  test::awaitUntil([&] { return host_.waiting().size() == 1; }, "a request");
  tern_http_response response{};
  response.size = sizeof response;
  response.error = "no network";
  EXPECT_TRUE(tern_http_complete(host_.waiting().back(), &response, nullptr));
  EXPECT_EQ(loads_.await(1).back(), "TN001 https://h: venue 1 cannot be had: no network");
  tern_hub_close(hub, nullptr);
}

TEST_F(COpenHub, closingEndsWhatIsUnderWayAndWhatWaits) {
  host_.keepsWaiting = true;
  tern_hub* const hub = open();
  for (int i = 0; i < 3; ++i) {
    EXPECT_TRUE(tern_hub_load(hub, nullptr, CLoads::takeVenue, &loads_, nullptr));
  }
  test::awaitUntil([&] { return host_.waiting().size() == 1; }, "a request");
  EXPECT_TRUE(tern_hub_close(hub, error_.out()));
  EXPECT_THAT(loads_.results(), ElementsAre("TN008 the hub was closed", "TN008 the hub was closed",
                                            "TN008 the hub was closed"));
  EXPECT_EQ(host_.cancelled(), host_.waiting());
  // It comes too late, and goes nowhere.
  EXPECT_FALSE(test::completeWith(host_.waiting().front(), 200, host_.documents["full"]));
  EXPECT_EQ(host_.requests().back().substr(0, 3), "GET");
  EXPECT_EQ(loads_.results().size(), 3U);
}

TEST_F(COpenHub, loadsFollowEachOther) {
  tern_hub* const hub = open();
  for (int i = 0; i < 5; ++i) {
    EXPECT_TRUE(tern_hub_load(hub, nullptr, CLoads::takeVenue, &loads_, nullptr));
  }
  EXPECT_THAT(loads_.await(5), testing::Each("loaded"));
  tern_hub_close(hub, nullptr);
}

TEST_F(COpenHub, aCallbackMayLoadAndClose) {
  struct Context {
    tern_hub* hub;
    CLoads& loads;
  } context{open(), loads_};
  EXPECT_TRUE(tern_hub_load(
      context.hub, nullptr,
      [](void* word, tern_venue* venue, const char*) {
        auto& own = *static_cast<Context*>(word);
        EXPECT_TRUE(tern_venue_close(venue, nullptr));
        EXPECT_TRUE(tern_hub_load(own.hub, nullptr, CLoads::takeVenue, &own.loads, nullptr));
        EXPECT_TRUE(tern_hub_close(own.hub, nullptr));
      },
      &context, nullptr));
  EXPECT_EQ(loads_.await(1).back(), "TN008 the hub was closed");
}

TEST_F(COpenHub, severalVenuesAreJoined) {
  addSecondVenue();
  tern_hub* const hub = open();
  ASSERT_EQ(load(hub, R"({"venues":[1,2]})"), "loaded");
  EXPECT_THAT(test::answerOf(loads_.venue(), R"({"op":"center"})"), HasSubstr("venue"));
  EXPECT_THAT(test::answerOf(loads_.venue(), R"({"op":"neighbors","node":1,"venue":2})"),
              StartsWith(R"({"neighbors":[{"id":2,)"));
  EXPECT_EQ(load(hub, R"({"venues":[2,1]})"),
            "TN006 joined venues are open already; close them first");
  tern_hub_close(hub, nullptr);
}

// The library's own HTTP and files.
TEST(COpenHubOfTheLibrary, loadsFromAServiceIntoAFolder) {
  test::TemporaryFolder folder;
  test::TemporaryFolder cache;
  test::writeTwoFloors(folder);
  const test::LocalService service(folder.at(""));
  CLoads loads;
  CError error;
  const std::string options = R"({"host":")" + service.url() + R"(","customerId":1,"clientId":")" +
                              service.clientId + R"(","clientSecret":")" + service.clientSecret +
                              R"(","cacheFolder":")" + cache.at("") + R"("})";
  tern_hub* const hub = tern_hub_open(options.c_str(), error.out());
  ASSERT_NE(hub, nullptr) << error.text();
  EXPECT_TRUE(tern_hub_load(hub, nullptr, CLoads::takeVenue, &loads, nullptr));
  EXPECT_THAT(loads.await(1), ElementsAre("loaded"));
  EXPECT_TRUE(std::filesystem::exists(cache.at("Tern/cache/5.12.2/QRVS/api/customer/1")));
  EXPECT_TRUE(tern_hub_close(hub, nullptr));
}

TEST_F(COpenHubConcurrentTest, hubsAreClosedWhileTheyLoad) {
  std::atomic<int> calls = 0;
  const auto count = [](void* word, tern_venue* venue, const char*) {
    tern_venue_close(venue, nullptr);
    ++*static_cast<std::atomic<int>*>(word);
  };
  int begun = 0;
  for (int round = 0; round < 10; ++round) {
    tern_hub* const hub = open();
    std::atomic<int> loads = 0;
    {
      test::JoiningThread asking([&] {
        while (tern_hub_load(hub, nullptr, count, &calls, nullptr)) ++loads;
      });
      test::awaitUntil([&] { return loads >= 2; }, "loads that began");
      EXPECT_TRUE(tern_hub_close(hub, nullptr));
    }
    begun += loads;
  }
  test::awaitUntil([&] { return calls == begun; }, "the callbacks");
}

TEST_F(COpenHubConcurrentTest, joiningThatIsBrokenOffLeavesRoomForOthers) {
  addSecondVenue();
  const char* const both = R"({"venues":[1,2]})";
  for (std::size_t round = 1; round <= 10; ++round) {
    tern_hub* const hub = open();
    CLoads loads;
    EXPECT_TRUE(tern_hub_load(hub, both, CLoads::takeVenue, &loads, nullptr));
    EXPECT_TRUE(tern_hub_close(hub, nullptr));
    loads.await(1);
  }
  tern_hub* const hub = open();
  test::awaitUntil([&] { return load(hub, both) == "loaded"; }, "the end of what was broken off");
  EXPECT_THAT(test::answerOf(loads_.venue(), R"({"op":"center","venue":1})"),
              StartsWith(R"({"point":)"));
  tern_hub_close(hub, nullptr);
}

TEST_F(COpenHubConcurrentTest, answersComeFromAThreadOfTheHost) {
  host_.keepsWaiting = true;
  tern_hub* const hub = open();
  EXPECT_TRUE(tern_hub_load(hub, R"({"venues":[1]})", CLoads::takeVenue, &loads_, nullptr));
  test::JoiningThread service([&] {
    for (const char* path : {"venue/1/full", "venue/1/building/1/full"}) {
      const std::size_t before = host_.waiting().size();
      test::awaitUntil([&] { return host_.waiting().size() > 0; }, "a request");
      test::awaitUntil(
          [&] { return test::completeWith(host_.waiting().back(), 200, host_.documents.at(path)); },
          "a request that waits after " + std::to_string(before));
    }
  });
  EXPECT_THAT(loads_.await(1), ElementsAre("loaded"));
  tern_hub_close(hub, nullptr);
}

}  // namespace
}  // namespace tern
