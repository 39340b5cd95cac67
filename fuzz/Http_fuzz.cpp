// An HTTP server that answers with any bytes: the transport takes them as an answer or as an error,
// once, within its bounds, and shows nothing of the request.
#include <chrono>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "TernCoreKit/platform/Http.hpp"
#include "TernCoreKit/service/HTTPClient.hpp"
#include "fuzz/ReplyingServer.hpp"
#include "fuzz/Target.hpp"

namespace tern::fuzz {
namespace {

constexpr std::size_t mostBodyBytes = 20'000;

ReplyingServer& server() {
  static ReplyingServer only;
  return only;
}

// No answer sends a request on: where the bytes lead is for Redirects_fuzz.cpp.
std::shared_ptr<HttpTransport> transport() {
  static const auto only = makeHttpTransport({.connectTimeout = std::chrono::seconds(5),
                                              .stallTimeout = std::chrono::seconds(5),
                                              .mostBodyBytes = mostBodyBytes,
                                              .mostRedirects = 0});
  return only;
}

// What comes of a request, and that it comes once.
class Answered {
 public:
  void take(HttpResponse response) {
    const std::lock_guard lock(mutex_);
    require(!response_.has_value(), "a completion is called once");
    response_ = std::move(response);
    came_.notify_all();
  }
  HttpResponse wait() {
    std::unique_lock lock(mutex_);
    const bool isThere =
        came_.wait_for(lock, std::chrono::seconds(30), [&] { return response_.has_value(); });
    require(isThere, "a request comes to its end");
    return *response_;
  }

 private:
  std::mutex mutex_;
  std::condition_variable came_;
  std::optional<HttpResponse> response_;
};

// What a server sends may stand in an error; so it must not be what the request hides.
void run(const std::string& bytes) {
  if (bytes.find("secret") != std::string::npos) return;
  server().answerWith(bytes);
  const auto answered = std::make_shared<Answered>();
  transport()->send({.url = server().url() + "/path?secretquery",
                     .method = bytes.size() % 2 == 0 ? "GET" : "POST",
                     .headers = {{"Authorization", "Bearer secrettoken"}},
                     .body = bytes.size() % 2 == 0 ? std::nullopt : std::optional("secretbody")},
                    [answered](HttpResponse response) { answered->take(std::move(response)); });
  const HttpResponse response = answered->wait();
  require(response.status >= 0 && response.status <= 999, "a status has three digits");
  require(!response.error || !response.body, "a part of a body is no body");
  require(response.body.value_or("").size() <= mostBodyBytes, "a body keeps within its bound");
  require(response.error.value_or("").find("secret") == std::string::npos,
          "an error shows nothing of the request");
  require(response.error || response.status != 0, "without an answer there is an error");
}

std::vector<std::string> seeds() {
  return {"HTTP/1.1 200 OK\r\nContent-Length: 2\r\n\r\n{}",
          "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n2\r\n{}\r\n0\r\n\r\n",
          "HTTP/1.1 301 Moved\r\nLocation: /b\r\nContent-Length: 0\r\n\r\n",
          "HTTP/1.1 100 Continue\r\n\r\nHTTP/1.1 304 Not Modified\r\n\r\n",
          "HTTP/1.1 200 OK\r\nContent-Encoding: gzip\r\n\r\n\x1f\x8b\x08",
          "HTTP/1.0 500 No\r\nX: y\r\n z\r\n\r\nbody until the end",
          "HTTP/2 200\r\n\r\n",
          "HTTP/200 OK\r\n\r\n{}",
          "HTTP/1.1 200 OK\r\nContent-Length: 99999999\r\n\r\nshort",
          ""};
}

}  // namespace

extern const Target httpTarget{.name = "http", .takesJson = false, .run = run, .seeds = seeds};

}  // namespace tern::fuzz
