#include "TernCoreKit/service/HTTPClient.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <condition_variable>
#include <cstdio>
#include <limits>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include "tests/support/FakeTransport.hpp"
#include "tests/support/LoopbackServer.hpp"
#include "tests/support/Waiting.hpp"

namespace tern {
namespace {

using test::FakeTransport;
using test::httpAnswer;
using test::LoopbackServer;
using test::ScopedHttpTransport;
using testing::ElementsAre;

using Reply = LoopbackServer::Reply;

// What a completion was given, each time it was called.
struct Outcome {
  std::optional<std::string> error;
  std::int64_t status = 0;
  Value answer;
  friend bool operator==(const Outcome&, const Outcome&) = default;
};

void PrintTo(const Outcome& outcome, std::ostream* out) {
  *out << outcome.error.value_or("no error") << ", " << outcome.status;
}

class Outcomes {
 public:
  HTTPClient::Completion next() {
    return [this](std::optional<std::string> error, std::int64_t status, Value answer) {
      const std::lock_guard lock(mutex_);
      all_.push_back({std::move(error), status, std::move(answer)});
      came_.notify_all();
    };
  }
  std::vector<Outcome> all() const {
    const std::lock_guard lock(mutex_);
    return all_;
  }
  void await(std::size_t count) {
    std::unique_lock lock(mutex_);
    test::awaitUntil(
        came_, lock, [&] { return all_.size() >= count; }, "the last outcome");
  }

 private:
  mutable std::mutex mutex_;
  std::condition_variable came_;
  std::vector<Outcome> all_;  // guarded by mutex_
};

const Value form = Value::map({{"Content-Type", "application/x-www-form-urlencoded"}});

// Requests as a transport gets them.
class HTTPClientRequest : public testing::Test {
 protected:
  ~HTTPClientRequest() override { transport_->answerAll({}); }

  HttpRequest sent() const {
    const auto requests = transport_->requests();
    EXPECT_EQ(requests.size(), 1U);
    return requests.empty() ? HttpRequest{} : requests[0];
  }

  const std::shared_ptr<FakeTransport> transport_ = std::make_shared<FakeTransport>();
  const ScopedHttpTransport scope_{transport_};
  const std::shared_ptr<HTTPClient> client_ = HTTPClient::initWithHostURL("https://a.b:1/base");
  Outcomes outcomes_;
};

TEST_F(HTTPClientRequest, aGetGoesToTheHostAndThePath) {
  client_->GET("/c?v=4.12&d=e,f", Value::map({{"X", "1"}, {"Y", 2.5}}), outcomes_.next());
  EXPECT_EQ(sent().url, "https://a.b:1/base/c?v=4.12&d=e,f");
  EXPECT_EQ(sent().method, "GET");
  EXPECT_THAT(sent().headers, ElementsAre(HttpHeader{"X", "1"}, HttpHeader{"Y", "2.5"}));
  EXPECT_EQ(sent().body, std::nullopt);
}

TEST_F(HTTPClientRequest, aFullUrlStandsAlone) {
  client_->GETWithFullUrl("http://c/d e", {}, outcomes_.next());
  EXPECT_EQ(sent().url, "http://c/d%20e");
  EXPECT_EQ(sent().method, "GET");
  EXPECT_THAT(sent().headers, ElementsAre());
}

TEST_F(HTTPClientRequest, aDeleteHasNoBody) {
  client_->DELETE("/c", {}, outcomes_.next());
  EXPECT_EQ(sent().url, "https://a.b:1/base/c");
  EXPECT_EQ(sent().method, "DELETE");
  EXPECT_EQ(sent().body, std::nullopt);
}

TEST_F(HTTPClientRequest, aPostIsJsonUnlessItIsAForm) {
  client_->POST("/c", Value::map({{"a", "b"}}), Value::map({{"Content-Type", "a/b"}}),
                outcomes_.next());
  EXPECT_EQ(sent().method, "POST");
  EXPECT_EQ(sent().body, "{\n \"a\": \"b\"\n}");
  EXPECT_THAT(sent().headers, ElementsAre(HttpHeader{"Content-Type", "a/b"}));
}

TEST_F(HTTPClientRequest, aFormHasItsValuesEscaped) {
  client_->POST("/c", Value::map({{"a", "x y&z"}}), form, outcomes_.next());
  EXPECT_EQ(sent().body, "a=x%20y%26z");
  EXPECT_EQ(sent().headers.size(), 1U);
}

TEST_F(HTTPClientRequest, aFormKeepsTheOrderAndTheKeysOfItsParameters) {
  client_->POST("/c", Value::map({{"b c", 1}, {"a", true}, {"", nullptr}}), form, outcomes_.next());
  EXPECT_EQ(sent().body, "b c=1&a=1&=%3Cnull%3E");
}

TEST_F(HTTPClientRequest, aPutIsJsonWhateverItsContentType) {
  client_->PUT("/c", Value::map({{"a", 1}}), form, outcomes_.next());
  EXPECT_EQ(sent().method, "PUT");
  EXPECT_EQ(sent().body, "{\n \"a\": 1\n}");
}

TEST_F(HTTPClientRequest, aFormWithoutParametersIsNotSent) {
  client_->POST("/c", Value::map(), form, outcomes_.next());
  client_->POST("/c", {}, form, outcomes_.next());
  const Outcome none{"No request body provided", 405, {}};
  EXPECT_THAT(outcomes_.all(), ElementsAre(none, none));
  EXPECT_TRUE(transport_->requests().empty());
}

TEST_F(HTTPClientRequest, parametersThatAreNoJsonAreNotSent) {
  const Value parameters = Value::map({{"a", std::numeric_limits<double>::quiet_NaN()}});
  client_->POST("/c", parameters, {}, outcomes_.next());
  client_->PUT("/c", parameters, {}, outcomes_.next());
  const Outcome bad{"Error parsing JSON: A number is not finite.", 409, {}};
  EXPECT_THAT(outcomes_.all(), ElementsAre(bad, bad));
  EXPECT_TRUE(transport_->requests().empty());
}

TEST_F(HTTPClientRequest, aPathIsEscapedEvenWhereItHoldsEscapes) {
  client_->GET("/a b%20c", {}, outcomes_.next());
  EXPECT_EQ(sent().url, "https://a.b:1/base/a%20b%2520c");
}

TEST_F(HTTPClientRequest, bytesThatAreNoUtf8AreEscapedAsTheyStand) {
  client_->GET(std::string("/\xC3\xA4\xFF\0", 5), {}, outcomes_.next());
  EXPECT_EQ(sent().url, "https://a.b:1/base/%C3%A4%FF%00");
}

TEST_F(HTTPClientRequest, aGetThatAsksWhereItsAnswerCameFromIsTold) {
  std::vector<bool> left;
  for (const bool isElsewhere : {false, true}) {
    client_->GETWithOrigin("/a", {},
                           [&](const std::optional<std::string>& error, std::int64_t status,
                               const Value& answer, bool leftOrigin) {
                             EXPECT_FALSE(error);
                             EXPECT_EQ(status, 200);
                             EXPECT_TRUE(answer.isMap());
                             left.push_back(leftOrigin);
                           });
    transport_->answer({.status = 200, .body = "{}", .leftOrigin = isElsewhere});
  }
  EXPECT_THAT(left, testing::ElementsAre(false, true));
}

TEST_F(HTTPClientRequest, aClientMayGoBeforeItsAnswerComes) {
  HTTPClient::initWithHostURL("http://a")->GET("/b", {}, outcomes_.next());
  transport_->answer({.status = 200, .body = "{}"});
  EXPECT_THAT(outcomes_.all(), ElementsAre(Outcome{std::nullopt, 200, Value::map()}));
}

TEST_F(HTTPClientRequest, aClientWithATransportOfItsOwnSendsOverThat) {
  const auto own = std::make_shared<test::FakeTransport>();
  HTTPClient::initWithHostURL("http://a", own)->GET("/b", {}, outcomes_.next());
  EXPECT_EQ(own->requests().at(0).url, "http://a/b");
  EXPECT_EQ(transport_->requests().size(), 0U);
  own->answer({.status = 200, .body = "{}"});
  EXPECT_THAT(outcomes_.all(), ElementsAre(Outcome{std::nullopt, 200, Value::map()}));
}

TEST_F(HTTPClientRequest, withoutAnAnswerThePathOfTheCallerIsNamed) {
  client_->GET("/c d", {}, outcomes_.next());
  transport_->answer({});
  client_->GET("/c", {}, outcomes_.next());
  transport_->answer({.error = "The network is gone"});
  client_->GET("/c", {}, outcomes_.next());
  transport_->answer({.status = 304, .error = "whatever"});
  EXPECT_THAT(outcomes_.all(),
              ElementsAre(Outcome{"An error occured during /c d request", 444, {}},
                          Outcome{"The network is gone", 444, {}}, Outcome{std::nullopt, 304, {}}));
}

constexpr std::string_view latinLetters =
    "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789";

TEST(HTTPClient, eachByteOfAUrlStaysOrIsEscaped) {
  const auto transport =
      std::make_shared<FakeTransport>([](const HttpRequest&) { return HttpResponse{}; });
  const ScopedHttpTransport scope(transport);
  const std::string staying = std::string(latinLetters) + "!$&'()*+,-./:;=?@_~";
  for (int byte = 0; byte < 256; ++byte) {
    const std::string text(1, static_cast<char>(byte));
    HTTPClient::initWithHostURL("")->GET(text, {}, [](auto, auto, auto) {});
    char escaped[4];
    std::snprintf(escaped, sizeof escaped, "%%%02X", static_cast<unsigned>(byte));
    const bool stays = staying.find(text) != std::string::npos;
    EXPECT_EQ(transport->requests().back().url, stays ? text : escaped);
  }
}

RC_GTEST_PROP(HTTPClient, anEscapedValueHoldsOnlyLettersDigitsAndFourMarks, (std::string text)) {
  const std::string escaped = HTTPClient::URLEncodeStringFromString(text);
  const std::string allowed = std::string(latinLetters) + "-._~%";
  RC_ASSERT(escaped.find_first_not_of(allowed) == std::string::npos);
  // Unescaping gives the text back.
  std::string back;
  for (std::size_t i = 0; i < escaped.size(); ++i) {
    if (escaped[i] == '%') {
      back += static_cast<char>(std::stoi(escaped.substr(i + 1, 2), nullptr, 16));
      i += 2;
    } else {
      back += escaped[i];
    }
  }
  RC_ASSERT(back == text);
}

TEST(HTTPClient, theMarksOfAUrlAreEscapedInAValue) {
  EXPECT_EQ(HTTPClient::URLEncodeStringFromString("!*'();:@&=+$,/?%#[]"),
            "%21%2A%27%28%29%3B%3A%40%26%3D%2B%24%2C%2F%3F%25%23%5B%5D");
}

// Answers over the network, as the caller sees them.
struct Answer {
  std::string name;
  Reply reply;
  std::int64_t status;
  // The error, or how it begins; empty for none.
  std::string error;
  Value answer = {};
};

void PrintTo(const Answer& answer, std::ostream* out) { *out << answer.name; }

class HTTPClientAnswer : public testing::TestWithParam<Answer> {};

TEST_P(HTTPClientAnswer, isHandedOnOnce) {
  const ScopedHttpTransport scope(makeHttpTransport(
      {.stallTimeout = std::chrono::milliseconds(100), .mostBodyBytes = 200'000}));
  LoopbackServer server([](const LoopbackServer::Request&) { return GetParam().reply; });
  Outcomes outcomes;
  HTTPClient::initWithHostURL(server.url())->GET("/a", {}, outcomes.next());
  outcomes.await(1);
  // Whatever else the transport would call, it calls before it goes.
  setHttpTransport(nullptr);
  ASSERT_EQ(outcomes.all().size(), 1U);
  const Outcome outcome = outcomes.all()[0];
  EXPECT_EQ(outcome.status, GetParam().status);
  EXPECT_EQ(outcome.error.has_value(), !GetParam().error.empty());
  EXPECT_THAT(outcome.error.value_or(""), testing::StartsWith(GetParam().error));
  EXPECT_EQ(outcome.answer, GetParam().answer);
}

const Value record = Value::map({{"statusCode", 7}, {"message", "m"}});
const std::string json = R"({"statusCode":7,"message":"m"})";
const std::string html = "<html>No</html>";
const std::string parsing = "Error parsing JSON: ";

const std::vector<Answer> answers = {
    {"ok", {httpAnswer("200 OK", json)}, 200, "", record},
    {"unauthorized", {httpAnswer("401 No", json)}, 401, "", record},
    {"forbidden", {httpAnswer("403 No", json)}, 403, "", record},
    {"notFoundAsJson", {httpAnswer("404 No", json)}, 404, "", record},
    {"notFoundAsHtml", {httpAnswer("404 No", html)}, 404, parsing},
    {"unavailable", {httpAnswer("503 No", json)}, 503, "", record},
    {"serverErrorWithAText", {httpAnswer("500 No", R"({"statusDesc":"broken"})")}, 500, "broken"},
    {"serverErrorWithoutText", {httpAnswer("500 No", json)}, 500, "Internal Server Error"},
    {"serverErrorWithAnotherKindOfText",
     {httpAnswer("500 No", R"({"statusDesc":[1]})")},
     500,
     "Internal Server Error"},
    {"serverErrorAsAList", {httpAnswer("500 No", "[1]")}, 500, "Internal Server Error"},
    {"serverErrorAsHtml", {httpAnswer("500 No", html)}, 500, parsing},
    {"notModified", {httpAnswer("304 Not Modified", "")}, 304, ""},
    {"notModifiedWithABody", {httpAnswer("304 Not Modified", json)}, 304, ""},
    {"okWithoutJson", {httpAnswer("200 OK", html)}, 200, parsing},
    {"aList", {httpAnswer("200 OK", "[1]")}, 200, "", Value::list({1})},
    {"anEmptyBody", {httpAnswer("200 OK", "")}, 200, "An error occured during /a request"},
    {"chunked",
     {"HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n1e\r\n" + json + "\r\n0\r\n\r\n"},
     200,
     "",
     record},
    {"aCutBody",
     {"HTTP/1.1 200 OK\r\nContent-Length: 99\r\n\r\n" + json, true},
     200,
     "transfer closed"},
    {"aClosedConnection", {"", true}, 444, "Empty reply"},
    {"silence", {""}, 444, "The request timed out"},
    {"aHugeBody",
     {httpAnswer("200 OK", std::string(200'001, ' '))},
     200,
     "The answer is longer than"},
    {"deepNesting", {httpAnswer("200 OK", std::string(100'000, '['))}, 200, parsing},
    {"badUtf8", {httpAnswer("200 OK", "{\"a\":\"\xC3\x28\"}")}, 200, parsing},
};

INSTANTIATE_TEST_SUITE_P(Each, HTTPClientAnswer, testing::ValuesIn(answers),
                         [](const auto& each) { return each.param.name; });

TEST(HTTPClientConcurrent, clientsMayGoAndTransportsBeReplacedWhileRequestsRun) {
  LoopbackServer server(
      [](const LoopbackServer::Request&) { return Reply{httpAnswer("200 OK", "{}")}; });
  Outcomes outcomes;
  std::thread replacer([] {
    for (int i = 0; i < 20; ++i) setHttpTransport(i % 2 == 0 ? makeHttpTransport() : nullptr);
  });
  std::vector<std::thread> callers;
  for (int caller = 0; caller < 3; ++caller) {
    callers.emplace_back([&] {
      for (int i = 0; i < 30; ++i) {
        HTTPClient::initWithHostURL(server.url())->GET("/a", {}, outcomes.next());
      }
    });
  }
  for (std::thread& caller : callers) caller.join();
  replacer.join();
  setHttpTransport(nullptr);
  outcomes.await(90);
  const Outcome ok{std::nullopt, 200, Value::map()};
  EXPECT_THAT(outcomes.all(), testing::AllOf(testing::SizeIs(90), testing::Each(ok)));
}

}  // namespace
}  // namespace tern
