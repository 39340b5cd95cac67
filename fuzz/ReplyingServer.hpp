// A server on 127.0.0.1 that answers one connection after another with the same bytes, and the
// other side of one: bytes sent to a server, and what it answers.
//
// Ownership: owns its thread. Threads: one. Fails: a machine without a loopback network ends the
// process.
#pragma once

#include <mutex>
#include <string>
#include <string_view>
#include <thread>

namespace tern::fuzz {

class ReplyingServer {
 public:
  ReplyingServer();
  ~ReplyingServer();
  ReplyingServer(const ReplyingServer&) = delete;
  ReplyingServer& operator=(const ReplyingServer&) = delete;

  void answerWith(std::string bytes);
  std::string url() const { return "http://127.0.0.1:" + std::to_string(port_); }

 private:
  void serve();

  int socket_ = -1;
  int port_ = 0;
  std::mutex mutex_;
  std::string bytes_;  // guarded by mutex_
  std::thread thread_;
};

// What the server on that port answers to the bytes, until it closes the connection or says no
// more.
std::string answerTo(int port, std::string_view bytes);

}  // namespace tern::fuzz
