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
#include <thread>

namespace tern::service {
namespace {

using testing::HasSubstr;
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

class HttpServerTest : public testing::Test {
 protected:
  HttpServerTest() { EXPECT_EQ(server_.start("127.0.0.1", 0), std::nullopt); }

  std::string answerTo(std::string_view bytes) {
    RawClient client(server_.port());
    EXPECT_TRUE(client.send(bytes));
    return client.hear();
  }

  HttpServer server_{[](const ReceivedRequest& request) {
    return httpBytes({200, request.method + " " + request.target + " " + request.body});
  }};
};

TEST_F(HttpServerTest, requestIsAnsweredAndTheConnectionClosed) {
  EXPECT_EQ(answerTo("GET /a?b HTTP/1.1\r\nHost: h\r\n\r\n"),
            "HTTP/1.1 200 \r\nConnection: close\r\nContent-Type: application/json\r\n"
            "Content-Length: 9\r\n\r\nGET /a?b ");
}

TEST_F(HttpServerTest, bodyIsTakenAsFarAsItIsAnnounced) {
  EXPECT_THAT(answerTo("POST /a HTTP/1.1\r\nContent-Length: 3\r\n\r\nabc"), HasSubstr("/a abc"));
  EXPECT_THAT(answerTo("POST /a HTTP/1.1\r\nContent-Length: 2\r\n\r\nabc"), HasSubstr("/a ab"));
}

TEST_F(HttpServerTest, requestMayComeInPieces) {
  RawClient client(server_.port());
  for (const char byte : std::string_view("POST / HTTP/1.1\r\nContent-Length: 3\r\n\r\nabc")) {
    ASSERT_TRUE(client.send({&byte, 1}));
  }
  EXPECT_THAT(client.hear(), HasSubstr("POST / abc"));
}

TEST_F(HttpServerTest, answerOfManyBytesArrivesWhole) {
  HttpServer server([](const ReceivedRequest&) { return std::string(20'000'000, 'x'); });
  ASSERT_EQ(server.start("127.0.0.1", 0), std::nullopt);
  RawClient client(server.port());
  ASSERT_TRUE(client.send("GET / HTTP/1.1\r\n\r\n"));
  EXPECT_EQ(client.hear().size(), 20'000'000U);
}

TEST_F(HttpServerTest, whatIsNoHttpIsRefused) {
  EXPECT_THAT(answerTo("nonsense\r\n\r\n"), StartsWith("HTTP/1.1 400 "));
  EXPECT_THAT(answerTo("POST / HTTP/1.1\r\nContent-Length: -1\r\n\r\n"),
              StartsWith("HTTP/1.1 400 "));
}

TEST_F(HttpServerTest, bodyBeyondTheBoundIsRefusedUnread) {
  EXPECT_THAT(answerTo("POST / HTTP/1.1\r\nContent-Length: 65537\r\n\r\n"),
              StartsWith("HTTP/1.1 413 "));
  EXPECT_THAT(answerTo("POST / HTTP/1.1\r\nContent-Length: 18446744073709551616\r\n\r\n"),
              StartsWith("HTTP/1.1 413 "));
}

TEST_F(HttpServerTest, refusalReachesAClientThatHasSentAlready) {
  EXPECT_THAT(
      answerTo("POST / HTTP/1.1\r\nContent-Length: 100000\r\n\r\n" + std::string(100'000, 'x')),
      StartsWith("HTTP/1.1 413 "));
}

TEST_F(HttpServerTest, bodyInChunksIsRefusedUnread) {
  const std::string head = "POST / HTTP/1.1\r\nTransfer-Encoding: chunked\r\n\r\n";
  for (const char* const chunk : {"3\r\nabc\r\n0\r\n\r\n", "-1\r\n", "ffffffffffffffff\r\nabc"}) {
    EXPECT_THAT(answerTo(head + chunk), StartsWith("HTTP/1.1 411 "));
  }
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
  while (head.size() <= HttpServer::mostHeadBytes) head += "A: b\r\n";
  EXPECT_THAT(answerTo(head + "\r\n"), StartsWith("HTTP/1.1 431 "));
}

TEST_F(HttpServerTest, silentConnectionsMakeRoomForOneThatSpeaks) {
  std::list<RawClient> silent;
  for (int i = 0; i < 200; ++i) silent.emplace_back(server_.port());
  EXPECT_THAT(answerTo("GET / HTTP/1.1\r\n\r\n"), StartsWith("HTTP/1.1 200 "));
}

TEST_F(HttpServerTest, stopBreaksOffAClientThatIsSlow) {
  RawClient slow(server_.port());
  ASSERT_TRUE(slow.send("GET / HTTP/1.1\r\nHost"));
  server_.stop();
  EXPECT_EQ(slow.hear(), "");
}

TEST_F(HttpServerTest, requestThatNeverEndsIsBrokenOff) {
  HttpServer server([](const ReceivedRequest&) { return ""; }, std::chrono::milliseconds(200));
  ASSERT_EQ(server.start("127.0.0.1", 0), std::nullopt);
  RawClient slow(server.port());
  ASSERT_TRUE(slow.send("GET / HTTP/1.1\r\nHost: "));
  int sent = 0;
  while (sent < 1000 && slow.send("h")) {
    std::this_thread::sleep_for(std::chrono::milliseconds(10));
    ++sent;
  }
  EXPECT_LT(sent, 1000);
}

}  // namespace
}  // namespace tern::service
