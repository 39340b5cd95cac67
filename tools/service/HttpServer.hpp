// An HTTP server for small requests: each connection carries one, is answered and closed.
//
// What a client can make it keep is bounded before anything is answered: the head of a request and
// its body in bytes, the request in the time that it takes to arrive, and the connections in their
// number, one for each of the server's threads. Further ones wait in the system's queue; when no
// thread is free and one waits, a connection that has said nothing goes. What is refused is
// answered with 400, 411, 413 or 431.
//
//   HttpServer server([](const ReceivedRequest& request) { return answerTo(request); });
//   if (const auto error = server.start("127.0.0.1", 0)) ...
//
// Ownership: owns its threads; the destructor stops it. Threads: `start` and `stop` from one; the
// function is called on several at once. Fails: by value.
#pragma once

#include <atomic>
#include <chrono>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <thread>
#include <vector>

#include "tools/service/ReceivedRequest.hpp"
#include "tools/service/ServedDocuments.hpp"

namespace tern::service {

class HttpServer {
 public:
  using Milliseconds = std::chrono::milliseconds;

  static constexpr std::size_t mostHeadBytes = std::size_t{16} << 10U;
  static constexpr std::size_t mostBodyBytes = std::size_t{64} << 10U;

  // Gives the bytes to send.
  using Answer = std::function<std::string(const ReceivedRequest&)>;

  // The time is what a request may take to arrive.
  explicit HttpServer(Answer answer, Milliseconds requestTime = std::chrono::seconds(10));
  ~HttpServer();
  HttpServer(const HttpServer&) = delete;
  HttpServer& operator=(const HttpServer&) = delete;

  // Why it cannot listen there; absent when it does. A port of 0 is any that is free.
  std::optional<std::string> start(const std::string& address, int port);
  // Breaks off what is under way.
  void stop();

  int port() const { return port_; }

 private:
  using Clock = std::chrono::steady_clock;

  void work();
  void serve(int socket);
  // The request; the status that refuses it; or 0 for one that did not arrive.
  std::variant<ReceivedRequest, int> receiveRequest(int socket) const;
  bool receive(int socket, std::string& received, Clock::time_point deadline) const;
  void send(int socket, std::string_view bytes) const;
  void drain(int socket) const;
  bool awaits(int socket, short event, Milliseconds time) const;
  bool isPressed() const;

  const Answer answer_;
  const Milliseconds requestTime_;
  int listener_ = -1;
  // Becomes readable for good when the server stops.
  int stopper_ = -1;
  int port_ = 0;
  std::atomic<bool> isStopping_ = false;
  std::atomic<int> freeThreads_ = 0;
  std::vector<std::thread> threads_;
};

// The bytes of an answer in JSON.
std::string httpBytes(const ServedAnswer& answer);

}  // namespace tern::service
