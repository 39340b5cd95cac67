#include "TernCoreKit/platform/detail/curl/CurlTransport.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <cstdlib>
#include <future>
#include <memory>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "tests/support/DescriptorLimit.hpp"
#include "tests/support/FailingAllocation.hpp"
#include "tests/support/FailingSystemCall.hpp"
#include "tests/support/FakeTransport.hpp"
#include "tests/support/LoopbackServer.hpp"
#include "tests/support/Process.hpp"
#include "tests/support/TemporaryFolder.hpp"
#include "tests/support/Waiting.hpp"

namespace tern::detail {
namespace {

using std::chrono::milliseconds;
using test::exchange;
using test::httpAnswer;
using test::LoopbackServer;
using testing::AnyOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

using Reply = LoopbackServer::Reply;

LoopbackServer::Handler always(Reply reply) {
  return [reply = std::move(reply)](const LoopbackServer::Request&) { return reply; };
}

LoopbackServer::Handler alwaysOk() { return always({.bytes = httpAnswer("200 OK", "{}")}); }

bool asksFor(const LoopbackServer::Request& request, std::string_view target) {
  return request.head.find(" " + std::string(target) + " HTTP/") != std::string::npos;
}

TEST(CurlTransport, aRequestIsSentAsItStands) {
  LoopbackServer server(alwaysOk());
  CurlTransport transport({});
  const std::string host = "Host: " + server.url().substr(7) + "\r\n";
  const std::string own = "User-Agent: TernCoreKit\r\nAccept: */*\r\nAccept-Encoding: gzip\r\n";

  exchange(transport, {.url = server.url() + "/a%20b?c={d}[1-3]",
                       .headers = {{"X", "1"}, {"X", "2"}, {"Empty", ""}}});
  exchange(transport, {.url = server.url() + "/",
                       .method = "POST",
                       .headers = {{"Accept", "a/b"}},
                       .body = std::string("a\0b", 3)});
  exchange(transport, {.url = server.url() + "/p", .method = "PUT"});
  exchange(transport, {.url = server.url() + "/d", .method = "DELETE"});

  const auto requests = server.requests();
  ASSERT_EQ(requests.size(), 4U);
  EXPECT_EQ(requests[0].head,
            "GET /a%20b?c={d}[1-3] HTTP/1.1\r\n" + host + own + "X: 1\r\nX: 2\r\nEmpty:\r\n\r\n");
  EXPECT_EQ(requests[1].head, "POST / HTTP/1.1\r\n" + host +
                                  "User-Agent: TernCoreKit\r\nAccept-Encoding: gzip\r\n"
                                  "Accept: a/b\r\nContent-Length: 3\r\n\r\n");
  EXPECT_EQ(requests[1].body, std::string("a\0b", 3));
  EXPECT_EQ(requests[2].head, "PUT /p HTTP/1.1\r\n" + host + own + "Content-Length: 0\r\n\r\n");
  EXPECT_EQ(requests[3].head, "DELETE /d HTTP/1.1\r\n" + host + own + "\r\n");
}

TEST(CurlTransport, connectionsAreKeptAndAnswersAreNot) {
  LoopbackServer server(always(
      {.bytes = httpAnswer("200 OK", "{}", "Cache-Control: max-age=1000\r\nSet-Cookie: a=b\r\n")}));
  CurlTransport transport({});
  for (int i = 0; i < 3; ++i) exchange(transport, {.url = server.url() + "/same"});
  EXPECT_EQ(server.connections(), 1U);
  ASSERT_EQ(server.requests().size(), 3U);
  EXPECT_THAT(server.requests()[2].head, Not(HasSubstr("Cookie")));
}

TEST(CurlTransport, theEnvironmentNamesNoProxy) {
  LoopbackServer server(alwaysOk());
  LoopbackServer proxy(alwaysOk());
  CurlTransport transport({});
  setenv("http_proxy", proxy.url().c_str(), /*overwrite=*/1);
  EXPECT_EQ(exchange(transport, {.url = server.url()}).status, 200);
  unsetenv("http_proxy");
  EXPECT_EQ(proxy.connections(), 0U);
}

TEST(CurlTransport, whatHttpDoesNotAllowIsNeverSent) {
  LoopbackServer server(alwaysOk());
  CurlTransport transport({});
  const std::string url = server.url();
  for (const HttpRequest& request :
       {HttpRequest{.url = url, .headers = {{"X", "1\r\nY: 2"}}}, HttpRequest{.url = url + "/\n"},
        HttpRequest{.url = url, .method = "A\r\nB"}, HttpRequest{.url = "file:///etc/passwd"}}) {
    const HttpResponse response = exchange(transport, request);
    EXPECT_EQ(response.status, 0);
    EXPECT_EQ(response.body, std::nullopt);
    EXPECT_TRUE(response.error.has_value());
  }
  EXPECT_EQ(server.connections(), 0U);
}

// {"a":1} and 4096 times "a".
const std::string zippedJson(
    "\x1f\x8b\x08\x00\x00\x00\x00\x00\x02\xff\xab\x56\x4a\x54\xb2\x32\xac\x05\x00\xaf\xac\x1b\x56"
    "\x07\x00\x00\x00",
    27);
const std::string zippedMany(
    "\x1f\x8b\x08\x00\x00\x00\x00\x00\x02\xff\xed\xc1\x01\x0d\x00\x00\x00\xc2\xa0\xac\xef\x5f\xc2"
    "\x1e\x0e\x28\x00\x00\x00\xe0\xdd\x00\x73\xdc\x99\x9c\x00\x10\x00\x00",
    40);
const std::string zip = "Content-Encoding: gzip\r\n";
constexpr std::size_t bodyBound = 4095;

struct Answer {
  std::string name;
  Reply reply;
  int status;
  std::optional<std::string> body;
  bool isError = false;
};

void PrintTo(const Answer& answer, std::ostream* out) { *out << answer.name; }

class CurlTransportAnswer : public testing::TestWithParam<Answer> {};

TEST_P(CurlTransportAnswer, isReportedAsItCame) {
  LoopbackServer server(always(GetParam().reply));
  CurlTransport transport({.stallTimeout = milliseconds(100), .mostBodyBytes = bodyBound});
  const HttpResponse response = exchange(transport, {.url = server.url()});
  EXPECT_EQ(response.status, GetParam().status);
  EXPECT_EQ(response.body, GetParam().body);
  EXPECT_EQ(response.error.has_value(), GetParam().isError) << response.error.value_or("");
}

const std::vector<Answer> answers = {
    {"withLength", {httpAnswer("200 OK", "{}")}, 200, "{}"},
    {"untilTheConnectionEnds", {"HTTP/1.1 200 OK\r\n\r\n{}", true}, 200, "{}"},
    {"chunked",
     {"HTTP/1.1 404 No\r\nTransfer-Encoding: chunked\r\n\r\n2\r\n{\"\r\n5\r\na\":1}\r\n0\r\n\r\n"},
     404,
     "{\"a\":1}"},
    {"zipped", {httpAnswer("200 OK", zippedJson, zip)}, 200, "{\"a\":1}"},
    {"behindAnInterimOne",
     {"HTTP/1.1 103 Early Hints\r\n\r\n" + httpAnswer("500 No", "x")},
     500,
     "x"},
    {"empty", {httpAnswer("200 OK", "")}, 200, std::nullopt},
    {"notModifiedWithABody", {httpAnswer("304 Not Modified", "{}")}, 304, std::nullopt},
    {"asLongAsAllowed",
     {httpAnswer("200 OK", std::string(bodyBound, 'a'))},
     200,
     std::string(bodyBound, 'a')},
    {"tooLong", {httpAnswer("200 OK", std::string(bodyBound + 1, 'a'))}, 200, std::nullopt, true},
    {"tooLongUnzipped", {httpAnswer("200 OK", zippedMany, zip)}, 200, std::nullopt, true},
    {"zippedWrongly", {httpAnswer("200 OK", "no gzip at all", zip)}, 200, std::nullopt, true},
    {"zippedAndCut",
     {httpAnswer("200 OK", zippedJson, zip).substr(0, 80), true},
     200,
     std::nullopt,
     true},
    {"zippedHalfInAWholeAnswer",
     {httpAnswer("200 OK", zippedJson.substr(0, 20), zip)},
     200,
     std::nullopt,
     true},
    {"zippedWithoutItsLastByte",
     {httpAnswer("200 OK", zippedJson.substr(0, zippedJson.size() - 1), zip)},
     200,
     std::nullopt,
     true},
    {"zippedTwice", {httpAnswer("200 OK", zippedJson + zippedJson, zip)}, 200, R"({"a":1}{"a":1})"},
    {"zippedWithMoreBehind",
     {httpAnswer("200 OK", zippedJson + "more", zip)},
     200,
     std::nullopt,
     true},
    {"zippedByAnOldName",
     {httpAnswer("200 OK", zippedJson, "Content-Encoding: X-GZIP\r\n")},
     200,
     R"({"a":1})"},
    {"inAnEncodingThatWasNotAskedFor",
     {httpAnswer("200 OK", "{}", "Content-Encoding: br\r\n")},
     200,
     std::nullopt,
     true},
    {"inAnEncodingOfAnEncoding",
     {httpAnswer("200 OK", zippedJson, zip + zip)},
     200,
     std::nullopt,
     true},
    {"cut",
     {"HTTP/1.1 200 OK\r\nContent-Length: 9\r\n\r\n{\"a\":1}", true},
     200,
     std::nullopt,
     true},
    {"cutInAChunk",
     {"HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n9\r\n{}", true},
     200,
     std::nullopt,
     true},
    {"ofALengthThatIsNone",
     {"HTTP/1.1 200 OK\r\nContent-Length: many\r\n\r\n{}", true},
     200,
     std::nullopt,
     true},
    {"nothingAtAll", {"", true}, 0, std::nullopt, true},
    {"noHttp", {"hello\r\n\r\n", true}, 0, std::nullopt, true},
    // Was an answer without an error, whose body counted.
    {"withoutAStatus", {"HTTP/200 OK\r\n\r\n{}", true}, 0, std::nullopt, true},
    {"withAStatusOfFiveDigits", {"HTTP/2 20000 OK\r\n\r\n{}", true}, 0, std::nullopt, true},
    {"headersWithoutEnd",
     {"HTTP/1.1 200 OK\r\n" + std::string(2U << 20U, 'a'), true},
     200,
     std::nullopt,
     true},
    {"silence", {""}, 0, std::nullopt, true},
    {"silenceBehindTheHeaders",
     {"HTTP/1.1 200 OK\r\nContent-Length: 2\r\n\r\n{"},
     200,
     std::nullopt,
     true},
};

INSTANTIATE_TEST_SUITE_P(Each, CurlTransportAnswer, testing::ValuesIn(answers),
                         [](const auto& each) { return each.param.name; });

TEST(CurlTransport, errorsSayWhatHappened) {
  const auto errorOf = [](Reply reply) {
    LoopbackServer server(always(std::move(reply)));
    CurlTransport transport({.stallTimeout = milliseconds(100), .mostBodyBytes = 10});
    return exchange(transport, {.url = server.url()}).error.value_or("");
  };
  EXPECT_EQ(errorOf({""}), "The request timed out");
  EXPECT_EQ(errorOf({httpAnswer("200 OK", std::string(11, 'a'))}),
            "The answer is longer than 10 bytes");
  EXPECT_EQ(errorOf({"", true}), "Empty reply from server");
  EXPECT_THAT(errorOf({"HTTP/1.1 200 OK\r\nContent-Length: 9\r\n\r\n{}", true}),
              HasSubstr("7 bytes remaining"));
}

TEST(CurlTransport, aPortThatNobodyListensToIsAnErrorWithoutAStatus) {
  const std::string url = LoopbackServer(alwaysOk()).url();
  CurlTransport transport({});
  const HttpResponse response = exchange(transport, {.url = url + "/a?secret"});
  EXPECT_EQ(response.status, 0);
  EXPECT_THAT(response.error.value_or(""), StartsWith("Failed to connect to 127.0.0.1"));
}

// Sends "/to/<URL>" on to that URL and answers everything else.
Reply redirecting(const LoopbackServer::Request& request) {
  const std::string_view head = request.head;
  const std::size_t place = head.find(" /to/");
  if (place == std::string_view::npos) return {.bytes = httpAnswer("200 OK", "there")};
  const std::string_view target = head.substr(place + 5, head.find(" HTTP/") - place - 5);
  return {.bytes =
              httpAnswer("307 Elsewhere", "not this", "Location: " + std::string(target) + "\r\n")};
}

TEST(CurlTransport, aRedirectOnTheSameHostKeepsTheToken) {
  LoopbackServer server(redirecting);
  CurlTransport transport({});
  const HttpResponse response = exchange(
      transport, {.url = server.url() + "/to//b", .headers = {{"Authorization", "Bearer t"}}});
  EXPECT_EQ(response.status, 200);
  EXPECT_EQ(response.body, "there");
  ASSERT_EQ(server.requests().size(), 2U);
  EXPECT_TRUE(asksFor(server.requests()[1], "/b"));
  EXPECT_THAT(server.requests()[1].head, HasSubstr("Authorization: Bearer t\r\n"));
}

TEST(CurlTransport, aRedirectToAnotherHostLosesTheToken) {
  LoopbackServer server(redirecting);
  LoopbackServer other(redirecting);
  CurlTransport transport({});
  const HttpResponse response =
      exchange(transport, {.url = server.url() + "/to/" + other.url() + "/b",
                           .headers = {{"authorization", "Bearer t"}, {"X", "1"}}});
  EXPECT_EQ(response.body, "there");
  ASSERT_EQ(other.requests().size(), 1U);
  EXPECT_THAT(other.requests()[0].head, HasSubstr("X: 1\r\n"));
  EXPECT_THAT(other.requests()[0].head, Not(HasSubstr("Bearer")));
}

TEST(CurlTransport, anAnswerSaysWhetherItLeftItsOrigin) {
  LoopbackServer server(redirecting);
  LoopbackServer other(redirecting);
  CurlTransport transport({});
  const auto leaves = [&](const std::string& target) {
    return exchange(transport, {.url = server.url() + target}).leftOrigin;
  };
  EXPECT_FALSE(leaves("/b"));
  EXPECT_FALSE(leaves("/to//b"));
  EXPECT_FALSE(leaves("/to/" + server.url() + "/b"));
  EXPECT_TRUE(leaves("/to/" + other.url() + "/b"));
  EXPECT_TRUE(leaves("/to/" + other.url() + "/to/" + server.url() + "/b")) << "and came back";
}

TEST(CurlTransport, aBodyGoesNoFurtherThanItsOwnHost) {
  LoopbackServer server(redirecting);
  LoopbackServer other(redirecting);
  CurlTransport transport({});
  const HttpResponse near = exchange(
      transport, {.url = server.url() + "/to//b", .method = "POST", .body = "client_secret=s"});
  EXPECT_EQ(near.body, "there");
  EXPECT_EQ(server.requests().back().body, "client_secret=s");

  const HttpResponse far = exchange(
      transport,
      {.url = server.url() + "/to/" + other.url(), .method = "POST", .body = "client_secret=s"});
  EXPECT_EQ(far.status, 307);
  EXPECT_EQ(far.body, std::nullopt);
  EXPECT_EQ(far.error, "Redirect refused: it would carry the request's body to another host");
  EXPECT_EQ(other.connections(), 0U);
}

TEST(CurlTransport, aRedirectToAFileIsRefused) {
  LoopbackServer server(redirecting);
  CurlTransport transport({});
  const HttpResponse response =
      exchange(transport, {.url = server.url() + "/to/file:///etc/passwd"});
  EXPECT_EQ(response.status, 307);
  EXPECT_EQ(response.body, std::nullopt);
  EXPECT_EQ(response.error, "Redirect refused: The URL is neither http nor https");
}

TEST(CurlTransport, aLoopOfRedirectsEnds) {
  LoopbackServer server(always({.bytes = httpAnswer("302 Found", "", "Location: /again\r\n")}));
  CurlTransport transport({.mostRedirects = 3});
  const HttpResponse response = exchange(transport, {.url = server.url()});
  EXPECT_EQ(response.status, 302);
  EXPECT_EQ(response.error, "Redirect refused: there were more than 3");
  EXPECT_EQ(server.requests().size(), 4U);
}

// An error when the answer takes nearly as long as a transport sleeps that nobody can wake.
HttpResponse exchangeAtOnce(HttpTransport& transport, HttpRequest request) {
  const auto answered = std::make_shared<std::promise<HttpResponse>>();
  transport.send(std::move(request),
                 [answered](HttpResponse response) { answered->set_value(std::move(response)); });
  auto response = answered->get_future();
  if (response.wait_for(std::chrono::seconds(20)) == std::future_status::ready) {
    return response.get();
  }
  return {.error = "nobody woke the transport"};
}

TEST(CurlTransport, oneThatIsMadeWhileDescriptorsAreShortWorksWhenTheyAreNot) {
  LoopbackServer server(alwaysOk());
  std::optional<CurlTransport> transport;
  for (const unsigned more : {0U, 1U, 2U, 3U, 4U}) {
    transport.reset();
    HttpResponse response;
    {
      const test::DescriptorLimit limit(more);
      transport.emplace(HttpSettings{.stallTimeout = milliseconds(1000)});
      response = exchange(*transport, {.url = server.url()});
    }
    EXPECT_TRUE(response.error || response.status == 200) << more;
    EXPECT_TRUE(response.error || more > 0) << "without one there is no connection";
    EXPECT_EQ(exchangeAtOnce(*transport, {.url = server.url()}).status, 200) << more;
  }
}

// An answer or an error each time, and answers again afterwards.
TEST(CurlTransportConcurrent, aRequestEndsWhateverAllocationFails) {
  LoopbackServer server(
      [](const LoopbackServer::Request& request) { return redirecting(request); });
  CurlTransport transport({.stallTimeout = std::chrono::seconds(10)});
  const std::string url = server.url() + "/to//b";
  struct Ended {
    std::atomic<int> times = 0;
    int status = 0;
    bool hasError = false;
  } ended;
  HttpRequest request{.url = url, .headers = {{"Authorization", "Bearer t"}}};
  const int failed = test::forFailingAllocations(
      test::FailingAllocation::Reach::process,
      [&] {
        transport.send(std::move(request), [&ended](const HttpResponse& response) {
          ended.status = response.status;
          ended.hasError = response.error.has_value();
          ++ended.times;
        });
        test::awaitUntil([&] { return ended.times == 1; }, "the answer");
      },
      [&] {
        ASSERT_TRUE(ended.hasError || ended.status == 200);
        ended.times = 0;
        request = {.url = url, .headers = {{"Authorization", "Bearer t"}}};
      });
  EXPECT_GE(failed, 8);
  EXPECT_EQ(exchange(transport, std::move(request)).body, "there");
}

TEST(CurlTransportConcurrent, aRequestEndsWhateverSystemCallFails) {
  LoopbackServer server(
      [](const LoopbackServer::Request& request) { return redirecting(request); });
  CurlTransport transport({.stallTimeout = std::chrono::seconds(10)});
  HttpResponse last;
  const int failed = test::forFailingSystemCalls(
      test::FailingAllocation::Reach::process,
      [&] { last = exchange(transport, {.url = server.url() + "/to//b"}); },
      [&] { ASSERT_TRUE(last.error.has_value() || last.body == "there"); });
  // How many calls a request makes depends on when its thread is woken, but it sends and receives
  // always: each fails alone, and with all that follow it.
  EXPECT_GE(failed, 4);
  EXPECT_EQ(exchange(transport, {.url = server.url() + "/to//b"}).body, "there");
}

TEST(CurlTransport, onlyCertificatesThatAreTrustedWillDo) {
  const test::TemporaryFolder folder;
  const std::string key = (folder.path() / "key.pem").string();
  const std::string certificate = (folder.path() / "certificate.pem").string();
  const test::ProcessResult made = test::runProcess(
      {"/usr/bin/env", "openssl", "req", "-x509", "-newkey", "rsa:2048", "-nodes", "-keyout", key,
       "-out", certificate, "-subj", "/CN=loopback", "-addext", "subjectAltName=IP:127.0.0.1"});
  ASSERT_EQ(made.status, 0) << made.diagnostics;
  // It ends after the two connections that are made below.
  test::Conversation server({"/usr/bin/env", "openssl", "s_server", "-accept", "127.0.0.1:0",
                             "-naccept", "2", "-www", "-cert", certificate, "-key", key});
  std::string address;
  while (!address.starts_with("ACCEPT ")) {
    address = server.hear();
    ASSERT_FALSE(address.empty());
  }
  const std::string url = "https://" + address.substr(7) + "/";

  CurlTransport strict({});
  const HttpResponse refused = exchange(strict, {.url = url});
  EXPECT_EQ(refused.status, 0);
  EXPECT_THAT(refused.error.value_or(""), HasSubstr("certificate"));
  CurlTransport trusting({.certificateFile = certificate});
  const HttpResponse answered = exchange(trusting, {.url = url});
  EXPECT_EQ(answered.status, 200);
  EXPECT_EQ(answered.error, std::nullopt);
}

// Counts completions and waits for a number of them.
class Completions {
 public:
  HttpTransport::Completion next() {
    return [this](HttpResponse response) {
      const std::lock_guard lock(mutex_);
      responses_.push_back(std::move(response));
      came_.notify_all();
    };
  }
  std::vector<HttpResponse> await(std::size_t count) {
    std::unique_lock lock(mutex_);
    test::awaitUntil(
        came_, lock, [&] { return responses_.size() >= count; }, "the last response");
    return responses_;
  }

 private:
  std::mutex mutex_;
  std::condition_variable came_;
  std::vector<HttpResponse> responses_;  // guarded by mutex_
};

TEST(CurlTransportConcurrent, manyRequestsFromSeveralThreadsAreEachAnsweredOnce) {
  LoopbackServer server([](const LoopbackServer::Request& request) {
    const std::size_t end = request.head.find(" HTTP/");
    return Reply{.bytes = httpAnswer("200 OK", request.head.substr(4, end - 4))};
  });
  std::atomic<int> right = 0;
  Completions completions;
  {
    CurlTransport transport({});
    std::vector<std::thread> callers;
    for (int caller = 0; caller < 4; ++caller) {
      callers.emplace_back([&, caller] {
        for (int i = 0; i < 50; ++i) {
          const std::string path = "/" + std::to_string(caller) + "/" + std::to_string(i);
          transport.send({.url = server.url() + path},
                         [&, path, completion = completions.next()](HttpResponse response) {
                           right += response.body == path ? 1 : 0;
                           completion(std::move(response));
                         });
        }
      });
    }
    for (std::thread& caller : callers) caller.join();
    completions.await(200);
  }
  EXPECT_EQ(completions.await(200).size(), 200U);
  EXPECT_EQ(right, 200);
  EXPECT_LE(server.connections(), 16U);
}

TEST(CurlTransportConcurrent, requestsUnderWayAreAnsweredWhenTheTransportGoes) {
  LoopbackServer server(always({.bytes = ""}));
  Completions completions;
  {
    CurlTransport transport({});
    // More than go at once.
    for (int i = 0; i < 40; ++i) transport.send({.url = server.url()}, completions.next());
    test::awaitUntil([&] { return !server.requests().empty(); }, "the first request");
  }
  const auto responses = completions.await(40);
  EXPECT_EQ(responses.size(), 40U);
  for (const HttpResponse& response : responses) {
    EXPECT_EQ(response.status, 0);
    EXPECT_EQ(response.error, "The request was cancelled");
  }
}

TEST(CurlTransportConcurrent, aCompletionMayReleaseTheTransport) {
  LoopbackServer server([](const LoopbackServer::Request& request) {
    return Reply{.bytes = asksFor(request, "/first") ? httpAnswer("200 OK", "{}") : ""};
  });
  Completions completions;
  auto transport = std::make_shared<CurlTransport>(HttpSettings{});
  for (int i = 0; i < 3; ++i) transport->send({.url = server.url() + "/other"}, completions.next());
  CurlTransport& sender = *transport;
  std::promise<void> mayGo;
  sender.send({.url = server.url() + "/first"},
              [&, held = std::move(transport)](HttpResponse response) mutable {
                test::await(mayGo, "the permission to go on");
                held = nullptr;
                completions.next()(std::move(response));
              });
  mayGo.set_value();
  const auto responses = completions.await(4);
  EXPECT_EQ(responses[0].status, 200);
  for (std::size_t i = 1; i < 4; ++i) EXPECT_EQ(responses[i].error, "The request was cancelled");
}

TEST(CurlTransportConcurrent, aCompletionMaySendTheNextRequest) {
  LoopbackServer server(alwaysOk());
  CurlTransport transport({});
  std::promise<int> last;
  std::function<void(int)> sendNext = [&](int left) {
    transport.send({.url = server.url()}, [&, left](HttpResponse response) {
      if (left > 0) {
        sendNext(left - 1);
      } else {
        last.set_value(response.status);
      }
    });
  };
  sendNext(20);
  EXPECT_EQ(test::await(last, "the last status"), 200);
  EXPECT_EQ(server.connections(), 1U);
}

TEST(CurlTransportConcurrent, whatIsDroppedIsNeverCalled) {
  LoopbackServer server(always({.bytes = ""}));
  CurlTransport transport({});
  const auto token = std::make_shared<int>();
  for (int i = 0; i < 20; ++i) {
    transport.send({.url = server.url()}, [token](const HttpResponse&) { ADD_FAILURE(); });
  }
  test::awaitUntil([&] { return !server.requests().empty(); }, "the first request");
  transport.dropAll();
  transport.send({.url = server.url()}, [token](const HttpResponse&) { ADD_FAILURE(); });
  EXPECT_EQ(token.use_count(), 1);
}

}  // namespace
}  // namespace tern::detail
