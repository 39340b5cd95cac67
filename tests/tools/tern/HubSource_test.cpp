#include "tools/tern/HubSource.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "TernCoreKit/model/collections/TernBuildingCollection.hpp"
#include "TernCoreKit/wayfinding/TernASGrid.hpp"
#include "tests/support/CapturedLog.hpp"
#include "tests/support/LocalService.hpp"
#include "tests/support/LoopbackServer.hpp"
#include "tests/support/TemporaryFolder.hpp"

namespace tern::command {
namespace {

using test::httpAnswer;
using test::LocalService;
using testing::Contains;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

const std::string token = "POST /QRVS/api/auth/token";
const std::string query = "?v=4.12&locale=en-US&geojson=false";

std::string get(const std::string& path) { return "GET /QRVS/api/customer/1" + path + query; }

class HubSourceTest : public testing::Test {
 protected:
  HubSourceTest() : service_(written(folder_)) {
    folder_.write("venue/1/full.json", R"({"id":1,"name":"Plaza","generatedAt":7,
        "pathTypes":{"items":[]},"buildings":{"items":[{"id":4},{"id":3}]}})");
    for (const char* const id : {"3", "4"}) {
      folder_.write(std::string("venue/1/building/") + id + "/full.json", buildingDocument(id));
    }
    options_.host = service_.url();
    options_.customer = 1;
    options_.clientId = LocalService::clientId;
    options_.clientSecret = LocalService::clientSecret;
  }

  static std::string written(const test::TemporaryFolder& folder) {
    folder.write("full.json", R"({"id":1,"generatedAt":7,"venues":{"items":[
        {"id":1,"externalId":"a","name":"Plaza"}]}})");
    return folder.path();
  }
  // One floor with two waypoints and the way between them.
  static std::string buildingDocument(const std::string& id) {
    return R"({"id":)" + id + R"(,"generatedAt":7,"floors":{"items":[{"id":)" + id +
           R"(,"level":0,"map":{"id":)" + id + R"(,"waypoints":{"items":[{"id":)" + id +
           R"(1,"mapId":)" + id + R"(,"coordinates":[0,0]},{"id":)" + id + R"(2,"mapId":)" + id +
           R"(,"coordinates":[3,4]}]},"paths":{"items":[{"id":1,"waypointIds":[)" + id + "1," + id +
           R"(2]}]}}}]}})";
  }

  // A source of its own for each load, as each run of the command has.
  Loaded<TernVenueCollection> readVenues() {
    HubSource service(options_, cache_.at(""), STDERR_FILENO);
    auto venues = service.readVenues();
    remark_ = service.remark();
    return venues;
  }
  Loaded<TernActiveVenue> load(std::optional<std::int64_t> venue = 1,
                               std::optional<std::int64_t> building = std::nullopt) {
    HubSource service(options_, cache_.at(""), STDERR_FILENO);
    auto loaded = service.loadVenue(venue, building);
    remark_ = service.remark();
    return loaded;
  }
  std::size_t linksOf(const Loaded<TernActiveVenue>& loaded) {
    const auto* venue = std::get_if<std::shared_ptr<TernActiveVenue>>(&loaded);
    if (venue == nullptr) {
      ADD_FAILURE() << std::get<Failure>(loaded).sentence;
      return 0;
    }
    return (*venue)->globalASGrid()->linkCount();
  }
  template <class T>
  static std::string failureOf(const Loaded<T>& loaded) {
    const auto* failure = std::get_if<Failure>(&loaded);
    if (failure == nullptr) return "no failure";
    EXPECT_EQ(failure->status, ExitStatus::notLoaded);
    EXPECT_THAT(failure->sentence, Not(HasSubstr(LocalService::clientSecret)));
    return failure->sentence;
  }

  test::CapturedLog log_;
  test::TemporaryFolder folder_;
  test::TemporaryFolder cache_;
  LocalService service_;
  HostOptions options_;
  std::string remark_;
};

TEST_F(HubSourceTest, venuesAskForTheCustomerOnly) {
  const auto venues = readVenues();
  EXPECT_EQ(std::get<std::shared_ptr<TernVenueCollection>>(venues)->getCount(), 1U);
  EXPECT_THAT(service_.takeTargets(), ElementsAre(token, get("/full")));
  EXPECT_EQ(remark_, "");
}

TEST_F(HubSourceTest, namedVenueIsAskedForWithItsBuildingsInOrder) {
  EXPECT_EQ(linksOf(load()), 4U);
  EXPECT_THAT(service_.takeTargets(),
              ElementsAre(token, get("/venue/1/full"), get("/venue/1/building/3/full"),
                          get("/venue/1/building/4/full")));
}

TEST_F(HubSourceTest, onlyVenueIsFoundInTheCustomersDocument) {
  EXPECT_EQ(linksOf(load(std::nullopt, 4)), 2U);
  EXPECT_THAT(service_.takeTargets(), ElementsAre(token, get("/full"), get("/venue/1/full"),
                                                  get("/venue/1/building/4/full")));
}

TEST_F(HubSourceTest, localeAndGeoJsonAreAskedFor) {
  options_.locale = "de-AT";
  options_.geoJson = true;
  readVenues();
  EXPECT_THAT(service_.takeTargets().back(), EndsWith("?v=4.12&locale=de-AT&geojson=true"));
}

TEST_F(HubSourceTest, cachedDocumentsAreAskedForByTheirStamps) {
  load();
  service_.takeRequests();
  EXPECT_EQ(linksOf(load()), 4U);
  const auto requests = service_.takeRequests();
  ASSERT_EQ(requests.size(), 4U);
  for (std::size_t i = 1; i < requests.size(); ++i) {
    EXPECT_EQ(test::headerOf(requests[i], "If-Modified-Since"), "7");
  }
  EXPECT_EQ(remark_, "");
}

TEST_F(HubSourceTest, newDocumentReplacesTheCachedOne) {
  load();
  folder_.write("venue/1/full.json",
                R"({"id":1,"generatedAt":8,"buildings":{"items":[{"id":3}]}})");
  EXPECT_EQ(linksOf(load()), 2U);
}

TEST_F(HubSourceTest, warmCacheWithoutReloadMakesNoRequest) {
  load(std::nullopt);
  service_.takeRequests();
  options_.noReload = true;
  EXPECT_EQ(linksOf(load(std::nullopt)), 4U);
  EXPECT_THAT(service_.takeRequests(), IsEmpty());
  EXPECT_EQ(remark_, "");
}

TEST_F(HubSourceTest, serviceThatIsGoneLeavesTheCache) {
  load(std::nullopt);
  service_.stop();
  EXPECT_EQ(linksOf(load(std::nullopt)), 4U);
  EXPECT_THAT(remark_, HasSubstr(options_.host + ": "));
  EXPECT_THAT(remark_, EndsWith("; what is missing comes from the cache"));
}

TEST_F(HubSourceTest, serviceThatFailsLeavesTheCache) {
  load();
  service_.fault("/building/4/", httpAnswer("500 Internal Server Error", "{}"));
  EXPECT_EQ(linksOf(load()), 4U);
  EXPECT_THAT(remark_, HasSubstr("it answers with status 500"));
}

TEST_F(HubSourceTest, serviceThatStaysSilentLongerThanItMayLeavesTheCache) {
  load();
  options_.timeout = std::chrono::seconds(1);
  service_.delay("/building/4/", std::chrono::seconds(2));
  EXPECT_EQ(linksOf(load()), 4U);
  EXPECT_THAT(remark_, HasSubstr("timed out"));
}

TEST_F(HubSourceTest, serviceThatIsGoneAndWasNeverThereIsAFailure) {
  service_.stop();
  EXPECT_THAT(failureOf(load()), HasSubstr("Could not request access token"));
  EXPECT_THAT(failureOf(readVenues()), HasSubstr("Could not request access token"));
}

TEST_F(HubSourceTest, whatFailsAndIsNotCachedIsAFailure) {
  // Always, since a client may ask again when a connection that it has used before is closed.
  service_.fault("/venue/1/full", "", LocalService::Times::always);
  EXPECT_THAT(failureOf(load()), HasSubstr("the venue cannot be had: "));
  service_.clearFaults();
  const std::string failing = httpAnswer("500 Internal Server Error", "{}");
  service_.fault("/building/4/", failing);
  EXPECT_THAT(failureOf(load()), HasSubstr("building 4 cannot be had: it answers with status 500"));
  service_.fault("customer/1/full", failing);
  EXPECT_THAT(failureOf(readVenues()), HasSubstr("the list of venues cannot be had"));
  EXPECT_THAT(log_.take(), Contains("Error in parsing data"));
}

TEST_F(HubSourceTest, wrongSecretIsAFailure) {
  options_.clientSecret = "wrong-secret";
  const std::string failure = failureOf(load());
  EXPECT_THAT(failure, HasSubstr("Could not request access token: invalid_client"));
  EXPECT_THAT(failure, Not(HasSubstr("wrong-secret")));
}

TEST_F(HubSourceTest, whatTheServiceDoesNotHaveIsAFailure) {
  EXPECT_THAT(failureOf(load(9)), HasSubstr("/venue/9/full"));
  EXPECT_THAT(failureOf(load(1, 9)), HasSubstr("there is no building 9 in venue 1 of"));
  std::filesystem::remove(folder_.at("venue/1/building/4/full.json"));
  EXPECT_THAT(failureOf(load()), HasSubstr("/building/4/full"));
  options_.customer = 2;
  EXPECT_THAT(failureOf(readVenues()), Not(HasSubstr("no failure")));
}

TEST_F(HubSourceTest, venueWithoutBuildingsIsAFailure) {
  folder_.write("venue/1/full.json", R"({"id":1})");
  EXPECT_THAT(failureOf(load()), EndsWith("has no buildings"));
}

TEST_F(HubSourceTest, venueIsLoadedWithoutItsMapTemplate) {
  folder_.write("venue/1/full.json", R"({"id":1,"defaultMapTemplateId":"calm",
      "buildings":{"items":[{"id":3}]}})");
  EXPECT_EQ(linksOf(load()), 2U);
}

TEST_F(HubSourceTest, neitherSecretNorTokenIsKept) {
  load(std::nullopt);
  const auto requests = service_.takeRequests();
  const std::string bearer = test::headerOf(requests.back(), "Authorization").substr(7);
  ASSERT_EQ(bearer.size(), 48U);
  int files = 0;
  for (const auto& entry : std::filesystem::recursive_directory_iterator(cache_.path())) {
    if (!entry.is_regular_file()) continue;
    std::ifstream file(entry.path(), std::ios::binary);
    const std::string text{std::istreambuf_iterator<char>(file), {}};
    EXPECT_THAT(text, Not(HasSubstr(LocalService::clientSecret)));
    EXPECT_THAT(text, Not(HasSubstr(bearer)));
    ++files;
  }
  EXPECT_EQ(files, 4);
  for (const std::string& line : log_.take()) EXPECT_THAT(line, Not(HasSubstr(bearer)));
}

}  // namespace
}  // namespace tern::command
