// The HTTP server library with connections of our own making. It is internal to the service: only
// these files know the library.
//
// Every connection has a thread of a bounded pool. One on which nothing is said keeps its thread
// for a few seconds, or until another connection waits; a request has to arrive within a time that
// no slow sender can stretch. Connections beyond the pool wait, and beyond a number of waiting
// ones the system holds them.
//
// Ownership: owns its threads; it must be stopped before it is destroyed. Threads: `start` and
// `stop` from one. Fails: by value.
#pragma once

#include <atomic>
#include <functional>
#include <mutex>
#include <optional>
#include <set>
#include <string>
#include <thread>

#include "tools/service/HttpLibrary.hpp"
#include "tools/service/MappingService.hpp"

namespace tern::service {

class HttpServer : private httplib::Server {
 public:
  using Answer = std::function<void(const httplib::Request&, httplib::Response&)>;
  using Interceptor = decltype(ServiceSettings::intercept);

  HttpServer(Answer answer, Interceptor interceptor);
  ~HttpServer() override;

  // Why it cannot listen there; absent when it does.
  std::optional<std::string> start(const std::string& address, int port);
  void stop();

  int port() const { return port_; }

 private:
  class Pool;

  bool process_and_close_socket(socket_t socket) override;
  void serve(socket_t socket);
  // Lets `stop` reach the connection; false when it has been called already.
  bool enter(socket_t socket);
  void leave(socket_t socket);

  const Interceptor interceptor_;
  std::thread thread_;
  int port_ = 0;
  std::atomic<int> waiting_ = 0;
  std::mutex mutex_;
  // Guarded by mutex_.
  std::set<socket_t> connections_;
  bool isStopping_ = false;
};

}  // namespace tern::service
