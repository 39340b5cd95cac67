#include "TernCoreKit/platform/Http.hpp"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <future>
#include <thread>

#include "tests/support/FakeTransport.hpp"
#include "tests/support/LoopbackServer.hpp"
#include "tests/support/Waiting.hpp"

namespace tern {
namespace {

using test::exchange;
using test::FakeTransport;
using test::httpAnswer;
using test::LoopbackServer;
using test::ScopedHttpTransport;

using Request = LoopbackServer::Request;
using Reply = LoopbackServer::Reply;

Reply ok(const Request& /*request*/) { return {.bytes = httpAnswer("200 OK", "{}")}; }
Reply silent(const Request& /*request*/) { return {}; }

std::shared_ptr<FakeTransport> answering(int status) {
  return std::make_shared<FakeTransport>(
      [status](const HttpRequest&) { return HttpResponse{.status = status}; });
}

TEST(Http, aHostsTransportTakesTheRequestsUntilTheDefaultIsBroughtBack) {
  const auto defaultTransport = httpTransport();
  ASSERT_NE(defaultTransport, nullptr);
  {
    const auto mine = answering(299);
    const ScopedHttpTransport scope(mine);
    EXPECT_EQ(httpTransport(), mine);
    EXPECT_EQ(exchange(*httpTransport(), {.url = "http://a"}).status, 299);
  }
  EXPECT_EQ(httpTransport(), defaultTransport);
}

TEST(Http, theDefaultTransportAnswersOverTheNetwork) {
  LoopbackServer server(ok);
  EXPECT_EQ(exchange(*httpTransport(), {.url = server.url()}).body, "{}");
}

TEST(HttpConcurrent, theTransportMayBeReplacedWhileRequestsRun) {
  LoopbackServer server(ok);
  std::thread replacer([] {
    for (int i = 0; i < 50; ++i) setHttpTransport(i % 2 == 0 ? makeHttpTransport() : nullptr);
  });
  for (int i = 0; i < 50; ++i) {
    const auto transport = httpTransport();
    EXPECT_EQ(exchange(*transport, {.url = server.url()}).status, 200);
  }
  replacer.join();
  setHttpTransport(nullptr);
}

TEST(HttpDeathTest, theEndOfTheProcessDropsWhatIsUnderWay) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  EXPECT_EXIT(
      {
        static LoopbackServer server(silent);  // ends after the transport
        for (int i = 0; i < 20; ++i) {
          httpTransport()->send({.url = server.url()}, [](const HttpResponse&) { std::abort(); });
        }
        test::awaitUntil([&] { return !server.requests().empty(); }, "the first request");
        std::exit(0);
      },
      testing::ExitedWithCode(0), "");
}

TEST(HttpDeathTest, theEndOfTheProcessWaitsForARunningCompletion) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  EXPECT_EXIT(
      {
        LoopbackServer server(ok);
        std::promise<void> isBegun;
        httpTransport()->send({.url = server.url()}, [&](const HttpResponse&) {
          isBegun.set_value();
          for (int i = 0; i < 1000; ++i) std::this_thread::yield();
          std::fputs("completion ended\n", stderr);
        });
        test::await(isBegun, "the completion");
        std::exit(0);
      },
      testing::ExitedWithCode(0), "completion ended");
}

TEST(HttpDeathTest, aCompletionMayEndTheProcess) {
  GTEST_FLAG_SET(death_test_style, "threadsafe");
  EXPECT_EXIT(
      {
        LoopbackServer server(ok);
        httpTransport()->send({.url = server.url()}, [](const HttpResponse&) { std::exit(7); });
        std::promise<void> end;
        test::await(end, "the end of the process");
      },
      testing::ExitedWithCode(7), "");
}

}  // namespace
}  // namespace tern
