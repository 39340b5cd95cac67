// An HTTP server for small requests, which bounds what a client can make it keep before anything is
// answered: the bytes of a head and of a body, the number of connections, and how long one stays
// silent; and the bytes of all bodies together. GNU libmicrohttpd listens and reads; no other file
// includes it. What is no HTTP, and a head beyond the bound, it refuses with a page of its own.
//
//   HttpServer server([](const ReceivedRequest& request) { return answerTo(request); });
//   if (const auto error = server.start("127.0.0.1", 0)) ...
//
// Ownership: owns its threads; the destructor stops it. Threads: `start` and `stop` from one; the
// functions are called on several at once. Fails: by value.
#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "TernCoreKit/platform/Http.hpp"
#include "tools/service/ServedAnswer.hpp"

struct MHD_Daemon;

namespace tern::service {

struct ReceivedRequest {
  std::string method = {};
  // Path and query as they were sent.
  std::string target = {};
  // In the order in which they came.
  std::vector<HttpHeader> headers = {};
  std::string body = {};
  // Of the connection, for who answers with what is no HTTP; open while the request is answered.
  int socket = -1;
  // For an answer that is a stream: to be called when there is more of it, on any thread, also when
  // the connection is gone.
  std::function<void()> wake = {};

  // The first of that name, in whatever case.
  std::optional<std::string> header(const std::string& name) const;
};

// What a request may send, told by its head.
struct Reception {
  // A longer body is answered with 413, and not kept.
  std::size_t mostBodyBytes = std::size_t{64} << 10U;
  // The answer whatever the body is, which then is not kept.
  std::optional<ServedAnswer> refusal = std::nullopt;
};

// What all requests share.
struct HttpLimits {
  // How long a connection may stay silent.
  std::chrono::seconds silence{10};
  // Of all bodies together. One that would be more is answered with 503.
  std::size_t keptBytes = std::size_t{256} << 20U;
};

class HttpServer {
 public:
  // What a connection takes for a head, once, and for the library's own use.
  static constexpr std::size_t connectionBytes = std::size_t{32} << 10U;
  // A body that is not kept is read to its end unless it is longer: then the connection is closed.
  static constexpr std::size_t mostReadBytes = std::size_t{4} << 20U;
  // More wait to be accepted.
  static constexpr unsigned mostConnections = 4096;
  static constexpr unsigned threads = 8;
  // None closes the connection without an answer.
  using Answer = std::function<std::optional<ServedAnswer>(ReceivedRequest& request)>;
  using Receive = std::function<Reception(const ReceivedRequest& head)>;

  explicit HttpServer(Answer answer, HttpLimits limits = {}, Receive receive = {});
  ~HttpServer();
  HttpServer(const HttpServer&) = delete;
  HttpServer& operator=(const HttpServer&) = delete;

  // Why it cannot listen there; absent when it does. A port of 0 is any that is free.
  std::optional<std::string> start(const std::string& address, int port);
  // Listens no more, gives what is under way that long to come to its end, and breaks off the rest.
  void stop(std::chrono::milliseconds grace = {});

  // 0 before it has started.
  int port() const { return port_; }

  // Of the source only.
  class Waker;
  struct Arrival;
  class Traffic;

 private:
  const HttpLimits limits_;
  const std::unique_ptr<Traffic> traffic_;
  int port_ = 0;
  MHD_Daemon* daemon_ = nullptr;
};

}  // namespace tern::service
