// What no well-behaved client does, over plain sockets.
#include "tools/service/HttpServer.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <future>
#include <list>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <thread>

#include "tests/support/RawClient.hpp"
#include "tests/support/Waiting.hpp"

namespace tern::service {
namespace {

using test::RawClient;
using testing::AllOf;
using testing::ElementsAre;
using testing::EndsWith;
using testing::Gt;
using testing::HasSubstr;
using testing::Lt;
using testing::Not;
using testing::StartsWith;

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
      HttpLimits{.silence = std::chrono::seconds(1)}};
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
      {.silence = std::chrono::seconds(1)});
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

TEST_F(HttpServerTest, answerMaySayItsTypeAndHeaders) {
  HttpServer server([](const ReceivedRequest&) {
    return ServedAnswer{
        .body = "p {}", .type = "text/css", .headers = {{"ETag", "\"1\""}, {"Vary", "A"}}};
  });
  ASSERT_EQ(server.start("127.0.0.1", 0), std::nullopt);
  RawClient client(server.port());
  ASSERT_TRUE(client.send("GET / HTTP/1.1\r\nHost: h\r\nConnection: close\r\n\r\n"));
  const std::string answer = client.hear();
  EXPECT_THAT(answer, HasSubstr("\r\nContent-Type: text/css\r\n"));
  EXPECT_THAT(answer, Not(HasSubstr("application/json")));
  EXPECT_THAT(answer, HasSubstr("\r\nETag: \"1\"\r\n"));
  EXPECT_THAT(answer, HasSubstr("\r\nVary: A\r\n"));
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
  const std::size_t most = Reception().mostBodyBytes;
  EXPECT_THAT(answerTo(post(most)), StartsWith("HTTP/1.1 200 "));
  EXPECT_THAT(answerTo(post(most + 1)), StartsWith("HTTP/1.1 413 "));
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

// What a stream gives, piece by piece, as another thread hands it over.
class ScriptedStream final : public BodyStream {
 public:
  void add(std::string piece, const ReceivedRequest& request) {
    {
      const std::lock_guard lock(mutex_);
      text_ += piece;
    }
    request.wake();
  }
  void end(const ReceivedRequest& request) {
    {
      const std::lock_guard lock(mutex_);
      isEnded_ = true;
    }
    request.wake();
  }

  Piece read(char* to, std::size_t most) override {
    const std::lock_guard lock(mutex_);
    const std::size_t bytes = text_.copy(to, most);
    text_.erase(0, bytes);
    return {.bytes = bytes, .isEnd = bytes == 0 && isEnded_};
  }

 private:
  std::mutex mutex_;
  std::string text_;
  bool isEnded_ = false;
};

// A server whose answers the test makes; each request waits for them.
class ConcurrentHttpServer : public testing::Test {
 protected:
  ConcurrentHttpServer() { EXPECT_EQ(server_.start("127.0.0.1", 0), std::nullopt); }

  // Of the next request.
  std::shared_ptr<ScriptedStream> awaitStream() {
    test::awaitUntil([&] { return isAsked_.load(); }, "a request");
    return stream_;
  }

  std::atomic<bool> isAsked_ = false;
  ReceivedRequest request_;
  std::shared_ptr<ScriptedStream> stream_ = std::make_shared<ScriptedStream>();
  HttpServer server_{[this](ReceivedRequest& request) {
    request_ = request;
    isAsked_ = true;
    return ServedAnswer{.stream = stream_};
  }};
};

constexpr const char* anyRequest = "GET / HTTP/1.1\r\nHost: h\r\nConnection: close\r\n\r\n";

TEST_F(ConcurrentHttpServer, streamGoesOutAsItComes) {
  RawClient client(server_.port());
  ASSERT_TRUE(client.send(anyRequest));
  const auto stream = awaitStream();
  stream->add("one", request_);
  EXPECT_THAT(client.hearUntil("one"), StartsWith("HTTP/1.1 200 OK\r\n"));
  stream->add("two", request_);
  client.hearUntil("two");
  stream->end(request_);
  EXPECT_THAT(client.hear(), EndsWith("0\r\n\r\n"));
}

TEST_F(ConcurrentHttpServer, streamIsLinesOfJson) {
  RawClient client(server_.port());
  ASSERT_TRUE(client.send(anyRequest));
  awaitStream()->end(request_);
  const std::string answer = client.hear();
  EXPECT_THAT(answer, HasSubstr("\r\nContent-Type: application/x-ndjson\r\n"));
  EXPECT_THAT(answer, HasSubstr("\r\nTransfer-Encoding: chunked\r\n"));
}

TEST_F(ConcurrentHttpServer, wakingAConnectionThatIsGoneDoesNothing) {
  {
    RawClient client(server_.port());
    ASSERT_TRUE(client.send(anyRequest));
    awaitStream()->add("one", request_);
    client.hearUntil("one");
  }
  for (int i = 0; i < 100; ++i) stream_->add("more", request_);
  stream_->end(request_);
  server_.stop();
  request_.wake();
}

TEST_F(ConcurrentHttpServer, stopWaitsForAnAnswerThatIsUnderWay) {
  RawClient client(server_.port());
  ASSERT_TRUE(client.send(anyRequest));
  const auto stream = awaitStream();
  stream->add("one", request_);
  client.hearUntil("one");
  std::thread stopping([&] { server_.stop(test::longestWait); });
  stream->add("two", request_);
  client.hearUntil("two");
  stream->end(request_);
  EXPECT_THAT(client.hear(), EndsWith("0\r\n\r\n"));
  stopping.join();
}

TEST_F(ConcurrentHttpServer, stopBreaksOffAnAnswerThatDoesNotEnd) {
  RawClient client(server_.port());
  ASSERT_TRUE(client.send(anyRequest));
  awaitStream()->add("one", request_);
  client.hearUntil("one");
  server_.stop(std::chrono::milliseconds(10));
  EXPECT_THAT(client.hear(), Not(HasSubstr("0\r\n\r\n")));
}

TEST_F(HttpServerTest, connectionsEndWithTheAnswerWhileItStops) {
  std::promise<void> isAsked;
  std::promise<void> mayAnswer;
  HttpServer server([&](const ReceivedRequest&) {
    isAsked.set_value();
    mayAnswer.get_future().wait();
    return ServedAnswer{200, "late"};
  });
  ASSERT_EQ(server.start("127.0.0.1", 0), std::nullopt);
  RawClient client(server.port());
  ASSERT_TRUE(client.send("GET / HTTP/1.1\r\nHost: h\r\n\r\n"));
  isAsked.get_future().wait();
  std::thread stopping([&] { server.stop(test::longestWait); });
  // Nobody else is let in any more once it has begun.
  test::awaitUntil([&] { return !RawClient::reaches(server.port()); }, "the end of listening");
  mayAnswer.set_value();
  EXPECT_THAT(client.hear(), EndsWith("late"));
  stopping.join();
}

TEST_F(HttpServerTest, refusalByTheHeadKeepsNothingOfTheBody) {
  HttpServer server(
      [](const ReceivedRequest&) {
        return ServedAnswer{200, "kept"};
      },
      HttpLimits(),
      [](const ReceivedRequest& head) {
        return head.target == "/no" ? Reception{.refusal = errorAnswer(401, "no")}
                                    : Reception{.mostBodyBytes = 3};
      });
  ASSERT_EQ(server.start("127.0.0.1", 0), std::nullopt);
  const auto answer = [&](const std::string& target, const std::string& body) {
    RawClient client(server.port());
    EXPECT_TRUE(client.send("POST " + target +
                            " HTTP/1.1\r\nConnection: close\r\nContent-Length: " +
                            std::to_string(body.size()) + "\r\n\r\n" + body));
    return client.hear();
  };
  EXPECT_THAT(answer("/no", std::string(200'000, 'x')), StartsWith("HTTP/1.1 401 "));
  EXPECT_THAT(answer("/", "abc"), StartsWith("HTTP/1.1 200 "));
  EXPECT_THAT(answer("/", "abcd"), HasSubstr("The body is longer than 3 bytes"));
}

TEST_F(HttpServerTest, bodiesTogetherAreBounded) {
  HttpServer server(
      [](const ReceivedRequest& request) {
        return ServedAnswer{200, request.body};
      },
      {.silence = test::longestWait, .keptBytes = 3});
  ASSERT_EQ(server.start("127.0.0.1", 0), std::nullopt);
  const std::string post = "POST / HTTP/1.1\r\nConnection: close\r\nContent-Length: ";
  const auto answer = [&](const std::string& request) {
    RawClient client(server.port());
    EXPECT_TRUE(client.send(request));
    return client.hear();
  };
  const auto awaitRoom = [&] {
    test::awaitUntil([&] { return answer(post + "3\r\n\r\nxyz").ends_with("\r\n\r\nxyz"); },
                     "the room of the body that is answered");
  };
  std::optional<RawClient> slow;
  const auto isSecondShed = [&] {
    slow.emplace(server.port());
    EXPECT_TRUE(slow->send(post + "3\r\n\r\nab"));
    if (answer(post + "2\r\n\r\nxy").starts_with("HTTP/1.1 503 ")) return true;
    // It was first, so that the slow one may have found no room.
    EXPECT_TRUE(slow->send("c"));
    slow->hear();
    awaitRoom();
    return false;
  };
  test::awaitUntil(isSecondShed, "a body that finds no room");
  EXPECT_THAT(answer(post + "1\r\n\r\nx"), StartsWith("HTTP/1.1 200 "));
  ASSERT_TRUE(slow->send("c"));
  EXPECT_THAT(slow->hear(), EndsWith("\r\n\r\nabc"));
  awaitRoom();
}

}  // namespace
}  // namespace tern::service
