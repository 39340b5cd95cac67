// An HTTP server for small requests, which bounds what a client can make it keep before anything is
// answered: the bytes of a head and of a body, the number of connections, and how long one stays
// silent. GNU libmicrohttpd listens and reads; no other file includes it. What is no HTTP, and a
// head beyond the bound, it refuses with a page of its own.
//
//   HttpServer server([](const ReceivedRequest& request) { return answerTo(request); });
//   if (const auto error = server.start("127.0.0.1", 0)) ...
//
// Ownership: owns its threads; the destructor stops it. Threads: `start` and `stop` from one; the
// function is called on several at once. Fails: by value.
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
#include "tools/service/ServedDocuments.hpp"

struct MHD_Daemon;

namespace tern::service {

struct ReceivedRequest {
  std::string method;
  // Path and query as they were sent.
  std::string target;
  // In the order in which they came.
  std::vector<HttpHeader> headers;
  std::string body;
  // Of the connection, for who answers with what is no HTTP; open while the request is answered.
  int socket = -1;

  // The first of that name, in whatever case.
  std::optional<std::string> header(const std::string& name) const;
};

class HttpServer {
 public:
  // What a connection takes for a head, once, and for the library's own use.
  static constexpr std::size_t connectionBytes = std::size_t{32} << 10U;
  // A longer body is answered with 413, and not kept. Beyond the second bound it is not read to its
  // end either: the connection is closed.
  static constexpr std::size_t mostBodyBytes = std::size_t{64} << 10U;
  static constexpr std::size_t mostReadBytes = std::size_t{1} << 20U;
  static constexpr unsigned mostConnections = 512;
  static constexpr unsigned threads = 8;
  // How long a connection may stay silent.
  static constexpr std::chrono::seconds silence{10};

  // None closes the connection without an answer.
  using Answer = std::function<std::optional<ServedAnswer>(const ReceivedRequest&)>;

  explicit HttpServer(Answer answer, std::chrono::seconds mostSilence = silence);
  HttpServer(const HttpServer&) = delete;
  HttpServer& operator=(const HttpServer&) = delete;

  // Why it cannot listen there; absent when it does. A port of 0 is any that is free.
  std::optional<std::string> start(const std::string& address, int port);
  // Breaks off what is under way.
  void stop() { daemon_.reset(); }

  // 0 before it has started.
  int port() const { return port_; }

 private:
  struct Stop {
    void operator()(MHD_Daemon* daemon) const;
  };

  Answer answer_;
  const std::chrono::seconds mostSilence_;
  int port_ = 0;
  std::unique_ptr<MHD_Daemon, Stop> daemon_;
};

}  // namespace tern::service
