#include "TernCoreKit/service/WatchedTransport.hpp"

#include <gtest/gtest.h>

#include "tests/support/FakeTransport.hpp"

namespace tern {
namespace {

// What is remembered after an answer.
std::string failureAfter(const std::string& method, const HttpResponse& answer) {
  WatchedTransport transport(
      std::make_shared<test::FakeTransport>([&](const HttpRequest&) { return answer; }));
  EXPECT_EQ(test::exchange(transport, {.url = "http://h", .method = method}).status, answer.status);
  return transport.failure();
}

TEST(WatchedTransport, remembersWhatTheCacheStandsInFor) {
  EXPECT_EQ(failureAfter("GET", {.error = "no network"}), "no network");
  EXPECT_EQ(failureAfter("GET", {}), "it does not answer");
  EXPECT_EQ(failureAfter("GET", {.status = 500}), "it answers with status 500");
  EXPECT_EQ(failureAfter("POST", {.status = 400}), "it gives no access token (status 400)");
  EXPECT_EQ(failureAfter("POST", {.status = 401}), "it gives no access token (status 401)");
}

TEST(WatchedTransport, answersOfOtherKindsAreNoFailures) {
  for (const int status : {200, 304, 404, 503}) {
    EXPECT_EQ(failureAfter("GET", {.status = status}), "");
  }
  EXPECT_EQ(failureAfter("POST", {.status = 200}), "");
}

}  // namespace
}  // namespace tern
