#include "TernCoreKit/service/TernHub.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <limits>
#include <memory>
#include <numeric>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "TernCoreKit/model/collections/TernBuildingCollection.hpp"
#include "TernCoreKit/model/collections/TernDestinationCollection.hpp"
#include "TernCoreKit/model/collections/TernFloorCollection.hpp"
#include "TernCoreKit/model/collections/TernLocaleCollection.hpp"
#include "TernCoreKit/model/collections/TernMapCollection.hpp"
#include "TernCoreKit/model/collections/TernVenueCollection.hpp"
#include "TernCoreKit/model/collections/VenueDestinationCollection.hpp"
#include "TernCoreKit/model/records/TernBuilding.hpp"
#include "TernCoreKit/model/records/TernLocale.hpp"
#include "TernCoreKit/model/records/TernVenue.hpp"
#include "TernCoreKit/model/venue/TernActiveVenue.hpp"
#include "TernCoreKit/platform/Json.hpp"
#include "TernCoreKit/platform/detail/common/Attempt.hpp"
#include "TernCoreKit/service/ServiceHost.hpp"
#include "TernCoreKit/wayfinding/joined/TernMultiActiveVenues.hpp"
#include "tests/support/DescriptorLimit.hpp"
#include "tests/support/FailingAllocation.hpp"
#include "tests/support/HubScene.hpp"
#include "tests/support/VenueFolders.hpp"

namespace tern {
namespace {

using test::HubScene;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

constexpr const char* customerAnswer =
    R"({"id":1,"name":"Harbour Halls","generatedAt":"T1","venues":{"items":[
      {"id":7,"name":"Hall"},{"id":8,"name":"Station"}]}})";
constexpr const char* venueAnswer =
    R"({"id":7,"name":"Hall","generatedAt":"T1","buildings":{"defaultId":3,"items":[
      {"id":2},{"id":3}]}})";
constexpr const char* localesAnswer =
    R"({"generatedAt":"T1","items":[{"id":1,"localeCode":"en-US"}]})";

// What a completion was called with, in order.
template <class Result>
struct Calls {
  std::vector<std::pair<Result, std::optional<TernError>>> list;

  auto record() {
    return [this](Result result, std::optional<TernError> error) {
      list.emplace_back(std::move(result), std::move(error));
    };
  }
  const Result& result() const { return list.at(0).first; }
  const std::optional<TernError>& error() const { return list.at(0).second; }
};

using VenueCalls = Calls<std::shared_ptr<TernActiveVenue>>;

struct ErrorCalls {
  std::vector<std::optional<TernError>> list;

  auto record() {
    return [this](std::optional<TernError> error) { list.push_back(std::move(error)); };
  }
  // The errors' codes, "" for none.
  std::vector<std::string> codes() const {
    std::vector<std::string> codes;
    for (const auto& error : list) codes.push_back(error ? error->code : "");
    return codes;
  }
};

class CountingDelegate final : public TernHubDelegate {
 public:
  void wayfindDataLoaded() override { ++count; }
  void wayfindDataFailed() override { ++failures; }
  int count = 0;
  int failures = 0;
};

std::string compact(const Value& value) { return encodeJson(value, JsonLayout::compact); }

// As the cache writes it.
std::string pretty(std::string text) {
  return encodeJson(decodeJson(std::move(text)).value, JsonLayout::rows);
}

class TernHub : public testing::Test {
 protected:
  VenueCalls loadVenue(std::int64_t id = 7) {
    VenueCalls calls;
    scene_.hub().populateVenueByVenueId(id, calls.record());
    return calls;
  }
  // Two floors of waypoints A to E in building 1 of venue 1.
  VenueCalls loadTwoFloors() {
    scene_.answers["/venue/1/full"] = HubScene::json(compact(test::twoFloorsVenueDocument()));
    scene_.answers["/venue/1/building/1/full"] =
        HubScene::json(compact(test::twoFloorsBuildingDocument()));
    VenueCalls calls;
    scene_.hub().populateVenueWithDefaultBuildingByVenueId(1, calls.record());
    return calls;
  }

  HubScene scene_;
};

// Construction

TEST_F(TernHub, takesItsOptions) {
  Value options = HubScene::options();
  options.set("locale", "de-DE");
  options.set("geoJSON", true);
  options.set("autoReloadCache", false);
  const auto hub = scene_.remakeHub(options);
  EXPECT_EQ(hub->customer(), Value(1));
  EXPECT_EQ(hub->hostURL(), HubScene::host);
  EXPECT_FALSE(hub->autoCache());
  EXPECT_EQ(hub->localesAPI(), "/QRVS/api/customer/1/locale/full?v=4.12&locale=de-DE&geojson=true");
}

TEST_F(TernHub, optionsHaveDefaults) {
  const auto hub = scene_.remakeHub(Value::map());
  EXPECT_TRUE(hub->customer().isAbsent());
  EXPECT_EQ(hub->hostURL(), "");
  EXPECT_TRUE(hub->autoCache());
  EXPECT_EQ(hub->locale(), "en-US");
  EXPECT_FALSE(hub->geoJSON());
  EXPECT_EQ(hub->auth(), nullptr);
  EXPECT_NE(hub->cache(), nullptr);
  EXPECT_EQ(hub->customerFullCallAPI(),
            "/QRVS/api/customer/(null)/full?v=4.12&locale=en-US&geojson=false");
}

TEST_F(TernHub, isMadeOfSingleValuesToo) {
  const auto hub = tern::TernHub::initWithCustomerId(4, false, "https://h", "me", "hush");
  EXPECT_EQ(hub->customer(), Value(4));
  EXPECT_FALSE(hub->autoCache());
  EXPECT_EQ(hub->client()->hostURL(), "https://h");
  EXPECT_EQ(hub->auth(), OAuthConnector::sharedInstance());
  EXPECT_EQ(hub->auth()->tokenRequestData()["client_secret"].text(), "hush");
}

TEST_F(TernHub, withoutAClientSecretHasNoConnectorAndItsLoadsNeverComplete) {
  Value options = Value::map({{"customerId", 1}, {"host", HubScene::host}, {"clientId", "me"}});
  scene_.remakeHub(options);
  EXPECT_EQ(scene_.hub().auth(), nullptr);
  EXPECT_THAT(loadVenue().list, IsEmpty());
  ErrorCalls errors;
  scene_.hub().populateCoreWithExternalIds("", errors.record());
  Calls<Value> answers;
  scene_.hub().getRequest("/a", answers.record());
  EXPECT_THAT(errors.list, IsEmpty());
  EXPECT_THAT(answers.list, IsEmpty());
  EXPECT_THAT(scene_.requests(), IsEmpty());
}

TEST_F(TernHub, namesEveryEndpoint) {
  auto& hub = scene_.hub();
  const std::string query = "?v=4.12&locale=en-US&geojson=false";
  TernActiveVenue venue;
  venue.id = 7;
  EXPECT_EQ(hub.customerFullCallAPI(), "/QRVS/api/customer/1/full" + query);
  EXPECT_EQ(hub.customerFullCallAPIWithExternalVenueIds("a,b"),
            "/QRVS/api/customer/1/full" + query + "&externalIds=a,b");
  EXPECT_EQ(hub.localesAPI(), "/QRVS/api/customer/1/locale/full" + query);
  EXPECT_EQ(hub.venueComponenentsAPIWithVenueID(7), "/QRVS/api/customer/1/venue/7/full" + query);
  EXPECT_EQ(hub.buildingAPIWithVenue(venue, 3),
            "/QRVS/api/customer/1/venue/7/building/3/full" + query);
  EXPECT_EQ(hub.destinationsComponenentsAPIWithVenueIDs("7,8"),
            "/QRVS/api/customer/1/destination/full?venueIds=7,8");
  EXPECT_EQ(tern::TernHub::getSDKVersion(), "5.12.2");
  EXPECT_EQ(tern::TernHub::getServerVersion(), "4.12");
}

// Customer

TEST_F(TernHub, loadsTheCustomersVenuesOnce) {
  scene_.answers["/full"] = HubScene::json(customerAnswer);
  Calls<std::vector<std::shared_ptr<TernVenue>>> calls;
  scene_.hub().getVenues(calls.record());
  scene_.hub().getVenues(calls.record());
  ASSERT_THAT(calls.list, SizeIs(2));
  for (const auto& [venues, error] : calls.list) {
    EXPECT_FALSE(error);
    ASSERT_THAT(venues, SizeIs(2));
    EXPECT_EQ(venues[1]->name.text(), "Station");
  }
  EXPECT_EQ(scene_.hub().name().text(), "Harbour Halls");
  EXPECT_EQ(scene_.hub().id(), Value(1));
  EXPECT_THAT(scene_.requests(), ElementsAre("token", "GET /full"));
  EXPECT_THAT(scene_.events(), ElementsAre("START /full", "SUCCESS /full"));
  EXPECT_EQ(scene_.cached("/full"), pretty(customerAnswer));
}

TEST_F(TernHub, asksForVenuesByTheirExternalIdsEachTime) {
  scene_.answers["/full"] = HubScene::json(customerAnswer);
  Calls<std::vector<std::shared_ptr<TernVenue>>> calls;
  scene_.hub().getVenuesWithExternalIds({"a", "b"}, calls.record());
  scene_.hub().getVenuesWithExternalIds({"a", "b"}, calls.record());
  ASSERT_THAT(calls.list, SizeIs(2));
  EXPECT_THAT(calls.result(), SizeIs(2));
  EXPECT_THAT(scene_.requests(), ElementsAre("token", "GET /full&externalIds=a,b",
                                             "GET /full&externalIds=a,b since T1"));
}

TEST_F(TernHub, reportsAMissingCustomerAndGoesOnAllTheSame) {
  scene_.otherwise = HubScene::json(customerAnswer);
  Value options = HubScene::options();
  options.set("customerId", nullptr);
  for (const auto& incomplete : {options, Value::map()}) {
    scene_.remakeHub(incomplete);
    ErrorCalls core;
    scene_.hub().populateCoreWithExternalIds("", core.record());
    ErrorCalls locales;
    scene_.hub().populateLocales(locales.record());
    const std::size_t calls = scene_.hub().auth() != nullptr ? 2 : 1;
    for (const auto& list : {core.list, locales.list}) {
      ASSERT_THAT(list, SizeIs(calls));
      EXPECT_EQ(list[0]->code, "TN006");
      EXPECT_EQ(list[0]->message, "Incorrect object type was passed");
    }
  }
}

TEST_F(TernHub, completionMayLetTheHubGo) {
  for (const auto& options : {Value::map(), HubScene::options()}) {
    auto hub = tern::TernHub::initCustomerWithDictionary(options);
    int calls = 0;
    const auto letGo = [&](auto&&...) {
      ++calls;
      hub = nullptr;
    };
    hub->populateCoreWithExternalIds("", letGo);
    EXPECT_EQ(calls, 1);
    hub = tern::TernHub::initCustomerWithDictionary(options);
    hub->populateLocales(letGo);
    EXPECT_EQ(calls, 2);
  }
}

TEST_F(TernHub, customerAnswerThatIsNoMapIsIncorrectJson) {
  scene_.answers["/full"] = HubScene::json("[1]");
  ErrorCalls calls;
  scene_.hub().populateCoreWithExternalIds("", calls.record());
  ASSERT_THAT(calls.list, SizeIs(1));
  EXPECT_EQ(calls.list[0]->code, "TN003");
  EXPECT_THAT(scene_.events(), ElementsAre("START /full",
                                           "FAILED /full TN003 Incorrect JSON Data "
                                           "| JSON is malformed."));
}

TEST_F(TernHub, customerAnswerWithAMessageIsNotFound) {
  scene_.answers["/full"] = HubScene::json(R"({"message":"x"})", 403);
  Calls<std::vector<std::shared_ptr<TernVenue>>> calls;
  scene_.hub().getVenues(calls.record());
  ASSERT_THAT(calls.list, SizeIs(1));
  EXPECT_THAT(calls.result(), IsEmpty());
  EXPECT_EQ(calls.error()->code, "TN007");
  EXPECT_EQ(calls.error()->errorDescription, "Data was not returned from server or local cache");
  EXPECT_EQ(scene_.cached("/full"), "");
}

TEST_F(TernHub, keepsTheVenuesThatAreLoadedWhenTheServiceIsGone) {
  scene_.answers["/full"] = HubScene::json(customerAnswer);
  ErrorCalls calls;
  scene_.hub().populateCoreWithExternalIds("", calls.record());
  const auto venues = scene_.hub().venues();
  scene_.answers.clear();
  scene_.events();
  scene_.hub().populateCoreWithExternalIds("", calls.record());
  EXPECT_THAT(calls.codes(), ElementsAre("", ""));
  EXPECT_EQ(scene_.hub().venues(), venues);
  EXPECT_TRUE(scene_.hub().temporaryCache().isAbsent());
  EXPECT_THAT(scene_.events(), ElementsAre("START /full"));
}

TEST_F(TernHub, takesTheCachedCustomerWhenNoneIsLoaded) {
  scene_.writeCache("/full", customerAnswer);
  ErrorCalls calls;
  scene_.hub().populateCoreWithExternalIds("", calls.record());
  EXPECT_THAT(calls.codes(), ElementsAre(""));
  EXPECT_EQ(scene_.hub().name().text(), "Harbour Halls");
  EXPECT_THAT(scene_.requests(), ElementsAre("token", "GET /full since T1"));
  EXPECT_THAT(scene_.events(), ElementsAre("START /full", "SUCCESS /full"));
}

TEST_F(TernHub, takesTheCachedCustomerInSilenceWhenReloadingIsOff) {
  scene_.writeCache("/full", customerAnswer);
  scene_.hub().setAutoCache(false);
  ErrorCalls calls;
  scene_.hub().populateCoreWithExternalIds("", calls.record());
  EXPECT_THAT(calls.codes(), ElementsAre(""));
  EXPECT_EQ(scene_.hub().venues()->getCount(), 2U);
  EXPECT_THAT(scene_.requests(), IsEmpty());
  EXPECT_THAT(scene_.events(), IsEmpty());
}

TEST_F(TernHub, validatingKeepsVenuesAndElseTakesTheCachedOnes) {
  scene_.writeCache("/full", customerAnswer);
  auto& hub = scene_.hub();
  ErrorCalls calls;
  for (int i = 0; i < 2; ++i) {
    hub.checkCachingWithEndPoint(hub.customerFullCallAPI(), [](auto&&...) {});
    const auto before = hub.venues();
    hub.validateExistingCoreForCacheWithEndpoint(hub.customerFullCallAPI(), calls.record());
    EXPECT_EQ(hub.venues()->getCount(), 2U);
    EXPECT_TRUE(before == nullptr || before == hub.venues());
  }
  EXPECT_THAT(calls.codes(), ElementsAre("", ""));
}

TEST_F(TernHub, customerDocumentSetsPlainFieldsByTheirNames) {
  auto& hub = scene_.hub();
  hub.initWithDictionary(decodeJson(R"({"id":9,"name":"n","locale":"de-DE","geoJSON":true,
      "autoCache":false,"hostURL":"https://other","cache":"x","auth":1,"unknown":2})")
                             .value);
  EXPECT_EQ(hub.id(), Value(9));
  EXPECT_EQ(hub.name().text(), "n");
  EXPECT_EQ(hub.localesAPI(), "/QRVS/api/customer/1/locale/full?v=4.12&locale=de-DE&geojson=true");
  EXPECT_FALSE(hub.autoCache());
  EXPECT_EQ(hub.hostURL(), HubScene::host);
  EXPECT_EQ(hub.venues()->getCount(), 0U);
  hub.setValue(1, "unknown");
  hub.initWithDictionary(decodeJson(R"({"locale":5,"geoJSON":"no"})").value);
  EXPECT_EQ(hub.locale(), "de-DE");
  EXPECT_TRUE(hub.geoJSON());
}

TEST_F(TernHub, customerDocumentSetsFieldsWithValuesOfTheirKindOnly) {
  auto& hub = scene_.hub();
  const Value name = hub.name();
  for (const char* document :
       {R"({"customer":{"x":1},"id":"9","name":7,"venuesDictionary":[1],"localeDictionary":"x"})",
        R"({"customer":"2","id":[9],"name":{},"venuesDictionary":5,"localeDictionary":null,
            "autoCache":"no"})"}) {
    hub.initWithDictionary(decodeJson(document).value);
    EXPECT_TRUE(hub.autoCache());
    EXPECT_EQ(hub.customer(), Value(1));
    EXPECT_TRUE(hub.id().isAbsent());
    EXPECT_EQ(hub.name(), name);
    EXPECT_TRUE(hub.venuesDictionary().isAbsent());
    EXPECT_TRUE(hub.localeDictionary().isAbsent());
  }
}

TEST_F(TernHub, customerDocumentSetsTheCustomerAndTheDictionaries) {
  auto& hub = scene_.hub();
  hub.initWithDictionary(
      decodeJson(R"({"customer":2,"venuesDictionary":{"a":1},"localeDictionary":{"b":1}})").value);
  EXPECT_EQ(hub.customer(), Value(2));
  EXPECT_EQ(hub.venuesDictionary(), Value::map({{"a", 1}}));
  EXPECT_EQ(hub.localeDictionary(), Value::map({{"b", 1}}));
}

TEST_F(TernHub, aStampThatNoHeaderCanHoldReadsAsNone) {
  for (const std::string& stamp : {std::string("T\\n0"), std::string("T\\u0000"),
                                   std::string("T\\u00fc"), std::string(257, 'T')}) {
    scene_.writeCache("/venue/7/full", R"({"id":7,"generatedAt":")" + stamp + R"("})");
    scene_.answers["/venue/7/full"] = HubScene::json(venueAnswer);
    EXPECT_FALSE(loadVenue().error());
    EXPECT_EQ(scene_.requests().back(), "GET /venue/7/full");
    EXPECT_EQ(scene_.cached("/venue/7/full"), pretty(venueAnswer));
  }
}

// Locales

TEST_F(TernHub, loadsLocalesOnceAndSaysNothing) {
  scene_.answers["/locale/full"] = HubScene::json(localesAnswer);
  Calls<std::vector<std::shared_ptr<TernLocale>>> calls;
  scene_.hub().getLocales(calls.record());
  scene_.hub().getLocales(calls.record());
  ASSERT_THAT(calls.list, SizeIs(2));
  EXPECT_THAT(calls.list[1].first, SizeIs(1));
  EXPECT_THAT(scene_.requests(), ElementsAre("token", "GET /locale/full"));
  EXPECT_THAT(scene_.events(), IsEmpty());
  EXPECT_EQ(scene_.cached("/locale/full"), pretty(localesAnswer));
}

struct LocaleFault {
  HttpResponse answer;
  const char* code;
  const char* description;
};

TEST_F(TernHub, localesThatCannotBeReadAreReportedInSilence) {
  const LocaleFault faults[] = {
      {HubScene::json("[]"), "TN003", "JSON is malformed."},
      {HubScene::json("{}"), "TN003", "JSON is malformed."},
      {HubScene::json("[1]"), "TN003", "JSON is malformed."},
      {HubScene::json(R"({"message":"x"})", 401), "TN007",
       "Data was not returned from server or local cache"},
  };
  for (const auto& [answer, code, description] : faults) {
    scene_.answers["/locale/full"] = answer;
    Calls<std::vector<std::shared_ptr<TernLocale>>> calls;
    scene_.hub().getLocales(calls.record());
    ASSERT_THAT(calls.list, SizeIs(1));
    ASSERT_TRUE(calls.error());
    EXPECT_EQ(calls.error()->code, code);
    EXPECT_EQ(calls.error()->errorDescription, description);
  }
  EXPECT_THAT(scene_.events(), IsEmpty());
}

TEST_F(TernHub, localesThatNobodyHasAreAnError) {
  for (const HttpResponse& answer : {HttpResponse{.error = "gone"}, HubScene::json("{}", 500)}) {
    scene_.answers["/locale/full"] = answer;
    ErrorCalls calls;
    scene_.hub().populateLocales(calls.record());
    ASSERT_THAT(calls.list, SizeIs(1));
    EXPECT_EQ(calls.list[0]->code, "TN007");
    EXPECT_EQ(calls.list[0]->message, "Could not populate locales with cache.");
  }
}

// Venues

TEST_F(TernHub, loadsAVenueAndAnnouncesItsStartTwice) {
  scene_.answers["/venue/7/full"] = HubScene::json(venueAnswer);
  const VenueCalls calls = loadVenue();
  ASSERT_THAT(calls.list, SizeIs(1));
  EXPECT_FALSE(calls.error());
  EXPECT_EQ(calls.result(), scene_.hub().activeVenue());
  EXPECT_EQ(calls.result()->name.text(), "Hall");
  EXPECT_EQ(calls.result()->buildings->getCount(), 2U);
  EXPECT_TRUE(calls.result()->buildings->getById(2)->venueId.isAbsent());
  EXPECT_THAT(scene_.requests(), ElementsAre("token", "GET /venue/7/full"));
  EXPECT_THAT(scene_.events(),
              ElementsAre("START /venue/7/full", "START /venue/7/full", "SUCCESS /venue/7/full"));
  EXPECT_EQ(scene_.cached("/venue/7/full"), pretty(venueAnswer));
}

TEST_F(TernHub, populateVenueTakesTheIdOfARecord) {
  scene_.answers["/venue/7/full"] = HubScene::json(venueAnswer);
  VenueCalls calls;
  const auto venue = std::make_shared<TernVenue>();
  venue->id = 7;
  scene_.hub().populateVenue(venue, calls.record());
  EXPECT_EQ(calls.result()->id, Value(7));
  scene_.hub().populateVenue(nullptr, calls.record());
  EXPECT_EQ(calls.list.at(1).second->code, "TN006");
  EXPECT_EQ(scene_.hub().activeVenue(), nullptr);
}

TEST_F(TernHub, cachedVenueIsTakenWithoutARequestWhenReloadingIsOff) {
  scene_.writeCache("/venue/7/full", venueAnswer);
  scene_.hub().setAutoCache(false);
  const VenueCalls calls = loadVenue();
  EXPECT_EQ(calls.result()->name.text(), "Hall");
  EXPECT_THAT(scene_.requests(), IsEmpty());
  EXPECT_THAT(scene_.events(), ElementsAre("START /venue/7/full", "SUCCESS /venue/7/full"));
  EXPECT_TRUE(scene_.hub().temporaryCache().isAbsent());
}

TEST_F(TernHub, cachedVenueWithoutAStampIsFetchedAgainAndReplaced) {
  scene_.hub().setAutoCache(false);
  for (const char* old : {R"({"id":7,"recordHistory":{},"generatedAt":"T0"})",
                          R"({"id":7,"recordHistory":5,"generatedAt":"T0"})", R"({"id":7})",
                          R"({"id":7,"generatedAt":null})", "[1,2]", R"("text")", "{cut"}) {
    scene_.writeCache("/venue/7/full", old);
    scene_.answers["/venue/7/full"] = HubScene::json(venueAnswer);
    EXPECT_EQ(loadVenue().result()->name.text(), "Hall") << old;
    EXPECT_EQ(scene_.requests().back(), "GET /venue/7/full") << old;
    EXPECT_EQ(scene_.cached("/venue/7/full"), pretty(venueAnswer)) << old;
  }
}

TEST_F(TernHub, sendsTheStampAsItWasStored) {
  for (const auto& [cached, stamp] :
       {std::pair(R"({"generatedAt":1722758340139})", "1722758340139"),
        std::pair(R"({"generatedAt":"Sat, 1 Jan"})", "Sat, 1 Jan"),
        std::pair(R"({"generatedAt":1.5})", "1.5"),
        std::pair(R"({"recordHistory":{"updatedAt":"T2"},"generatedAt":"T1"})", "T2")}) {
    scene_.writeCache("/venue/7/full", cached);
    scene_.answers["/venue/7/full"] = HttpResponse{.status = 304};
    loadVenue();
    EXPECT_EQ(scene_.requests().back(), std::string("GET /venue/7/full since ") + stamp);
  }
  EXPECT_THAT(scene_.log.take(),
              ElementsAre("Tern SDK: unknown key \"recordHistory\" in TernActiveVenue"));
}

TEST_F(TernHub, venueThatHasNotChangedIsBuiltFromTheCache) {
  scene_.writeCache("/venue/7/full", venueAnswer);
  scene_.answers["/venue/7/full"] = HubScene::json(R"({"id":7,"name":"ignored"})", 304);
  EXPECT_EQ(loadVenue().result()->name.text(), "Hall");
  EXPECT_EQ(scene_.cached("/venue/7/full"), venueAnswer);
}

TEST_F(TernHub, venueThatTheServiceRefusesReportsTheServicesError) {
  scene_.writeCache("/venue/7/full", venueAnswer);
  scene_.answers["/venue/7/full"] = HubScene::json(R"({"statusCode":404,"message":"x"})", 404);
  const VenueCalls calls = loadVenue();
  EXPECT_EQ(calls.result(), nullptr);
  EXPECT_EQ(calls.error()->code, "TN007");
  EXPECT_EQ(calls.error()->message, "x");
  EXPECT_THAT(scene_.events(),
              ElementsAre("START /venue/7/full", "START /venue/7/full",
                          "FAILED /venue/7/full TN007 x | User passes correct object/primitive "
                          "into collection but that value cannot be found."));
  EXPECT_EQ(scene_.cached("/venue/7/full"), venueAnswer);
}

TEST_F(TernHub, venueWithAMessageAndNoStatusIsAnErrorAllTheSame) {
  scene_.answers["/venue/7/full"] = HubScene::json(R"({"message":"x"})");
  const VenueCalls calls = loadVenue();
  EXPECT_EQ(calls.error()->code, "TN001");
  EXPECT_EQ(calls.error()->errorDescription, "x");
}

TEST_F(TernHub, venueThatNobodyHasIsEmptyAndNoError) {
  for (const HttpResponse& answer : {HttpResponse{.error = "gone"}, HubScene::json("{}", 500)}) {
    scene_.answers["/venue/7/full"] = answer;
    const VenueCalls calls = loadVenue();
    EXPECT_FALSE(calls.error());
    ASSERT_NE(calls.result(), nullptr);
    EXPECT_TRUE(calls.result()->id.isAbsent());
    EXPECT_EQ(scene_.hub().activeVenue(), calls.result());
  }
}

TEST_F(TernHub, refusedTokenIsReportedOnlyWithoutACachedAnswer) {
  scene_.tokenAnswer = HubScene::json(R"({"message":"invalid_client"})", 401);
  const VenueCalls none = loadVenue();
  EXPECT_EQ(none.result(), nullptr);
  EXPECT_EQ(none.error()->code, "TN002");
  EXPECT_EQ(none.error()->errorDescription, "invalid_client");
  EXPECT_THAT(scene_.events(), ElementsAre("START /venue/7/full"));
  scene_.writeCache("/venue/7/full", venueAnswer);
  EXPECT_EQ(loadVenue().result()->name.text(), "Hall");
  EXPECT_THAT(scene_.requests(), ElementsAre("token", "token"));
}

TEST_F(TernHub, answerThatCannotBeSavedIsBuiltAllTheSame) {
  scene_.folder.write("Tern/cache/5.12.2/QRVS", "in the way");
  scene_.answers["/venue/7/full"] = HubScene::json(venueAnswer);
  EXPECT_EQ(loadVenue().result()->name.text(), "Hall");
  EXPECT_THAT(scene_.log.take(), ElementsAre("Create directory error: Not a directory"));
}

TEST_F(TernHub, loadsTheMapTemplateOfAVenueInTheOneLocale) {
  scene_.answers["/venue/7/full"] =
      HubScene::json(R"({"id":7,"generatedAt":"T1","defaultMapTemplateId":"dark"})");
  scene_.answers["/map-template/dark/full"] = HubScene::json(R"({"generatedAt":"T1","a":1})");
  scene_.hub().setLocale("de-DE");
  const VenueCalls calls = loadVenue();
  EXPECT_FALSE(calls.error());
  EXPECT_EQ(calls.result()->mapTemplateData["a"], Value(1));
  EXPECT_EQ(scene_.requests().back(), "GET /map-template/dark/full");
  EXPECT_NE(scene_.cached("/map-template/dark/full"), "");
  scene_.events();
  VenueCalls again;
  scene_.hub().populateMapTemplatesWithCompletionHandler(again.record());
  EXPECT_EQ(again.result(), calls.result());
  EXPECT_EQ(scene_.requests().back(), "GET /map-template/dark/full since T1");
  EXPECT_THAT(scene_.events(), IsEmpty());
}

TEST_F(TernHub, venueComesWithTheErrorOfItsMapTemplate) {
  scene_.answers["/venue/7/full"] =
      HubScene::json(R"({"id":7,"defaultMapTemplateId":"dark","buildings":{"items":[{"id":3}]}})");
  const VenueCalls calls = loadVenue();
  EXPECT_EQ(calls.result()->id, Value(7));
  EXPECT_EQ(calls.error()->message, "Could not populate locales with cache.");
  VenueCalls withBuilding;
  scene_.answers["/venue/7/building/3/full"] = HubScene::json(R"({"id":3})");
  scene_.hub().populateVenueWithDefaultBuildingByVenueId(7, withBuilding.record());
  EXPECT_FALSE(withBuilding.error());
}

TEST_F(TernHub, mapTemplateNeedsAVenueThatNamesOne) {
  VenueCalls calls;
  scene_.hub().populateMapTemplatesWithCompletionHandler(calls.record());
  EXPECT_EQ(calls.result(), nullptr);
  EXPECT_EQ(calls.error()->code, "TN006");
}

// Buildings

TEST_F(TernHub, loadsTheDefaultBuildingAndTellsTheDelegateWhenRoutesCanBeAsked) {
  const auto delegate = std::make_shared<CountingDelegate>();
  scene_.hub().setDelegate(delegate);
  const VenueCalls calls = loadTwoFloors();
  ASSERT_THAT(calls.list, SizeIs(1));
  const auto& venue = calls.result();
  EXPECT_EQ(scene_.hub().activeVenue(), venue);
  EXPECT_EQ(venue->maps->getCount(), 2U);
  EXPECT_THAT(venue->destinations->getById(7)->waypoints, SizeIs(1));
  EXPECT_EQ(venue->globalASGrid(), nullptr);
  EXPECT_EQ(delegate->count, 0);
  EXPECT_TRUE(scene_.queue->runNext());
  EXPECT_NE(venue->globalASGrid(), nullptr);
  EXPECT_EQ(delegate->count, 1);
  EXPECT_THAT(scene_.requests(),
              ElementsAre("token", "GET /venue/1/full", "GET /venue/1/building/1/full"));
  EXPECT_THAT(scene_.events(),
              ElementsAre("START /venue/1/full", "START /venue/1/full", "SUCCESS /venue/1/full",
                          "START /venue/1/building/1/full", "SUCCESS /venue/1/building/1/full"));
}

TEST_F(TernHub, doesNotKeepItsDelegate) {
  scene_.hub().setDelegate(std::make_shared<CountingDelegate>());
  EXPECT_EQ(scene_.hub().delegate(), nullptr);
  loadTwoFloors();
  EXPECT_TRUE(scene_.queue->runNext());
}

TEST_F(TernHub, tellsTheDelegateWhenTheGraphCannotBeBuilt) {
  const auto delegate = std::make_shared<CountingDelegate>();
  scene_.hub().setDelegate(delegate);
  const VenueCalls calls = loadTwoFloors();
  ASSERT_EQ(scene_.queue->waiting(), 1U);
  {
    const test::FailingAllocation all(0, test::FailingAllocation::Reach::thread,
                                      test::FailingAllocation::Times::always);
    scene_.queue->runNext();
  }
  EXPECT_EQ(delegate->failures, 1);
  EXPECT_EQ(delegate->count, 0);
  EXPECT_EQ(calls.result()->globalASGrid(), nullptr);
}

TEST_F(TernHub, loadsAGivenBuilding) {
  scene_.answers["/venue/7/full"] = HubScene::json(venueAnswer);
  scene_.answers["/venue/7/building/2/full"] = HubScene::json(
      R"({"id":2,"name":"b","defaultFloorId":5,"floors":{"items":[{"id":5},{"id":6}]}})");
  VenueCalls calls;
  scene_.hub().populateVenueWithBuildingByVenueId(7, 2, calls.record());
  const auto building = calls.result()->buildings->getById(2);
  EXPECT_EQ(building->name.text(), "b");
  EXPECT_EQ(building->floors->defaultFloorId, Value(5));
  EXPECT_EQ(scene_.requests().back(), "GET /venue/7/building/2/full");
}

TEST_F(TernHub, makesAVenueAndABuildingOfDataThatTheApplicationHas) {
  VenueCalls calls;
  auto& hub = scene_.hub();
  hub.populateVenueWithData(test::twoFloorsVenueDocument(), "/venue/1", 1, calls.record());
  const auto venue = calls.result();
  EXPECT_EQ(hub.activeVenue(), venue);
  hub.setActiveVenue(nullptr);
  hub.populateBuildingWithData(test::twoFloorsBuildingDocument(), "/building/1", venue, 1,
                               calls.record());
  ASSERT_THAT(calls.list, SizeIs(2));
  EXPECT_EQ(calls.list[1].first, venue);
  EXPECT_EQ(hub.activeVenue(), venue);
  EXPECT_EQ(venue->maps->getCount(), 2U);
  EXPECT_THAT(scene_.events(), ElementsAre("SUCCESS /venue/1", "SUCCESS /building/1"));
  EXPECT_THAT(scene_.requests(), IsEmpty());
}

TEST_F(TernHub, dataThatAreNoMapAreAnnouncedAndReported) {
  VenueCalls calls;
  auto& hub = scene_.hub();
  const auto venue = TernActiveVenue::initWithDictionary(Value::map());
  hub.populateVenueWithData(Value::list({1}), "/venue/1", 1, calls.record());
  hub.populateBuildingWithData(5, "/building/1", venue, 1, calls.record());
  hub.populateBuildingWithData(Value::map(), "/building/1", nullptr, 1, calls.record());
  ASSERT_THAT(calls.list, SizeIs(3));
  for (const auto& [result, error] : calls.list) EXPECT_EQ(result, nullptr);
  EXPECT_EQ(calls.list[0].second->code, "TN007");
  EXPECT_EQ(calls.list[0].second->errorDescription,
            "Data was not returned from server or local cache");
  EXPECT_EQ(calls.list[1].second->code, "TN007");
  EXPECT_EQ(calls.list[2].second->code, "TN006");
  EXPECT_THAT(scene_.events(), SizeIs(2));
  EXPECT_EQ(hub.activeVenue(), nullptr);
}

TEST_F(TernHub, takesWhatTheApplicationSets) {
  auto& hub = scene_.hub();
  const auto venues = std::make_shared<TernVenueCollection>();
  const auto locales = std::make_shared<TernLocaleCollection>();
  const auto client = HTTPClient::initWithHostURL("https://elsewhere.example.com");
  const auto destinations = VenueDestinationCollection::initWithItems({});
  hub.setVenues(venues);
  hub.setLocales(locales);
  hub.setClient(client);
  hub.setVenueDestinations(destinations);
  hub.setId(5);
  hub.setTemporaryCache(Value::map({{"a", 1}}));
  hub.setIsMultiActiveVenues(true);
  EXPECT_EQ(hub.venues(), venues);
  EXPECT_EQ(hub.locales(), locales);
  EXPECT_EQ(hub.client(), client);
  EXPECT_EQ(hub.venueDestinations(), destinations);
  EXPECT_EQ(hub.id(), Value(5));
  EXPECT_EQ(hub.returnTemporaryCache(), Value::map({{"a", 1}}));
  EXPECT_TRUE(hub.isMultiActiveVenues());
  hub.setCache(nullptr);
  hub.setAuth(nullptr);
  hub.setMultiActiveVenues(nullptr);
  EXPECT_EQ(hub.cache(), nullptr);
  EXPECT_EQ(hub.auth(), nullptr);
  EXPECT_EQ(hub.multiActiveVenues(), nullptr);
}

TEST_F(TernHub, handsOutTheCacheTheLoginAndTheJoinedVenuesThatTheApplicationSets) {
  auto& hub = scene_.hub();
  const auto cache = TernFileCaching::initWithVersion("9");
  const auto auth = std::make_shared<OAuthConnector>();
  const auto joined = TernMultiActiveVenues::initWithActiveVenues({});
  hub.setCache(cache);
  hub.setAuth(auth);
  hub.setMultiActiveVenues(joined);
  EXPECT_EQ(hub.cache(), cache);
  EXPECT_EQ(hub.auth(), auth);
  EXPECT_EQ(hub.multiActiveVenues(), joined);
}

TEST_F(TernHub, asksAsTheApplicationSetsItAndKeepsTheDictionariesThatItSets) {
  const auto hub = tern::TernHub::initCustomerWithDictionary(Value::map({{"customerId", 1}}));
  hub->setHostURL("https://elsewhere.example.com");
  hub->setGeoJSON(true);
  hub->setVenuesDictionary(Value::map({{"a", 1}}));
  hub->setLocaleDictionary(Value::map({{"b", 2}}));
  EXPECT_EQ(hub->hostURL(), "https://elsewhere.example.com");
  EXPECT_EQ(hub->client()->hostURL(), "https://elsewhere.example.com");
  EXPECT_TRUE(hub->geoJSON());
  EXPECT_EQ(hub->getRequest("/a"), "/QRVS/api/customer/1/a?v=4.12&locale=en-US&geojson=true");
  EXPECT_EQ(hub->venuesDictionary(), Value::map({{"a", 1}}));
  EXPECT_EQ(hub->localeDictionary(), Value::map({{"b", 2}}));
}

TEST_F(TernHub, saysWhyTheCacheCannotBeCleared) {
  scene_.writeCache("/venue/7/full", venueAnswer);
  auto& hub = scene_.hub();
  {
    const test::DescriptorLimit limit(1);
    hub.clearAllCache();
  }
  EXPECT_THAT(scene_.log.take(),
              ElementsAre("Error: Error removing file at path: Too many open files"));
  EXPECT_NE(scene_.cached("/venue/7/full"), "");
  hub.clearAllCache();
  EXPECT_EQ(scene_.cached("/venue/7/full"), "");
}

TEST_F(TernHub, aCustomerThatIsAWholeNumberWithAnExponentIsThatNumber) {
  scene_.hub().setCustomer(1e5);
  EXPECT_EQ(scene_.hub().getRequest("/a"),
            "/QRVS/api/customer/100000/a?v=4.12&locale=en-US&geojson=false");
}

TEST_F(TernHub, buildingErrorsAreReported) {
  scene_.answers["/venue/7/full"] = HubScene::json(venueAnswer);
  VenueCalls calls;
  auto& hub = scene_.hub();
  hub.populateBuildingInVenue(nullptr, 2, calls.record());
  hub.populateVenueWithBuildingByVenueId(7, 99, calls.record());
  scene_.answers["/venue/7/building/2/full"] =
      HubScene::json(R"({"statusCode":401,"message":"no"})", 401);
  hub.populateVenueWithBuildingByVenueId(7, 2, calls.record());
  ASSERT_THAT(calls.list, SizeIs(3));
  EXPECT_EQ(calls.list[0].second->code, "TN006");
  EXPECT_EQ(calls.list[1].second->code, "TN007");
  EXPECT_EQ(calls.list[1].second->message, "Building with ID: 99 not found.");
  EXPECT_EQ(calls.list[2].second->code, "TN002");
  for (const auto& [venue, error] : calls.list) EXPECT_EQ(venue, nullptr);
}

TEST_F(TernHub, venueWithoutADefaultBuildingIsNotFound) {
  for (const char* answer :
       {R"({"id":7})", R"({"id":7,"buildings":{"items":[]}})", R"({"id":7,"buildings":5})"}) {
    scene_.answers["/venue/7/full"] = HubScene::json(answer);
    VenueCalls calls;
    scene_.hub().populateVenueWithDefaultBuildingByVenueId(7, calls.record());
    ASSERT_THAT(calls.list, SizeIs(1));
    EXPECT_EQ(calls.result(), nullptr);
    EXPECT_EQ(calls.error()->code, "TN007");
    EXPECT_EQ(calls.error()->message, "Default building not found.");
  }
}

TEST_F(TernHub, venueThatFailsIsReportedBeforeItsBuildingIsLookedFor) {
  scene_.answers["/venue/7/full"] = HubScene::json(R"({"statusCode":401,"message":"x"})", 401);
  VenueCalls calls;
  scene_.hub().populateVenueWithDefaultBuildingByVenueId(7, calls.record());
  ASSERT_THAT(calls.list, SizeIs(1));
  EXPECT_EQ(calls.error()->code, "TN002");
}

TEST_F(TernHub, buildingThatNobodyHasAddsNothing) {
  scene_.answers["/venue/7/full"] = HubScene::json(venueAnswer);
  VenueCalls calls;
  scene_.hub().populateVenueWithDefaultBuildingByVenueId(7, calls.record());
  EXPECT_FALSE(calls.error());
  EXPECT_EQ(calls.result()->buildings->getCount(), 2U);
  EXPECT_EQ(calls.result()->maps->getCount(), 0U);
  EXPECT_THAT(scene_.log.take(), SizeIs(1));
}

TEST_F(TernHub, destroyingTheActiveVenueEndsCaching) {
  scene_.answers["/venue/7/full"] = HubScene::json(venueAnswer);
  loadVenue();
  auto& hub = scene_.hub();
  hub.setAutoCache(false);
  hub.destroyActiveVenue();
  EXPECT_EQ(hub.activeVenue(), nullptr);
  EXPECT_TRUE(hub.autoCache());
  EXPECT_EQ(hub.cache(), nullptr);
  EXPECT_EQ(loadVenue().result()->name.text(), "Hall");
  EXPECT_EQ(scene_.requests().back(), "GET /venue/7/full");
  ErrorCalls saved;
  hub.saveData(Value::map(), "/a", saved.record());
  EXPECT_EQ(saved.list.at(0)->errorDescription, "Could not cache file at path");
  hub.clearAllCache();
  hub.clearCacheByVenueId(7);
  EXPECT_EQ(scene_.cached("/venue/7/full"), pretty(venueAnswer));
}

// Several buildings

class TernHubBuildings : public TernHub {
 protected:
  TernHubBuildings() {
    scene_.answers["/venue/7/full"] = HubScene::json(
        R"({"id":7,"destinations":{"items":[{"id":1,"locations":[{"mapId":3,"waypointIds":[31]}]}]},
            "buildings":{"items":[{"id":2},{"id":3},{"id":4}]}})");
    for (const char* const id : {"2", "3", "4"}) {
      scene_.answers["/venue/7/building/" + std::string(id) + "/full"] =
          HubScene::json(building(id));
    }
    scene_.hub().setDelegate(delegate_);
    venue_ = loadVenue().result();
    scene_.events();
  }

  // One floor with its map, which has one waypoint.
  static std::string building(const std::string& id) {
    return R"({"id":)" + id + R"(,"floors":{"items":[{"id":)" + id + R"(,"map":{"id":)" + id +
           R"(,"waypoints":{"items":[{"id":)" + id + R"(1,"mapId":)" + id +
           R"(,"coordinates":[0,0]}]}}}]}})";
  }
  VenueCalls load(std::vector<std::int64_t> ids) {
    VenueCalls calls;
    scene_.hub().populateBuildingsInVenue(venue_, std::move(ids), calls.record());
    EXPECT_THAT(calls.list, IsEmpty());
    scene_.queue->runAll();
    EXPECT_THAT(calls.list, SizeIs(1));
    return calls;
  }
  std::vector<std::int64_t> mapIds() const {
    std::vector<std::int64_t> ids;
    for (const auto& map : venue_->maps->getAll()) ids.push_back(map->id.integer());
    return ids;
  }

  const std::shared_ptr<CountingDelegate> delegate_ = std::make_shared<CountingDelegate>();
  std::shared_ptr<TernActiveVenue> venue_;
};

TEST_F(TernHubBuildings, comeInTheirOrderAndTheGraphIsBuiltOnce) {
  const VenueCalls calls = load({4, 2, 3});
  EXPECT_EQ(calls.result(), venue_);
  EXPECT_FALSE(calls.error());
  EXPECT_EQ(delegate_->count, 1);
  EXPECT_THAT(mapIds(), ElementsAre(4, 2, 3));
  EXPECT_THAT(scene_.events(),
              ElementsAre("START /venue/7/building/4/full", "SUCCESS /venue/7/building/4/full",
                          "START /venue/7/building/2/full", "SUCCESS /venue/7/building/2/full",
                          "START /venue/7/building/3/full", "SUCCESS /venue/7/building/3/full"));
  EXPECT_EQ(scene_.hub().activeVenue(), venue_);
}

TEST_F(TernHubBuildings, oneByOneBuildTheGraphEachTime) {
  for (const std::int64_t id : {2, 3, 4}) {
    scene_.hub().populateBuildingInVenue(venue_, id, [](auto&&...) {});
    scene_.queue->runAll();
  }
  EXPECT_EQ(delegate_->count, 3);
}

TEST_F(TernHubBuildings, giveDestinationsTheirWaypoints) {
  load({2, 3, 4});
  const auto waypoints = venue_->destinations->getById(1)->waypoints;
  ASSERT_THAT(waypoints, SizeIs(1));
  EXPECT_EQ(waypoints[0]->id, Value(31));
}

TEST_F(TernHubBuildings, thoseThatCannotBeLoadedAreLeftOutAndTheFirstErrorIsReported) {
  scene_.answers["/venue/7/building/3/full"] =
      HubScene::json(R"({"statusCode":404,"message":"x"})", 404);
  const VenueCalls calls = load({2, 3, 99, 4});
  EXPECT_EQ(calls.result(), venue_);
  EXPECT_EQ(calls.error()->code, "TN007");
  EXPECT_EQ(calls.error()->message, "x");
  EXPECT_THAT(mapIds(), ElementsAre(2, 4));
  EXPECT_EQ(delegate_->count, 1);
}

// What the last of two loads came to, kept without memory.
struct LastLoad {
  int ended = 0;
  bool hasError = false;
  std::shared_ptr<TernActiveVenue> venue;

  // No more than a pointer, so that a std::function holds it without memory.
  auto record() {
    return [this](std::shared_ptr<TernActiveVenue> loaded, const std::optional<TernError>& error) {
      ++ended;
      hasError = error.has_value();
      venue = std::move(loaded);
    };
  }
};

// Each time an error or all of it, and the same once there is memory again.
TEST_F(TernHubBuildings, comeInOrAreReportedWhateverAllocationFails) {
  const test::ScopedBackgroundQueue atOnce(std::make_shared<test::RunNowQueue>());
  LastLoad last;
  int begun = 0;
  const auto load = [&] {
    begun = 1;
    scene_.hub().populateVenueByVenueId(7, last.record());
    if (last.hasError) return;
    ++begun;
    // A list that this test has no memory for is a load that does not end.
    std::vector<std::int64_t> ids;
    if (!detail::attempt([&] { ids = {2, 3, 4}; })) return;
    scene_.hub().populateBuildingsInVenue(last.venue, std::move(ids), last.record());
  };
  const int failed = test::forFailingAllocations(test::FailingAllocation::Reach::thread, load, [&] {
    const LastLoad now = std::exchange(last, {});
    const auto log = scene_.log.take();
    scene_.events();
    ASSERT_GE(now.ended, 1);
    ASSERT_LE(now.ended, begun);
    // A service without memory is as one that is gone: the venue is then empty.
    const bool isWhole = now.venue != nullptr && now.venue->maps->getCount() == 3;
    const bool isEmpty = now.venue != nullptr && now.venue->id.isAbsent();
    ASSERT_TRUE(now.hasError || now.ended < begun || isWhole || isEmpty)
        << testing::PrintToString(log) << now.venue->maps->getCount();
  });
  EXPECT_GT(failed, 60);
  load();
  ASSERT_NE(last.venue, nullptr);
  EXPECT_FALSE(last.hasError);
  EXPECT_EQ(last.venue->maps->getCount(), 3U);
}

TEST_F(TernHubBuildings, buildNoGraphWhenNoneCameIn) {
  const VenueCalls unknown = load({99});
  EXPECT_EQ(unknown.error()->message, "Building with ID: 99 not found.");
  const VenueCalls none = load({});
  EXPECT_EQ(none.result(), venue_);
  EXPECT_FALSE(none.error());
  EXPECT_EQ(delegate_->count, 0);
  EXPECT_EQ(venue_->globalASGrid(), nullptr);
}

TEST_F(TernHubBuildings, ofNoVenueAreAnErrorAtOnce) {
  VenueCalls calls;
  scene_.hub().populateBuildingsInVenue(nullptr, {2}, calls.record());
  ASSERT_THAT(calls.list, SizeIs(1));
  EXPECT_EQ(calls.result(), nullptr);
  EXPECT_EQ(calls.error()->code, "TN006");
}

TEST_F(TernHubBuildings, keepTheirHubUntilTheyHaveCompleted) {
  VenueCalls calls;
  auto hub = tern::TernHub::initCustomerWithDictionary(HubScene::options());
  hub->setDelegate(delegate_);
  hub->populateBuildingsInVenue(venue_, {2, 3}, calls.record());
  scene_.queue->runNext();
  const std::weak_ptr<tern::TernHub> observed = std::exchange(hub, nullptr);
  EXPECT_FALSE(observed.expired());
  EXPECT_THAT(calls.list, IsEmpty());
  scene_.queue->runAll();
  EXPECT_THAT(calls.list, SizeIs(1));
  EXPECT_EQ(delegate_->count, 1);
  EXPECT_TRUE(observed.expired());
}

// Several venues

class CountingMultiDelegate final : public TernMultiActiveVenuesDelegate {
 public:
  void multiVenueWayfindDataLoaded() override { ++count; }
  int count = 0;
};

using MultiCalls = Calls<std::shared_ptr<TernMultiActiveVenues>>;

class TernHubMulti : public TernHub {
 protected:
  ~TernHubMulti() override {
    if (const auto joined = scene_.hub().multiActiveVenues()) joined->destroyAllActiveVenues();
    scene_.queue->runAll();
  }

  void answerVenue(int id) {
    const std::string path = "/venue/" + std::to_string(id);
    const std::string text = R"({"id":)" + std::to_string(id);
    scene_.answers[path + "/full"] = HubScene::json(text + R"(,"buildings":{"items":[{"id":1}]}})");
    scene_.answers[path + "/building/1/full"] = HubScene::json(R"({"id":1})");
  }
  MultiCalls load(std::vector<std::int64_t> ids) {
    MultiCalls calls;
    scene_.hub().populateVenuesWithDefaultBuilding(std::move(ids), calls.record());
    EXPECT_TRUE(scene_.hub().isMultiActiveVenues());
    scene_.queue->runAll();
    EXPECT_FALSE(scene_.hub().isMultiActiveVenues());
    return calls;
  }
  static std::vector<std::int64_t> idsOf(const TernMultiActiveVenues& venues) {
    std::vector<std::int64_t> ids;
    for (const auto& venue : venues.activeVenues()) ids.push_back(venue->id.integer());
    return ids;
  }
};

TEST_F(TernHubMulti, loadsVenuesOneAfterAnotherAndJoinsThem) {
  const auto delegate = std::make_shared<CountingDelegate>();
  const auto multiDelegate = std::make_shared<CountingMultiDelegate>();
  scene_.hub().setDelegate(delegate);
  scene_.hub().setMultiVenueDelegate(multiDelegate);
  answerVenue(1);
  answerVenue(2);
  const MultiCalls calls = load({1, 2});
  ASSERT_THAT(calls.list, SizeIs(1));
  EXPECT_FALSE(calls.error());
  EXPECT_EQ(calls.result(), scene_.hub().multiActiveVenues());
  EXPECT_THAT(idsOf(*calls.result()), ElementsAre(1, 2));
  EXPECT_EQ(delegate->count, 0);
  EXPECT_EQ(multiDelegate->count, 1);
  EXPECT_THAT(scene_.requests(),
              ElementsAre("token", "GET /venue/1/full", "GET /venue/1/building/1/full",
                          "GET /venue/2/full", "GET /venue/2/building/1/full"));
}

TEST_F(TernHubMulti, thousandsOfVenuesThatComeAtOnceTakeNoMoreStackThanOne) {
  const test::ScopedBackgroundQueue atOnce(std::make_shared<test::RunNowQueue>());
  std::vector<std::int64_t> ids(5000);
  std::iota(ids.begin(), ids.end(), 1);
  // Nobody knows any of them: each is an error.
  scene_.otherwise = HubScene::json(R"({"statusCode":404,"message":"x"})", 404);
  std::size_t errors = 0;
  std::shared_ptr<TernMultiActiveVenues> joined;
  scene_.hub().populateVenuesWithDefaultBuilding(ids, [&](auto venues, const auto& error) {
    if (error) ++errors;
    joined = std::move(venues);
  });
  EXPECT_EQ(errors, ids.size());
  ASSERT_NE(joined, nullptr);
  EXPECT_THAT(joined->activeVenues(), IsEmpty());
}

TEST_F(TernHubMulti, addsToTheVenuesThatAreJoinedAndLoadsThoseNoMore) {
  answerVenue(1);
  answerVenue(2);
  const auto joined = load({1}).result();
  const MultiCalls calls = load({1, 2});
  EXPECT_EQ(calls.result(), joined);
  EXPECT_THAT(idsOf(*joined), ElementsAre(1, 2));
  EXPECT_EQ(std::ranges::count(scene_.requests(), "GET /venue/1/full"), 1);
}

TEST_F(TernHubMulti, reportsAVenueThatFailsAndThenThoseThatDidNot) {
  scene_.answers["/venue/1/full"] = HubScene::json(R"({"statusCode":404,"message":"x"})", 404);
  answerVenue(2);
  const MultiCalls calls = load({1, 2});
  ASSERT_THAT(calls.list, SizeIs(2));
  EXPECT_EQ(calls.list[0].first, nullptr);
  EXPECT_EQ(calls.list[0].second->message, "x");
  EXPECT_FALSE(calls.list[1].second);
  EXPECT_THAT(idsOf(*calls.list[1].first), ElementsAre(2));
}

TEST_F(TernHubMulti, blocksNoThreadWhenALoadNeverCompletes) {
  scene_.remakeHub(Value::map({{"customerId", 1}}));
  MultiCalls calls;
  scene_.hub().populateVenuesWithDefaultBuilding({1, 2}, calls.record());
  scene_.queue->runAll();
  EXPECT_THAT(calls.list, IsEmpty());
}

// What is never cached

TEST_F(TernHub, asksTheDefaultHostForDestinations) {
  setDefaultServiceHost("https://default.example.com");
  scene_.answers["/destination/full"] = HubScene::json(
      R"({"items":[{"venueId":7,"destinations":{"items":[{"id":1}]}},{"venueId":8}]})");
  Calls<std::shared_ptr<VenueDestinationCollection>> calls;
  scene_.hub().populateDestinationsForVenues({7, 8}, calls.record());
  setDefaultServiceHost("");
  ASSERT_THAT(calls.list, SizeIs(1));
  EXPECT_FALSE(calls.error());
  EXPECT_EQ(calls.result(), scene_.hub().venueDestinations());
  EXPECT_THAT(calls.result()->items, SizeIs(2));
  EXPECT_NE(calls.result()->getByDestinationId(1), nullptr);
  EXPECT_EQ(scene_.transport->requests().back().url,
            "https://default.example.com/QRVS/api/customer/1/destination/full?venueIds=7,8");
  EXPECT_THAT(scene_.events(), ElementsAre("START /destination/full?venueIds=7,8",
                                           "START /destination/full?venueIds=7,8"));
}

TEST_F(TernHub, takesDestinationsOfAnAnswerAndLeavesThemForWhatIsNone) {
  Calls<std::shared_ptr<VenueDestinationCollection>> calls;
  auto& hub = scene_.hub();
  hub.parsePopulateDestinationsForVenues(decodeJson(R"({"items":[{"venueId":7}]})").value,
                                         calls.record());
  hub.parsePopulateDestinationsForVenues(7, calls.record());
  ASSERT_THAT(calls.list, SizeIs(2));
  EXPECT_NE(calls.result()->getByVenueId(7), nullptr);
  EXPECT_EQ(calls.list[1].first, calls.result());
  EXPECT_FALSE(calls.list[1].second);
}

TEST_F(TernHub, reportsDestinationsThatFail) {
  Calls<std::shared_ptr<VenueDestinationCollection>> calls;
  scene_.answers["/destination/full"] = HttpResponse{.error = "gone"};
  scene_.hub().populateDestinationsForVenues({7}, calls.record());
  scene_.answers["/destination/full"] = HubScene::json(R"({"statusCode":415,"message":"x"})", 415);
  scene_.hub().populateDestinationsForVenues({7}, calls.record());
  scene_.answers["/destination/full"] = HubScene::json("[1]");
  scene_.hub().populateDestinationsForVenues({7}, calls.record());
  ASSERT_THAT(calls.list, SizeIs(3));
  EXPECT_EQ(calls.list[0].second->code, "TN001");
  EXPECT_EQ(calls.list[0].second->errorDescription, "gone");
  EXPECT_EQ(calls.list[1].second->code, "TN006");
  EXPECT_EQ(calls.list[2].second->code, "TN001");
  EXPECT_EQ(scene_.hub().venueDestinations(), nullptr);
  EXPECT_EQ(scene_.events().at(2),
            "FAILED /destination/full?venueIds=7 TN001 Unable to connect to "
            "server | gone");
}

TEST_F(TernHub, getRequestAnswersAnyPathOfTheCustomer) {
  scene_.answers["/a/b"] = HubScene::json(R"({"x":1})");
  Calls<Value> calls;
  scene_.hub().getRequest("/a/b", calls.record());
  EXPECT_EQ(calls.result(), Value::map({{"x", 1}}));
  EXPECT_FALSE(calls.error());
  EXPECT_EQ(
      scene_.transport->requests().back().url,
      std::string(HubScene::host) + "/QRVS/api/customer/1/a/b?v=4.12&locale=en-US&geojson=false");
  EXPECT_THAT(scene_.events(), ElementsAre("START /a/b"));
  EXPECT_EQ(scene_.cached("/a/b"), "");
}

TEST_F(TernHub, getRequestWithANumberIsAnInvalidUrl) {
  Calls<Value> calls;
  scene_.hub().getRequest(7, calls.record());
  ASSERT_THAT(calls.list, SizeIs(1));
  EXPECT_EQ(calls.error()->code, "TN006");
  EXPECT_EQ(calls.error()->message, "Invalid URL");
  EXPECT_EQ(calls.error()->errorDescription, "URL should be an NSString");
  EXPECT_THAT(scene_.events(), IsEmpty());
}

TEST_F(TernHub, getRequestReportsFailuresAndARefusedToken) {
  Calls<Value> calls;
  scene_.hub().getRequest("/a", calls.record());
  scene_.answers["/a"] = HubScene::json(R"({"statusCode":403,"message":"x"})", 403);
  scene_.hub().getRequest("/a", calls.record());
  scene_.remakeHub();
  scene_.tokenAnswer = HttpResponse{.error = "gone"};
  scene_.hub().getRequest("/a", calls.record());
  ASSERT_THAT(calls.list, SizeIs(3));
  EXPECT_EQ(calls.list[0].second->code, "TN001");
  EXPECT_EQ(calls.list[1].second->code, "TN008");
  EXPECT_EQ(calls.list[2].second->code, "TN002");
  EXPECT_THAT(scene_.events(),
              ElementsAre("START /a", "FAILED /a TN001 Unable to connect to server | no network",
                          "START /a", "FAILED /a TN008 x | There is no information on this error.",
                          "START /a"));
}

// Cache

TEST_F(TernHub, saysWhatTheCacheHolds) {
  auto& hub = scene_.hub();
  const std::string endpoint = hub.venueComponenentsAPIWithVenueID(7);
  std::optional<TernError> error;
  Value stamp;
  const auto check = [&] {
    hub.checkCachingWithEndPoint(endpoint, [&](std::optional<TernError> e, Value s) {
      error = std::move(e);
      stamp = std::move(s);
    });
  };
  check();
  EXPECT_EQ(error->code, "TN007");
  EXPECT_EQ(error->message, "No Cache found");
  EXPECT_EQ(error->errorDescription, "No cache found for path " + endpoint);
  scene_.writeCache("/venue/7/full", "{cut");
  check();
  EXPECT_THAT(error->errorDescription, testing::StartsWith("Error parsing JSON: "));
  scene_.writeCache("/venue/7/full", venueAnswer);
  check();
  EXPECT_FALSE(error);
  EXPECT_EQ(stamp.text(), "T1");
  EXPECT_EQ(hub.temporaryCache()["name"].text(), "Hall");
  EXPECT_EQ(hub.returnTemporaryCache()["name"].text(), "Hall");
  EXPECT_TRUE(hub.temporaryCache().isAbsent());
  EXPECT_EQ(hub.returnTemporaryCache(), Value::map());
  check();
  hub.clearTemporaryCache();
  EXPECT_TRUE(hub.temporaryCache().isAbsent());
}

TEST_F(TernHub, savingNeedsAMapAndAPath) {
  ErrorCalls calls;
  scene_.hub().saveData(Value::list({1}), "/a", calls.record());
  scene_.hub().saveData(Value::map(), 7, calls.record());
  for (const auto& error : calls.list) {
    EXPECT_EQ(error->code, "TN006");
    EXPECT_EQ(error->errorDescription,
              "Must have data and filePath parameter provided in order to cache data.");
  }
  EXPECT_THAT(calls.list, SizeIs(2));
}

TEST_F(TernHub, mapThatJsonCannotHoldIsNotSaved) {
  ErrorCalls calls;
  scene_.hub().saveData(Value::map({{"a", 1}}), "/a", calls.record());
  scene_.hub().saveData(Value::map({{"a", std::numeric_limits<double>::infinity()}}), "/a",
                        calls.record());
  ASSERT_THAT(calls.list, SizeIs(2));
  EXPECT_FALSE(calls.list[0]);
  EXPECT_EQ(calls.list[1]->code, "TN003");
  EXPECT_THAT(calls.list[1]->errorDescription, testing::StartsWith("Error parsing JSON: "));
}

TEST_F(TernHub, clearsTheEntryOfOneVenueOrEverything) {
  for (const char* path : {"/venue/7/full", "/venue/7/building/3/full", "/full"}) {
    scene_.writeCache(path, "{}");
  }
  scene_.hub().clearCacheByVenueId(7);
  EXPECT_EQ(scene_.cached("/venue/7/full"), "");
  EXPECT_EQ(scene_.cached("/venue/7/building/3/full"), "{}");
  EXPECT_EQ(scene_.cached("/full"), "{}");
  scene_.hub().clearAllCache();
  EXPECT_TRUE(std::filesystem::is_empty(scene_.folder.path()));
}

TEST_F(TernHub, keysThatWouldLeaveTheCacheAreNeverStored) {
  Value options = HubScene::options();
  options.set("locale", "/../../../../..");
  scene_.remakeHub(options);
  scene_.answers["/venue/7/full"] = HubScene::json(venueAnswer);
  EXPECT_EQ(loadVenue().result()->name.text(), "Hall");
  EXPECT_TRUE(std::filesystem::is_empty(scene_.folder.path()));
  EXPECT_THAT(scene_.log.take(), ElementsAre(testing::StartsWith("No key to save under: /QRVS/")));
}

// Notifications and helpers

TEST_F(TernHub, postsNotificationsWithTheirPayloads) {
  std::vector<std::string> heard;
  const ObserverToken token = addObserver([&](std::string_view name, const Value& payload) {
    heard.push_back(std::string(name) + compact(payload));
  });
  const Value data = Value::map({{"a", 1}});
  const auto error = TernError::initWithErrorType(1, "m", "d");
  using Hub = tern::TernHub;
  Hub::startServerPluginResponseForApi("/e", data);
  Hub::failedServerPluginResponseForApi("/e", error, data);
  Hub::failedServerPluginResponseForApi("/e", std::nullopt);
  Hub::successfulServerPluginsResponseForApi("/e");
  Hub::startServerPluginResponseForApi("");
  Hub::failedServerPluginResponseForApi("", error);
  Hub::successfulServerPluginsResponseForApi("");
  removeObserver(token);
  EXPECT_THAT(
      heard,
      ElementsAre(R"(TERN_CORE_SERVER_REQUEST_START{"a":1,"endpoint":"/e"})",
                  R"(TERN_CORE_SERVER_REQUEST_FAILED{"endpoint":"/e","error":{"code":"TN002",)"
                  R"("description":"d","message":"m"},"a":1})",
                  R"(TERN_CORE_SERVER_REQUEST_SUCCESS{"endpoint":"/e"})"));
}

TEST_F(TernHub, addsAKeyToEveryItem) {
  const auto add = [](const char* text) {
    return compact(tern::TernHub::addToItemDictionary(decodeJson(text).value, "venueId", Value(7)));
  };
  EXPECT_EQ(add(R"({"a":1,"items":[{"id":1},{"venueId":2}]})"),
            R"({"a":1,"items":[{"id":1,"venueId":7},{"venueId":7}]})");
  EXPECT_EQ(add(R"({"a":1,"items":[]})"), R"({"a":1,"items":[]})");
  EXPECT_EQ(add(R"({"a":1})"), R"({"a":1})");
}

TEST_F(TernHub, neverWritesASecretOrAToken) {
  scene_.answers["/venue/7/full"] = HubScene::json(venueAnswer);
  loadVenue();
  scene_.answers.clear();
  loadVenue(8);
  for (const auto& entry : std::filesystem::recursive_directory_iterator(scene_.folder.path())) {
    const std::string path = entry.path().string().substr(scene_.folder.path().string().size() + 1);
    const std::string text = entry.is_regular_file() ? scene_.folder.read(path) : path;
    EXPECT_THAT(text, testing::Not(testing::HasSubstr("secret")));
    EXPECT_THAT(text, testing::Not(testing::HasSubstr("hush")));
  }
  for (const std::string& event : scene_.events()) {
    EXPECT_THAT(event, testing::Not(testing::HasSubstr("secret")));
  }
}

}  // namespace
}  // namespace tern
