// An HTTP server with nothing around it: one thread, one loop, and each request's body is the
// answer. What a service takes longer than this is the price of what it does.
//
// Ownership: owns its thread; the destructor stops it. Threads: one.
// Fails: a machine without a loopback network ends the program.
#pragma once

#include <string>
#include <thread>
#include <unordered_map>

namespace tern::bench {

class EchoServer {
 public:
  EchoServer();
  ~EchoServer();
  EchoServer(const EchoServer&) = delete;
  EchoServer& operator=(const EchoServer&) = delete;

  // Of 127.0.0.1.
  int port() const { return port_; }

 private:
  void serve();
  void accept();
  void answer(int socket);

  int listener_ = -1;
  int poll_ = -1;
  // Becomes readable when the server is to stop.
  int stop_ = -1;
  int port_ = 0;
  // What has come of each connection's next request.
  std::unordered_map<int, std::string> heard_;
  std::thread thread_;
};

}  // namespace tern::bench
