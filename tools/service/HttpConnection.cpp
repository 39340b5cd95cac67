#include "tools/service/HttpConnection.hpp"

#include <sys/socket.h>

#include <algorithm>
#include <cerrno>
#include <cstring>

namespace tern::service {

bool HttpConnection::awaits(short event, std::chrono::milliseconds time) const {
  pollfd ready{socket_, event, 0};
  return ::poll(&ready, 1, static_cast<int>(std::max(time.count(), {}))) > 0;
}

bool HttpConnection::awaitRequest(const std::function<bool()>& isUnwanted) {
  constexpr std::chrono::milliseconds step{20};
  const auto end = Clock::now() + idleTime;
  while (begin_ == end_ && !awaits(POLLIN, step)) {
    if (Clock::now() >= end || isUnwanted()) return false;
  }
  deadline_ = Clock::now() + requestTime;
  return true;
}

bool HttpConnection::fill() {
  const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline_ - Clock::now());
  if (!awaits(POLLIN, left)) return false;
  const ssize_t count = ::recv(socket_, buffer_.data(), buffer_.size(), 0);
  begin_ = 0;
  end_ = static_cast<std::size_t>(std::max<ssize_t>(count, 0));
  return count > 0;
}

ssize_t HttpConnection::read(char* bytes, std::size_t size) {
  if (begin_ == end_ && !fill()) return -1;
  const std::size_t count = std::min(size, end_ - begin_);
  std::memcpy(bytes, buffer_.data() + begin_, count);
  begin_ += count;
  return static_cast<ssize_t>(count);
}

bool HttpConnection::sendAll(std::string_view bytes) {
  while (!bytes.empty()) {
    if (!is_writable()) return false;
    const ssize_t count = ::send(socket_, bytes.data(), bytes.size(), MSG_NOSIGNAL);
    if (count < 0 && errno != EINTR) return false;
    bytes.remove_prefix(static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
  }
  return true;
}

ssize_t HttpConnection::write(const char* bytes, std::size_t size) {
  if (isOver_) return -1;
  if (!substitute_) return sendAll({bytes, size}) ? static_cast<ssize_t>(size) : -1;
  isOver_ = true;
  sendAll(*substitute_);
  return -1;
}

}  // namespace tern::service
