// What no well-behaved client does, over plain sockets.
#include "tools/service/HttpServer.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

#include <chrono>
#include <list>
#include <string>
#include <string_view>

namespace tern::service {
namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::EndsWith;
using testing::Gt;
using testing::HasSubstr;
using testing::Lt;
using testing::StartsWith;

// A client that sends whatever the test wants.
class RawClient {
 public:
  explicit RawClient(int port) : socket_(::socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0)) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(static_cast<std::uint16_t>(port));
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    EXPECT_EQ(::connect(socket_, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
  }
  ~RawClient() { ::close(socket_); }
  RawClient(const RawClient&) = delete;
  RawClient& operator=(const RawClient&) = delete;

  // False when the server has closed the connection.
  bool send(std::string_view bytes) {
    while (!bytes.empty()) {
      const ssize_t count = ::send(socket_, bytes.data(), bytes.size(), MSG_NOSIGNAL);
      if (count <= 0) return false;
      bytes.remove_prefix(static_cast<std::size_t>(count));
    }
    return true;
  }
  // How many times the bytes go out before the server closes the connection.
  int sendAgainAndAgain(std::string_view bytes, int most) {
    int sent = 0;
    while (sent < most && send(bytes)) ++sent;
    return sent;
  }
  // All that comes until the connection ends.
  std::string hear() {
    std::string heard;
    char bytes[4096];
    for (ssize_t count = 0; (count = ::recv(socket_, bytes, sizeof bytes, 0)) > 0;) {
      heard.append(bytes, static_cast<std::size_t>(count));
    }
    return heard;
  }

 private:
  const int socket_;
};

// The connections that have been left alone end soon.
class HttpServerTest : public testing::Test {
 protected:
  HttpServerTest() { EXPECT_EQ(server_.start("127.0.0.1", 0), std::nullopt); }

  std::string answerTo(std::string_view bytes) {
    RawClient client(server_.port());
    EXPECT_TRUE(client.send(bytes));
    return client.hear();
  }

  HttpServer server_{
      [](const ReceivedRequest& request) {
        return ServedAnswer{200, request.method + " " + request.target + " " + request.body};
      },
      std::chrono::seconds(1)};
};

TEST_F(HttpServerTest, requestIsAnswered) {
  const std::string answer = answerTo("GET /a%20b?c=%64 HTTP/1.1\r\nHost: h\r\n\r\n");
  EXPECT_THAT(answer, StartsWith("HTTP/1.1 200 OK\r\n"));
  EXPECT_THAT(answer, HasSubstr("\r\nContent-Type: application/json\r\n"));
  EXPECT_THAT(answer, HasSubstr("\r\nContent-Length: 17\r\n"));
  EXPECT_THAT(answer, EndsWith("\r\n\r\nGET /a%20b?c=%64 "));
}

TEST_F(HttpServerTest, headersAreFoundInWhateverCase) {
  HttpServer server(
      [](const ReceivedRequest& request) {
        EXPECT_THAT(request.headers, ElementsAre(HttpHeader{"Host", "h:1"}, HttpHeader{"A", "b c"},
                                                 HttpHeader{"a", "d"}, HttpHeader{"Empty", ""}));
        EXPECT_EQ(request.header("a"), "b c");
        EXPECT_EQ(request.header("EMPTY"), "");
        EXPECT_EQ(request.header("Hos"), std::nullopt);
        return ServedAnswer{};
      },
      std::chrono::seconds(1));
  ASSERT_EQ(server.start("127.0.0.1", 0), std::nullopt);
  RawClient client(server.port());
  ASSERT_TRUE(client.send("GET / HTTP/1.1\r\nHost: h:1\r\nA:\tb c\r\na: d\r\nEmpty:\r\n\r\n"));
  EXPECT_THAT(client.hear(), StartsWith("HTTP/1.1 200 "));
}

TEST_F(HttpServerTest, requestsFollowOneAnotherOnAConnection) {
  const std::string answers = answerTo(
      "POST /a HTTP/1.1\r\nHost: h\r\nContent-Length: 2\r\n\r\nxy"
      "GET /b HTTP/1.1\r\nHost: h\r\nConnection: close\r\n\r\n");
  EXPECT_THAT(answers, HasSubstr("POST /a xyHTTP/1.1 200 OK\r\n"));
  EXPECT_THAT(answers, EndsWith("GET /b "));
}

TEST_F(HttpServerTest, requestMayComeInPieces) {
  RawClient client(server_.port());
  for (const char byte : std::string_view("POST / HTTP/1.1\r\nContent-Length: 3\r\n\r\nabc")) {
    ASSERT_TRUE(client.send({&byte, 1}));
  }
  EXPECT_THAT(client.hear(), HasSubstr("POST / abc"));
}

TEST_F(HttpServerTest, bodyMayComeInChunks) {
  const std::string head = "POST / HTTP/1.1\r\nTransfer-Encoding: chunked\r\n\r\n";
  EXPECT_THAT(answerTo(head + "3\r\nabc\r\n2\r\nde\r\n0\r\n\r\n"), EndsWith("POST / abcde"));
}

TEST_F(HttpServerTest, wrongChunksAreRefused) {
  const std::string head = "POST / HTTP/1.1\r\nTransfer-Encoding: chunked\r\n\r\n";
  for (const char* const chunk : {"-1\r\n", "x\r\n", "2\r\nabcd\r\n"}) {
    EXPECT_THAT(answerTo(head + chunk), StartsWith("HTTP/1.1 400 ")) << chunk;
  }
  EXPECT_THAT(answerTo(head + "fffffffffffffffff\r\nabc"), StartsWith("HTTP/1.1 413 "));
}

TEST_F(HttpServerTest, answerToHeadHasNoBody) {
  const std::string answer = answerTo("HEAD / HTTP/1.1\r\nHost: h\r\nConnection: close\r\n\r\n");
  EXPECT_THAT(answer, StartsWith("HTTP/1.1 200 OK\r\n"));
  EXPECT_THAT(answer, EndsWith("\r\n\r\n"));
}

TEST_F(HttpServerTest, noAnswerIsAConnectionThatCloses) {
  HttpServer server([](const ReceivedRequest&) { return std::nullopt; });
  ASSERT_EQ(server.start("127.0.0.1", 0), std::nullopt);
  RawClient client(server.port());
  ASSERT_TRUE(client.send("GET / HTTP/1.1\r\nHost: h\r\n\r\n"));
  EXPECT_EQ(client.hear(), "");
}

TEST_F(HttpServerTest, answerOfManyBytesArrivesWhole) {
  const std::string body(20'000'000, 'x');
  HttpServer server([&](const ReceivedRequest&) { return ServedAnswer{200, body}; });
  ASSERT_EQ(server.start("127.0.0.1", 0), std::nullopt);
  RawClient client(server.port());
  ASSERT_TRUE(client.send("GET / HTTP/1.0\r\n\r\n"));
  EXPECT_THAT(client.hear().size(), AllOf(Gt(body.size()), Lt(body.size() + 1'000)));
}

TEST_F(HttpServerTest, whatIsNoHttpIsRefused) {
  EXPECT_EQ(answerTo("nonsense\r\n\r\n"), "");
  EXPECT_EQ(answerTo("\x16\x03\x01\r\n\r\n"), "");
  EXPECT_THAT(answerTo("GET / HTTP/2.0\r\n\r\n"), StartsWith("HTTP/1.1 505 "));
  EXPECT_THAT(answerTo("GET / HTTP/1.1\r\nno colon\r\n\r\n"), StartsWith("HTTP/1.1 400 "));
}

TEST_F(HttpServerTest, lengthThatIsNoneIsRefused) {
  const std::string head = "POST / HTTP/1.1\r\nContent-Length: ";
  EXPECT_THAT(answerTo(head + "-1\r\n\r\n"), StartsWith("HTTP/1.1 400 "));
  EXPECT_THAT(answerTo(head + "18446744073709551616\r\n\r\n"), StartsWith("HTTP/1.1 413 "));
}

TEST_F(HttpServerTest, bodyBeyondTheBoundIsRefused) {
  const auto post = [](std::size_t bytes) {
    return "POST / HTTP/1.1\r\nHost: h\r\nContent-Length: " + std::to_string(bytes) + "\r\n\r\n" +
           std::string(bytes, 'x');
  };
  EXPECT_THAT(answerTo(post(HttpServer::mostBodyBytes)), StartsWith("HTTP/1.1 200 "));
  EXPECT_THAT(answerTo(post(HttpServer::mostBodyBytes + 1)), StartsWith("HTTP/1.1 413 "));
  EXPECT_THAT(answerTo(post(HttpServer::mostReadBytes)), StartsWith("HTTP/1.1 413 "));
}

// A hundred megabytes; what the system's own buffers take is a few of them.
constexpr int megabytes = 100;
constexpr int atMost = 30;

TEST_F(HttpServerTest, endlessBodyIsCutOff) {
  RawClient client(server_.port());
  ASSERT_TRUE(client.send("POST / HTTP/1.1\r\nTransfer-Encoding: chunked\r\n\r\n"));
  const std::string chunk = "100000\r\n" + std::string(1 << 20U, 'x') + "\r\n";
  EXPECT_LT(client.sendAgainAndAgain(chunk, megabytes), atMost);
}

TEST_F(HttpServerTest, endlessLineIsCutOff) {
  for (const char* const begin : {"GET /", "GET / HTTP/1.1\r\nX: "}) {
    RawClient client(server_.port());
    ASSERT_TRUE(client.send(begin));
    EXPECT_LT(client.sendAgainAndAgain(std::string(1 << 20U, 'x'), megabytes), atMost);
  }
}

TEST_F(HttpServerTest, endlessHeadersAreCutOff) {
  RawClient client(server_.port());
  ASSERT_TRUE(client.send("GET / HTTP/1.1\r\n"));
  std::string headers;
  while (headers.size() < 1 << 20U) headers += "A: b\r\n";
  EXPECT_LT(client.sendAgainAndAgain(headers, megabytes), atMost);
}

TEST_F(HttpServerTest, headBeyondTheBoundIsRefused) {
  std::string head = "GET / HTTP/1.1\r\n";
  while (head.size() <= HttpServer::connectionBytes) head += "A: b\r\n";
  EXPECT_THAT(answerTo(head + "\r\n"), StartsWith("HTTP/1.1 431 "));
  EXPECT_THAT(
      answerTo("GET /" + std::string(HttpServer::connectionBytes, 'x') + " HTTP/1.1\r\n\r\n"),
      StartsWith("HTTP/1.1 414 "));
}

TEST_F(HttpServerTest, silentConnectionsKeepNobodyOut) {
  std::list<RawClient> silent;
  for (int i = 0; i < 200; ++i) silent.emplace_back(server_.port());
  EXPECT_THAT(answerTo("GET / HTTP/1.1\r\nHost: h\r\n\r\n"), StartsWith("HTTP/1.1 200 "));
}

TEST_F(HttpServerTest, stopBreaksOffAClientThatIsSlow) {
  RawClient slow(server_.port());
  ASSERT_TRUE(slow.send("GET / HTTP/1.1\r\nHost"));
  server_.stop();
  EXPECT_EQ(slow.hear(), "");
}

TEST_F(HttpServerTest, requestThatFallsSilentIsBrokenOff) {
  for (const char* const begin :
       {"", "GET / HTTP/1.1\r\nHost: h", "POST / HTTP/1.1\r\nContent-Length: 3\r\n\r\nab"}) {
    EXPECT_EQ(answerTo(begin), "") << begin;
  }
}

}  // namespace
}  // namespace tern::service
