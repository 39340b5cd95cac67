#include "tools/service/ReceivedRequest.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>

namespace tern::service {
namespace {

using testing::ElementsAre;

TEST(ReceivedRequest, hasWhatTheLinesSay) {
  const auto request = parseHead("GET /a%20b?c=d HTTP/1.1\r\nHost: h:1\r\nAccept:\t*/* \r\nEmpty:");
  ASSERT_TRUE(request);
  EXPECT_EQ(request->method, "GET");
  EXPECT_EQ(request->target, "/a%20b?c=d");
  EXPECT_THAT(request->headers, ElementsAre(HttpHeader{"Host", "h:1"}, HttpHeader{"Accept", "*/*"},
                                            HttpHeader{"Empty", ""}));
  EXPECT_EQ(request->header("HOST"), "h:1");
  EXPECT_EQ(request->header("empty"), "");
  EXPECT_EQ(request->header("Hos"), std::nullopt);
}

TEST(ReceivedRequest, isNoneForWhatIsNoHttp) {
  for (const char* const head :
       {"", " ", "GET", "GET /", "GET  HTTP/1.1", " / HTTP/1.1", "GET / HTTP/2", "GET / x HTTP/1.1",
        "GET / HTTP/1.1\r\nno colon", "GET / HTTP/1.1\r\n: x", "GET / HTTP/1.1\r\nA b: x",
        "GET / HTTP/1.1\r\nA: x\r\n folded: y", "GET / HTTP/1.1\r\n\r\nA: x", "\x16\x03\x01"}) {
    EXPECT_FALSE(parseHead(head)) << head;
  }
}

BodySize sizeWith(const std::string& headers) {
  return bodySize(*parseHead("POST / HTTP/1.1" + headers), 100);
}

TEST(ReceivedRequest, bodyHasTheSizeThatItAnnounces) {
  EXPECT_EQ(sizeWith(""), BodySize(std::size_t{0}));
  EXPECT_EQ(sizeWith("\r\ncontent-length: 100"), BodySize(std::size_t{100}));
}

TEST(ReceivedRequest, bodyThatIsTooLargeIsRefused) {
  EXPECT_EQ(sizeWith("\r\nContent-Length: 101"), BodySize(413));
  EXPECT_EQ(sizeWith("\r\nContent-Length: 99999999999999999999999"), BodySize(413));
}

TEST(ReceivedRequest, bodyWithoutASizeIsRefused) {
  EXPECT_EQ(sizeWith("\r\nTransfer-Encoding: chunked"), BodySize(411));
  EXPECT_EQ(sizeWith("\r\nContent-Length: 5\r\nTransfer-Encoding: chunked"), BodySize(411));
  for (const char* const size : {"-1", "+1", "1x", "0x10", "1,1", ""}) {
    EXPECT_EQ(sizeWith(std::string("\r\nContent-Length: ") + size), BodySize(400)) << size;
  }
}

}  // namespace
}  // namespace tern::service
