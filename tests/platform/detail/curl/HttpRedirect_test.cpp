#include "TernCoreKit/platform/detail/curl/HttpRedirect.hpp"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tern::detail {
namespace {

const std::vector<HttpHeader> headers = {{"authorization", "Bearer t"},
                                         {"Content-Type", "text/plain"},
                                         {"COOKIE", "c"},
                                         {"Accept", "a/b"}};

HttpRequest request(std::string method, std::string url = "https://maps.example.com/a") {
  const bool hasBody = method != "GET" && method != "HEAD";
  return {.url = std::move(url),
          .method = std::move(method),
          .headers = headers,
          .body = hasBody ? std::optional("body") : std::nullopt};
}

TEST(HttpRedirect, onlyHttpUrlsWithoutCredentialsMayBeAsked) {
  EXPECT_EQ(urlFault("http://a"), std::nullopt);
  EXPECT_EQ(urlFault("HTTPS://a:8443/b?c"), std::nullopt);
  EXPECT_EQ(urlFault("file:///etc/passwd"), "The URL is neither http nor https");
  EXPECT_EQ(urlFault("ftp://a/"), "The URL is neither http nor https");
  EXPECT_EQ(urlFault("http://user@a/"), "The URL holds a user name or a password");
  EXPECT_EQ(urlFault("http://:word@a/"), "The URL holds a user name or a password");
  EXPECT_EQ(urlFault("/a"), "The URL cannot be understood");
  EXPECT_EQ(urlFault(""), "The URL cannot be understood");
  EXPECT_EQ(urlFault("http://a:99999/"), "The URL cannot be understood");
}

TEST(HttpRedirect, fiveStatusesSendOn) {
  for (int status = 0; status < 1000; ++status) {
    const bool isOne = (status >= 301 && status <= 303) || status == 307 || status == 308;
    EXPECT_EQ(isRedirect(status), isOne) << status;
  }
}

TEST(HttpRedirect, theSameOriginGetsEverything) {
  for (const std::string to : {"https://maps.example.com/b", "https://MAPS.example.com:443/b"}) {
    HttpRequest sent = request("PUT");
    EXPECT_EQ(followRedirect(sent, 302, to), std::nullopt);
    EXPECT_EQ(sent.url, to);
    EXPECT_EQ(sent.method, "PUT");
    EXPECT_EQ(sent.headers, headers);
    EXPECT_EQ(sent.body, "body");
  }
}

TEST(HttpRedirect, anotherSchemeHostOrPortGetsNoCredentials) {
  const std::vector<HttpHeader> left = {{"Content-Type", "text/plain"}, {"Accept", "a/b"}};
  for (const std::string to : {"https://example.com/a", "https://maps.example.com:444/a",
                               "https://maps.example.com.evil.org/a"}) {
    HttpRequest sent = request("GET");
    EXPECT_EQ(followRedirect(sent, 301, to), std::nullopt);
    EXPECT_EQ(sent.headers, left) << to;
  }
  HttpRequest upgraded = request("GET", "http://maps.example.com/a");
  EXPECT_EQ(followRedirect(upgraded, 301, "https://maps.example.com/a"), std::nullopt);
  EXPECT_EQ(upgraded.headers, left);
}

TEST(HttpRedirect, credentialsThatWereDroppedDoNotComeBack) {
  HttpRequest sent = request("GET");
  EXPECT_EQ(followRedirect(sent, 301, "https://other.example.com/"), std::nullopt);
  EXPECT_EQ(followRedirect(sent, 301, "https://maps.example.com/a"), std::nullopt);
  EXPECT_EQ(sent.headers.size(), 2U);
}

TEST(HttpRedirect, whatIsToBeSeenElsewhereIsAskedForWithoutABody) {
  struct Case {
    std::string method;
    int status;
    std::string becomes;
  };
  for (const Case& c :
       {Case{"POST", 301, "GET"}, Case{"POST", 302, "GET"}, Case{"POST", 303, "GET"},
        Case{"PUT", 303, "GET"}, Case{"HEAD", 303, "HEAD"}, Case{"PUT", 301, "PUT"},
        Case{"POST", 307, "POST"}, Case{"POST", 308, "POST"}}) {
    HttpRequest sent = request(c.method);
    EXPECT_EQ(followRedirect(sent, c.status, "https://maps.example.com/b"), std::nullopt);
    EXPECT_EQ(sent.method, c.becomes) << c.method << c.status;
    const bool isKept = c.method == c.becomes;
    EXPECT_EQ(sent.headers.size(), isKept ? 4U : 3U) << c.method << c.status;
    EXPECT_EQ(sent.body.has_value(), isKept && c.method != "HEAD") << c.method << c.status;
  }
}

TEST(HttpRedirect, whatWouldLeakIsRefused) {
  HttpRequest sent = request("GET");
  EXPECT_EQ(followRedirect(sent, 302, "http://maps.example.com/a"),
            "Redirect refused: it leads from https to http");
  EXPECT_EQ(followRedirect(sent, 302, "file:///etc/passwd"),
            "Redirect refused: The URL is neither http nor https");
  HttpRequest form = request("POST");
  EXPECT_EQ(followRedirect(form, 307, "https://other.example.com/"),
            "Redirect refused: it would carry the request's body to another host");
}

}  // namespace
}  // namespace tern::detail
