// One connection of a client, as the HTTP server library reads and writes it.
//
// Ownership: the socket stays the caller's. Threads: one. Fails: as the library expects, by -1.
#pragma once

#include <poll.h>

#include <array>
#include <chrono>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "tools/service/HttpLibrary.hpp"

namespace tern::service {

class HttpConnection : public httplib::Stream {
 public:
  explicit HttpConnection(socket_t socket) : socket_(socket) {}

  // Waits for the first byte of the next request; false when none comes in time, or when the
  // function says that nobody should wait any longer.
  bool awaitRequest(const std::function<bool()>& isUnwanted);
  // The given bytes take the place of what is written next, and nothing goes out behind them.
  void answerWith(std::string bytes) { substitute_ = std::move(bytes); }
  // Whether that has happened.
  bool isOver() const { return isOver_; }

  bool is_readable() const override { return begin_ < end_ || awaits(POLLIN, idleTime); }
  bool is_writable() const override { return awaits(POLLOUT, idleTime); }
  ssize_t read(char* bytes, std::size_t size) override;
  ssize_t write(const char* bytes, std::size_t size) override;
  void get_remote_ip_and_port(std::string&, int&) const override {}
  void get_local_ip_and_port(std::string&, int&) const override {}
  socket_t socket() const override { return socket_; }

 private:
  using Clock = std::chrono::steady_clock;
  // How long a connection may be silent between two requests, and a client may not take an answer.
  static constexpr std::chrono::milliseconds idleTime{5'000};
  // How long a request may take to arrive.
  static constexpr std::chrono::milliseconds requestTime{10'000};

  bool awaits(short event, std::chrono::milliseconds time) const;
  bool fill();
  bool sendAll(std::string_view bytes);

  const socket_t socket_;
  std::array<char, 4096> buffer_{};
  std::size_t begin_ = 0;
  std::size_t end_ = 0;
  Clock::time_point deadline_;
  std::optional<std::string> substitute_;
  bool isOver_ = false;
};

}  // namespace tern::service
