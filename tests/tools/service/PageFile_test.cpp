#include "tools/service/PageFile.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/support/MadePage.hpp"

namespace tern::service {
namespace {

using testing::Contains;
using testing::IsEmpty;
using testing::Not;

const std::string script(100'000, 'x');

class PageFileTest : public testing::Test {
 protected:
  PageFileTest() { page_.add("app.js", "text/javascript", script); }

  ServedAnswer answer(std::vector<HttpHeader> headers) const {
    return answerOf(page_.files().front(), {.method = "GET", .headers = std::move(headers)});
  }
  ServedAnswer answerAccepting(const std::string& codings) const {
    return answer({{"Accept-Encoding", codings}});
  }
  static std::string headerOf(const ServedAnswer& answer, std::string_view name) {
    for (const HttpHeader& header : answer.headers) {
      if (header.name == name) return header.value;
    }
    return {};
  }
  std::string cachingOf(const std::string& name) {
    test::MadePage page;
    page.add(name, "text/javascript", script);
    return headerOf(answerOf(page.files().front(), {}), "Cache-Control");
  }

  test::MadePage page_;
};

TEST_F(PageFileTest, comesAsItIsToWhoTakesNoGzip) {
  for (const ServedAnswer& plain :
       {answer({}), answerAccepting(""), answerAccepting("br, deflate"),
        answerAccepting("gzip;q=0"), answerAccepting("br , gzip ; q=0.000"),
        answerAccepting("*;q=0"), answerAccepting("gzipped")}) {
    EXPECT_EQ(plain.status, 200);
    EXPECT_EQ(plain.type, "text/javascript");
    EXPECT_EQ(plain.body, script);
    EXPECT_EQ(headerOf(plain, "Content-Encoding"), "");
    EXPECT_EQ(headerOf(plain, "Vary"), "Accept-Encoding");
  }
}

TEST_F(PageFileTest, comesCompressedToWhoTakesGzip) {
  for (const char* const codings :
       {"gzip", "deflate, gzip, br", "br;q=1.0, gzip;q=0.1", "*", "gzip;q=0.001"}) {
    const ServedAnswer compressed = answerAccepting(codings);
    EXPECT_EQ(compressed.status, 200);
    EXPECT_EQ(compressed.type, "text/javascript");
    EXPECT_EQ(compressed.body, test::gzipOf(script)) << codings;
    EXPECT_EQ(headerOf(compressed, "Content-Encoding"), "gzip");
    EXPECT_EQ(headerOf(compressed, "Vary"), "Accept-Encoding");
  }
}

TEST_F(PageFileTest, isNotSentAgainToWhoHasIt) {
  for (const std::string codings : {"gzip", "br"}) {
    const std::string tag = headerOf(answerAccepting(codings), "ETag");
    for (const std::string& tags : {tag, "W/" + tag, "\"other\", " + tag, std::string("*")}) {
      const ServedAnswer kept = answer({{"Accept-Encoding", codings}, {"If-None-Match", tags}});
      EXPECT_EQ(kept.status, 304) << tags;
      EXPECT_THAT(kept.body, IsEmpty());
      EXPECT_THAT(kept.type, IsEmpty());
      EXPECT_EQ(headerOf(kept, "ETag"), tag);
    }
    const ServedAnswer other = answer({{"Accept-Encoding", codings}, {"If-None-Match", "\"x\""}});
    EXPECT_EQ(other.status, 200);
  }
}

TEST_F(PageFileTest, tagIsThatOfTheBytesThatAreSent) {
  const std::string plain = headerOf(answerAccepting("br"), "ETag");
  const std::string compressed = headerOf(answerAccepting("gzip"), "ETag");
  EXPECT_NE(plain, compressed);
  EXPECT_EQ(answer({{"If-None-Match", compressed}}).status, 200);
  test::MadePage other;
  other.add("app.js", "text/javascript", script + "y");
  EXPECT_NE(headerOf(answerOf(other.files().front(), {}), "ETag"), plain);
}

TEST_F(PageFileTest, onlyWhatIsNamedByItsHashIsKeptWithoutAsking) {
  for (const char* const name :
       {"app-5f3c21d0.js", "chunks/map.0123456789abcdef.css", "app-M5BYMQ3J.js"}) {
    EXPECT_EQ(cachingOf(name), "max-age=31536000, immutable") << name;
  }
  for (const char* const name : {"index.html", "app.js", "app-explorer.js", "icon-1234567.png",
                                 "5f3c21d0.js", "terncorekit.wasm", "5f3c21d0/app.js"}) {
    EXPECT_EQ(cachingOf(name), "no-cache") << name;
  }
}

}  // namespace
}  // namespace tern::service
