#include "TernCoreKit/platform/detail/HttpRequestCheck.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <vector>

namespace tern::detail {
namespace {

using testing::HasSubstr;
using testing::Not;

TEST(HttpRequestCheck, whatHttpAllowsHasNoFault) {
  EXPECT_EQ(httpRequestFault({.url = "http://a/b?c=d"}), std::nullopt);
  EXPECT_EQ(httpRequestFault({.url = "http://a/\xC3\xA4",
                              .method = "PROPFIND",
                              .headers = {{"X-A", ""}, {"x_b~1", "tab\tand \xC3\xA4"}},
                              .body = std::string("\r\n\0", 3)}),
            std::nullopt);
}

TEST(HttpRequestCheck, headerNamesAreTheSameInEitherCase) {
  EXPECT_TRUE(isSameHeader("Content-Type", "content-tYPE"));
  EXPECT_FALSE(isSameHeader("Content-Type", "Content-Typ"));
  EXPECT_FALSE(isSameHeader("a@", "a`"));
}

TEST(HttpRequestCheck, whatWouldBeMoreThanOneRequestIsAFaultThatShowsNothing) {
  const std::string nul("sec\0ret", 7);
  const std::vector<HttpRequest> requests = {
      {.url = "http://a/secret b"},
      {.url = "http://a/secret\r\nX: 1"},
      {.url = "http://a/" + nul},
      {.url = "http://a", .method = ""},
      {.url = "http://a", .method = "GET /secret HTTP/1.1\r\n"},
      {.url = "http://a", .headers = {{"", "secret"}}},
      {.url = "http://a", .headers = {{"X: secret\r\nY", "1"}}},
      {.url = "http://a", .headers = {{"secret X", "1"}}},
      {.url = "http://a", .headers = {{nul, "1"}}},
      {.url = "http://a", .headers = {{"X", "1\r\nsecret: 2"}}},
      {.url = "http://a", .headers = {{"X", "1\nsecret"}}},
      {.url = "http://a", .headers = {{"X", nul}}},
      {.url = "http://a", .headers = {{"content-length", "secret"}}},
      {.url = "http://a", .headers = {{"Transfer-Encoding", "secret"}}},
      {.url = "http://a", .headers = {{"HOST", "secret"}}},
      {.url = "http://a", .headers = {{"Connection", "secret"}}},
  };
  for (std::size_t i = 0; i < requests.size(); ++i) {
    const auto fault = httpRequestFault(requests[i]);
    ASSERT_TRUE(fault.has_value()) << i;
    EXPECT_THAT(*fault, Not(HasSubstr("sec"))) << i;
  }
}

}  // namespace
}  // namespace tern::detail
