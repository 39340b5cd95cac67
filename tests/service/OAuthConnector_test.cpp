#include "TernCoreKit/service/OAuthConnector.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <future>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include "tests/support/CapturedLog.hpp"
#include "tests/support/FakeTransport.hpp"
#include "tests/support/LoopbackServer.hpp"
#include "tests/support/TurnedClock.hpp"
#include "tests/support/Waiting.hpp"

namespace tern {
namespace {

using std::chrono::milliseconds;
using test::CapturedLog;
using test::FakeTransport;
using test::httpAnswer;
using test::LoopbackServer;
using test::ScopedHttpTransport;
using test::TurnedClock;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;
using testing::UnorderedElementsAre;

HttpResponse token(std::string_view name, std::string_view seconds) {
  std::string body = R"({"access_token":")";
  body.append(name).append(R"(","expires_in":)").append(seconds).append("}");
  return {.status = 200, .body = std::move(body)};
}

// A connector with credentials, whose requests the test answers.
class OAuthConnectorTest : public testing::Test {
 protected:
  OAuthConnectorTest() { connector_.setCredentialsWithClientId("me", "s&t", "https://a"); }
  ~OAuthConnectorTest() override { transport_->answerAll({}); }

  void request(Value headers = {}) {
    connector_.getAccessTokenInHeader(std::move(headers), [this](auto error, Value given) {
      errors_.push_back(std::move(error));
      headers_.push_back(std::move(given));
    });
  }

  const TernError& lastError() {
    static const TernError none;
    EXPECT_FALSE(errors_.empty() || !errors_.back().has_value());
    return errors_.empty() || !errors_.back().has_value() ? none : *errors_.back();
  }

  TurnedClock clock_;
  CapturedLog log_;
  const std::shared_ptr<FakeTransport> transport_ = std::make_shared<FakeTransport>();
  const ScopedHttpTransport scope_{transport_};
  OAuthConnector connector_;
  std::vector<std::optional<TernError>> errors_;
  std::vector<Value> headers_;
};

TEST_F(OAuthConnectorTest, aTokenIsAskedForByAForm) {
  request();
  ASSERT_EQ(transport_->requests().size(), 1U);
  const HttpRequest sent = transport_->requests()[0];
  EXPECT_EQ(sent.url, "https://a/QRVS/api/auth/token");
  EXPECT_EQ(sent.method, "POST");
  EXPECT_THAT(sent.headers,
              UnorderedElementsAre(HttpHeader{"Content-Type", "application/x-www-form-urlencoded"},
                                   HttpHeader{"Accept", "application/json"}));
  EXPECT_EQ(sent.body,
            "grant_type=client_credentials&scope=sdk.read&client_id=me&client_secret=s%26t");
}

TEST_F(OAuthConnectorTest, aTokenIsUsedToTheLastMomentOfItsTime) {
  request();
  transport_->answer(token("one", "3600"));
  EXPECT_FALSE(connector_.isExpired());
  clock_.turn(milliseconds(3'599'900));
  EXPECT_FALSE(connector_.isExpired());
  request();
  EXPECT_EQ(transport_->waiting(), 0U);
  EXPECT_EQ(headers_.back()["Authorization"].text(), "Bearer one");

  clock_.turn(milliseconds(100));
  EXPECT_TRUE(connector_.isExpired());
  request();
  transport_->answer(token("two", "0.5"));
  EXPECT_EQ(headers_.back()["Authorization"].text(), "Bearer two");
  EXPECT_EQ(connector_.expiryTime(), 0.5);
}

TEST_F(OAuthConnectorTest, aTokenWithoutTimeIsAskedForEachTime) {
  for (int i = 1; i <= 3; ++i) {
    request();
    ASSERT_EQ(transport_->requests().size(), static_cast<std::size_t>(i));
    transport_->answer(token("t", "0"));
    EXPECT_EQ(headers_.back()["Authorization"].text(), "Bearer t");
  }
}

TEST_F(OAuthConnectorTest, aTimeMayComeAsItsText) {
  for (const auto& [text, seconds] :
       {std::pair(R"("3600")", 3600.0), std::pair(R"("60.5")", 60.5), std::pair(R"("soon")", 0.0),
        std::pair(R"("")", 0.0), std::pair(R"("[9]")", 0.0)}) {
    connector_.setRefreshTime(std::nullopt);
    request();
    transport_->answer(token("t", text));
    EXPECT_EQ(connector_.expiryTime(), seconds) << text;
  }
}

TEST_F(OAuthConnectorTest, incompleteCredentialsKeepTheOldOnesAndForceANewToken) {
  request();
  transport_->answer(token("one", "3600"));
  const Value before = connector_.tokenRequestData();
  const auto http = connector_.http();
  connector_.setCredentialsWithClientId("", "secret", "https://b");
  connector_.setCredentialsWithClientId("you", "secret", "");
  connector_.setCredentialsWithClientId("you", "", "https://b");
  EXPECT_EQ(connector_.tokenRequestData(), before);
  EXPECT_EQ(connector_.http(), http);
  EXPECT_EQ(connector_.accessToken(), "one");
  EXPECT_EQ(connector_.refreshTime(), std::nullopt);
  request();
  EXPECT_EQ(transport_->waiting(), 1U);
}

TEST_F(OAuthConnectorTest, headersComeBackWithTheToken) {
  request(Value::map({{"If-Modified-Since", "x"}, {"Authorization", "old"}}));
  transport_->answer(token("t", "60"));
  EXPECT_EQ(headers_.back(),
            Value::map({{"If-Modified-Since", "x"}, {"Authorization", "Bearer t"}}));
  request(Value::list({1}));
  EXPECT_EQ(headers_.back(), Value::map({{"Authorization", "Bearer t"}}));
}

struct Refusal {
  std::string name;
  HttpResponse response;
  std::string description;
};

void PrintTo(const Refusal& refusal, std::ostream* out) { *out << refusal.name; }

class OAuthConnectorRefusal : public OAuthConnectorTest,
                              public testing::WithParamInterface<Refusal> {};

TEST_P(OAuthConnectorRefusal, isAnErrorThatLeavesTheOldTokenAlone) {
  request();
  transport_->answer(token("one", "60"));
  clock_.turn(milliseconds(60'000));
  const auto refreshTime = connector_.refreshTime();
  request();
  transport_->answer(GetParam().response);
  EXPECT_EQ(lastError().code, "TN002");
  EXPECT_EQ(lastError().message, "Could not request access token");
  EXPECT_EQ(lastError().errorDescription, GetParam().description);
  EXPECT_TRUE(headers_.back().isAbsent());
  EXPECT_EQ(connector_.accessToken(), "one");
  EXPECT_EQ(connector_.expiryTime(), 60);
  EXPECT_EQ(connector_.refreshTime(), refreshTime);
}

const std::string missing = "Request did not return access_token or expiry_time";
const std::vector<Refusal> refusals = {
    {"noNetwork", {.error = "The network is gone"}, "The network is gone"},
    {"wrongClient",
     {.status = 401, .body = R"({"statusCode":401,"message":"invalid_client"})"},
     "invalid_client"},
    {"serverError", {.status = 500, .body = R"({"statusDesc":"broken"})"}, "broken"},
    {"tokenWithoutTime", {.status = 200, .body = R"({"access_token":"t"})"}, missing},
    {"timeWithoutToken", {.status = 200, .body = R"({"expires_in":60})"}, missing},
    {"nothingInIt", {.status = 200, .body = "{}"}, missing},
    {"aList", {.status = 200, .body = "[1]"}, missing},
    {"notModified", {.status = 304}, missing},
};

INSTANTIATE_TEST_SUITE_P(Each, OAuthConnectorRefusal, testing::ValuesIn(refusals),
                         [](const auto& each) { return each.param.name; });

TEST_F(OAuthConnectorTest, theStatusOfAnAnswerDoesNotCount) {
  request();
  HttpResponse answer = token("t", "60");
  answer.status = 403;
  transport_->answer(answer);
  EXPECT_EQ(headers_.back()["Authorization"].text(), "Bearer t");
}

TEST_F(OAuthConnectorTest, aTokenThatIsNoTextIsNotUsed) {
  for (const std::string_view body :
       {R"({"access_token":7,"expires_in":60})", R"({"access_token":"","expires_in":60})",
        R"({"access_token":null,"expires_in":60})"}) {
    connector_.setRefreshTime(std::nullopt);
    request();
    transport_->answer({.status = 200, .body = std::string(body)});
    EXPECT_EQ(lastError().code, "TN006");
    EXPECT_EQ(lastError().message, "Incorrect object type was passed");
    EXPECT_EQ(lastError().errorDescription, "Token is not in correct format");
    EXPECT_TRUE(headers_.back().isAbsent());
  }
}

TEST_F(OAuthConnectorTest, afterLogoutTheOldTimeStillRuns) {
  request();
  transport_->answer(token("one", "60"));
  connector_.setApi("https://a");
  connector_.logout();
  EXPECT_EQ(connector_.api(), std::nullopt);
  EXPECT_EQ(connector_.accessToken(), std::nullopt);
  EXPECT_EQ(connector_.expiryTime(), 60);
  EXPECT_FALSE(connector_.isExpired());
  request();
  EXPECT_EQ(lastError().errorDescription, "Token is not in correct format");
  clock_.turn(milliseconds(60'000));
  request();
  EXPECT_EQ(transport_->waiting(), 1U);
}

TEST_F(OAuthConnectorTest, withoutCredentialsNothingIsAskedFor) {
  OAuthConnector connector;
  EXPECT_TRUE(connector.isExpired());
  std::optional<TernError> given;
  connector.requestToken([&](auto error, auto) { given = std::move(error); });
  ASSERT_TRUE(given.has_value());
  EXPECT_EQ(given->code, "TN002");
  EXPECT_EQ(given->message, "Please Authenticate");
  EXPECT_EQ(given->errorDescription,
            "Please authenticate with client_id and client_secret before requesting access token");
  EXPECT_TRUE(transport_->requests().empty());
}

TEST_F(OAuthConnectorTest, aTimeWithoutAMomentIsExpired) {
  connector_.setExpirationTime(5);
  EXPECT_FALSE(connector_.isExpired());
  connector_.setRefreshTime(std::nullopt);
  EXPECT_TRUE(connector_.isExpired());
  connector_.setExpirationTime(0);
  EXPECT_TRUE(connector_.isExpired());
  connector_.setExpiryTime(-1);
  EXPECT_TRUE(connector_.isExpired());
}

TEST_F(OAuthConnectorTest, ofTwoRequestsTheLastAnswerStays) {
  request();
  request();
  EXPECT_EQ(transport_->waiting(), 2U);
  transport_->answer(token("one", "60"));
  transport_->answer(token("two", "70"));
  EXPECT_EQ(headers_[0]["Authorization"].text(), "Bearer one");
  EXPECT_EQ(headers_[1]["Authorization"].text(), "Bearer two");
  EXPECT_EQ(connector_.accessToken(), "two");
  EXPECT_EQ(connector_.expiryTime(), 70);
}

TEST_F(OAuthConnectorTest, aConnectorMayGoBeforeItsAnswerComes) {
  std::optional<std::string> given;
  {
    OAuthConnector connector;
    connector.setCredentialsWithClientId("me", "secret", "https://a");
    connector.requestToken([&](auto, auto answer) { given = std::move(answer); });
  }
  transport_->answer(token("one", "60"));
  EXPECT_EQ(given, "one");
}

TEST_F(OAuthConnectorTest, aCompletionMayUseTheConnector) {
  connector_.requestToken([&](auto, auto) { connector_.logout(); });
  transport_->answer(token("one", "60"));
  EXPECT_EQ(connector_.accessToken(), std::nullopt);
}

TEST_F(OAuthConnectorTest, errorsAndLogShowNoSecret) {
  connector_.setCredentialsWithClientId("me", "s3cr3t", "http://user:s3cr3t@a");
  setHttpTransport(makeHttpTransport());
  std::promise<TernError> given;
  connector_.requestToken([&](auto error, auto) { given.set_value(error.value()); });
  const TernError error = test::await(given, "the error");
  EXPECT_THAT(error.message + error.errorDescription, Not(HasSubstr("s3cr3t")));
  EXPECT_THAT(log_.take(), ElementsAre());
}

TEST(OAuthConnector, thereIsOneForTheProcess) {
  const auto connector = OAuthConnector::sharedInstance();
  ASSERT_NE(connector, nullptr);
  EXPECT_EQ(OAuthConnector::sharedInstance(), connector);
}

TEST(OAuthConnectorConcurrent, requestsOverTheNetworkNeverSeeHalfAToken) {
  // The token's name is the time that it is valid for.
  std::atomic<int> issued = 0;
  LoopbackServer server([&](const LoopbackServer::Request&) {
    const std::string number = std::to_string(1000 + ++issued);
    return LoopbackServer::Reply{httpAnswer("200 OK", *token(number, number).body)};
  });
  auto connector = std::make_shared<OAuthConnector>();
  connector->setCredentialsWithClientId("me", "secret", server.url());
  std::vector<std::thread> callers;
  for (int caller = 0; caller < 4; ++caller) {
    callers.emplace_back([&] {
      for (int i = 0; i < 25; ++i) {
        std::promise<Value> given;
        connector->getAccessTokenInHeader(
            {}, [&](auto, Value headers) { given.set_value(std::move(headers)); });
        EXPECT_THAT(std::string(test::await(given, "the header")["Authorization"].text()),
                    testing::StartsWith("Bearer 1"));
        connector->setRefreshTime(std::nullopt);
      }
    });
  }
  for (std::thread& caller : callers) caller.join();
  EXPECT_EQ(connector->accessToken(), std::to_string(static_cast<int>(connector->expiryTime())));
}

TEST(OAuthConnectorConcurrent, aConnectorMayGoWhileItsRequestsRun) {
  LoopbackServer server([](const LoopbackServer::Request&) {
    return LoopbackServer::Reply{httpAnswer("200 OK", *token("t", "60").body)};
  });
  std::vector<std::promise<std::optional<std::string>>> given(20);
  for (auto& promise : given) {
    OAuthConnector connector;
    connector.setCredentialsWithClientId("me", "secret", server.url());
    connector.requestToken([&](auto, auto answer) { promise.set_value(std::move(answer)); });
  }
  for (auto& promise : given) EXPECT_EQ(test::await(promise, "a token"), "t");
}

}  // namespace
}  // namespace tern
