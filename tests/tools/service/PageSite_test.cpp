#include "tools/service/PageSite.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "TernCoreKit/platform/Json.hpp"
#include "tests/support/MadePage.hpp"

namespace tern::service {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::Not;

constexpr int port = 4711;

std::string headerOf(const ServedAnswer& answer, std::string_view name) {
  const auto found = std::ranges::find(answer.headers, name, &HttpHeader::name);
  return found != answer.headers.end() ? found->value : "";
}

class PageSiteTest : public testing::Test {
 protected:
  static test::MadePage madePage() {
    test::MadePage page;
    page.add("index.html", "text/html", "<p>page");
    page.add("icons/tern.svg", "image/svg+xml", "<svg/>");
    page.add("data/notes.json", "application/json", "{}");
    return page;
  }
  static std::map<std::string, std::string> madeTexts() {
    std::map<std::string, std::string> texts;
    for (const char* const path :
         {"full.json", "destinations.json", "venue/1/full.json", "venue/1/building/3/full.json",
          "venue/1/destinations.json", "venue/2/full.json", "venue/7/full.json"}) {
      texts[path] = std::string("{\"at\":\"") + path + "\"}";
    }
    return texts;
  }

  PageSite siteOf(std::vector<std::int64_t> venues) {
    return PageSite({.files = page_.files(),
                     .venues = std::move(venues),
                     .documents = {.read = [this](const std::string& path) { return read(path); }},
                     .findings = [](std::int64_t venue) {
                       return "{\"of\":" + std::to_string(venue) + "}\n";
                     }});
  }
  std::variant<std::string, TernError> read(const std::string& path) const {
    const auto found = texts_.find(path);
    if (found == texts_.end()) {
      return TernError::initWithErrorType(TernErrorTypeObjectNotFound, "secret/" + path);
    }
    if (found->second.empty()) {
      return TernError::initWithErrorType(TernErrorTypeUndefined, "secret/" + path);
    }
    return found->second;
  }

  static ReceivedRequest requestOf(const std::string& target, const std::string& method = "GET") {
    return {.method = method,
            .target = target,
            .headers = {{"Host", "127.0.0.1:" + std::to_string(port)}},
            .wake = [] {}};
  }
  ServedAnswer get(const std::string& target) { return site_.answer(requestOf(target), port); }
  static void expectError(int status, const ServedAnswer& answer) {
    EXPECT_EQ(answer.status, status);
    const Value body = decodeJson(answer.body).value;
    EXPECT_EQ(body["statusCode"], Value(status)) << answer.body;
    EXPECT_TRUE(body["message"].isText());
    EXPECT_THAT(answer.body, Not(HasSubstr("secret")));
  }
  static std::string allOf(BodyStream& stream) {
    char bytes[256];
    BodyStream::Piece piece;
    std::string text;
    while (!piece.isEnd) {
      piece = stream.read(bytes, sizeof bytes);
      text.append(bytes, piece.bytes);
    }
    return text;
  }

  const test::MadePage page_ = madePage();
  std::map<std::string, std::string> texts_ = madeTexts();
  PageSite site_ = siteOf({1, 2});
};

TEST_F(PageSiteTest, filesOfThePageAreAnsweredByTheirNames) {
  for (const char* const target : {"/", "/index.html", "/?map=1", "/index.html?x=%20"}) {
    const ServedAnswer index = get(target);
    EXPECT_EQ(index.status, 200) << target;
    EXPECT_EQ(index.type, "text/html");
    EXPECT_EQ(index.body, "<p>page");
  }
  EXPECT_EQ(get("/icons/tern.svg").body, "<svg/>");
}

TEST_F(PageSiteTest, documentsOfItsVenuesAreAnswered) {
  for (const char* const path :
       {"full.json", "venue/1/full.json", "venue/1/building/3/full.json", "venue/2/full.json"}) {
    const ServedAnswer document = get(std::string("/data/") + path);
    EXPECT_EQ(document.status, 200) << path;
    EXPECT_EQ(document.type, "application/json");
    EXPECT_EQ(document.body, texts_[path]);
    EXPECT_EQ(headerOf(document, "Cache-Control"), "no-store");
  }
}

TEST_F(PageSiteTest, documentThatIsReplacedIsShownAnew) {
  texts_["venue/1/full.json"] = "{}";
  EXPECT_EQ(get("/data/venue/1/full.json").body, "{}");
}

TEST_F(PageSiteTest, nothingElseIsAnswered) {
  for (const char* const target : {"/other.js",
                                   "/index.html/",
                                   "/icons",
                                   "/icons/",
                                   "/data",
                                   "/data/",
                                   "/data/notes.json",
                                   "/data/destinations.json",
                                   "/data/venue/1/destinations.json",
                                   "/data/venue/7/full.json",
                                   "/data/venue/01/full.json",
                                   "/data/venue/1/building/9/full.json",
                                   "/data/venue/9/full.json",
                                   "/data/venue/1/building/3/floor/full.json",
                                   "/data/venue/1",
                                   "/data/full.json/",
                                   "/full.json",
                                   "/QRVS/api/customer/1/full",
                                   "/config.json/",
                                   "/data/findings.json/"}) {
    expectError(404, get(target));
  }
}

TEST_F(PageSiteTest, namesThatLeadOutOfTheFolderAreNowhere) {
  for (const char* const target :
       {"", "x", "*", "http://127.0.0.1/", "/data/../full.json", "/data/venue/../full.json",
        "/data/%2e%2e/full.json", "/data/venue/1%2f..%2f7/full.json", "/data//full.json",
        "/data/./full.json", "/data/venue/1%00/full.json", "/data/%zz", "/..", "//"}) {
    expectError(404, get(target));
  }
}

TEST_F(PageSiteTest, documentThatCannotBeReadIsSaidWithoutItsPlace) {
  texts_["venue/1/full.json"].clear();
  expectError(500, get("/data/venue/1/full.json"));
}

TEST_F(PageSiteTest, configurationNamesTheVenues) {
  const ServedAnswer config = get("/config.json");
  EXPECT_EQ(config.body, R"({"data":"data/","findings":"data/findings.json","venues":[1,2]})");
  EXPECT_EQ(headerOf(config, "Cache-Control"), "no-store");
}

TEST_F(PageSiteTest, everyAnswerComesUnderThePolicy) {
  for (const char* const target : {"/", "/config.json", "/data/full.json", "/none", "/.."}) {
    const ServedAnswer answer = get(target);
    EXPECT_EQ(headerOf(answer, "Content-Security-Policy"),
              "default-src 'none'; script-src 'self' 'wasm-unsafe-eval'; style-src 'self'; "
              "img-src 'self' blob: data:; connect-src 'self'; worker-src 'self'; "
              "manifest-src 'self'; base-uri 'none'; form-action 'none'; frame-ancestors 'none'");
    EXPECT_EQ(headerOf(answer, "X-Content-Type-Options"), "nosniff");
    EXPECT_EQ(headerOf(answer, "Referrer-Policy"), "no-referrer");
    EXPECT_EQ(headerOf(answer, "Cross-Origin-Resource-Policy"), "same-origin");
    EXPECT_EQ(headerOf(answer, "Cross-Origin-Opener-Policy"), "same-origin");
    EXPECT_EQ(headerOf(answer, "Access-Control-Allow-Origin"), "");
  }
}

TEST_F(PageSiteTest, onlyReadingIsAnswered) {
  EXPECT_EQ(site_.answer(requestOf("/", "HEAD"), port).status, 200);
  EXPECT_FALSE(site_.receive(requestOf("/", "HEAD"), port).refusal);
  EXPECT_FALSE(site_.receive(requestOf("/"), port).refusal);
  for (const char* const method : {"POST", "PUT", "DELETE", "OPTIONS", "TRACE", "get"}) {
    const ServedAnswer refusal = site_.answer(requestOf("/", method), port);
    expectError(405, refusal);
    EXPECT_EQ(headerOf(refusal, "Allow"), "GET, HEAD");
    // Before its body has come.
    const auto early = site_.receive(requestOf("/", method), port).refusal;
    ASSERT_TRUE(early) << method;
    EXPECT_EQ(early->status, 405);
  }
}

TEST_F(PageSiteTest, onlyThisMachinesNamesAreAnsweredFor) {
  const auto statusFor = [&](std::vector<HttpHeader> headers, int at = port) {
    return site_.answer({.method = "GET", .target = "/", .headers = std::move(headers)}, at).status;
  };
  for (const char* const host : {"127.0.0.1:4711", "localhost:4711", "LOCALHOST:4711"}) {
    EXPECT_EQ(statusFor({{"Host", host}}), 200) << host;
    EXPECT_EQ(statusFor({{"host", host}}), 200) << host;
  }
  for (const char* const host :
       {"", "example.com", "example.com:4711", "127.0.0.1", "127.0.0.1:4712", "127.0.0.1:47110",
        "localhost.example.com:4711", "127.0.0.1:4711.example.com", "127.0.0.2:4711", "[::1]:4711",
        "127.0.0.1:4711 "}) {
    EXPECT_EQ(statusFor({{"Host", host}}), 403) << host;
  }
  EXPECT_EQ(statusFor({}), 403);
  EXPECT_EQ(statusFor({{"Host", "localhost:4711"}, {"Host", "example.com"}}), 403);
  EXPECT_EQ(statusFor({{"Host", "localhost"}}, 80), 200);
  EXPECT_EQ(statusFor({{"Host", "localhost:0"}}, 0), 403);
  expectError(403, site_.answer({.method = "GET", .target = "/data/full.json"}, port));
}

// The maker's thread is joined, so that the text is there.
TEST_F(PageSiteTest, findingsAreThoseOfTheVenueThatIsNamed) {
  std::vector<std::string> texts;
  for (const char* const target : {"/data/findings.json?venue=2", "/data/findings.json?venue=1"}) {
    std::shared_ptr<BodyStream> stream;
    {
      PageSite site = siteOf({1, 2});
      const ServedAnswer answer = site.answer(requestOf(target), port);
      EXPECT_EQ(answer.type, "application/json");
      EXPECT_EQ(headerOf(answer, "Cache-Control"), "no-store");
      stream = answer.stream;
    }
    ASSERT_NE(stream, nullptr);
    texts.push_back(allOf(*stream));
  }
  EXPECT_THAT(texts, ElementsAre("{\"of\":2}\n", "{\"of\":1}\n"));
}

TEST_F(PageSiteTest, findingsOfTheOnlyVenueNeedNoName) {
  std::shared_ptr<BodyStream> stream;
  {
    PageSite site = siteOf({2});
    stream = site.answer(requestOf("/data/findings.json"), port).stream;
  }
  ASSERT_NE(stream, nullptr);
  EXPECT_EQ(allOf(*stream), "{\"of\":2}\n");
  expectError(404, get("/data/findings.json"));
  expectError(404, get("/data/findings.json?venue=7"));
}

}  // namespace
}  // namespace tern::service
