#include "tools/tern/Output.hpp"

#include <poll.h>
#include <unistd.h>

#include <cerrno>

namespace tern::command {

namespace {

constexpr std::size_t gatheredBytes = std::size_t{64} * 1024;

void waitUntilWritable(int descriptor) {
  pollfd writable{descriptor, POLLOUT, 0};
  poll(&writable, 1, -1);
}

// Writes some of the text and returns how much, or sets `error`.
std::size_t writeSome(int descriptor, std::string_view text, int& error) {
  const ssize_t written = ::write(descriptor, text.data(), text.size());
  if (written >= 0) return static_cast<std::size_t>(written);
  if (errno == EAGAIN) {
    // Whoever started us made the pipe non-blocking; it is full for now.
    waitUntilWritable(descriptor);
  } else if (errno != EINTR) {
    error = errno;
  }
  return 0;
}

}  // namespace

void Output::write(std::string_view text) {
  gathered_ += text;
  if (gathered_.size() >= gatheredBytes) flush();
}

void Output::flush() {
  std::string_view left = gathered_;
  while (!left.empty() && error_ == 0) left.remove_prefix(writeSome(descriptor_, left, error_));
  gathered_.clear();
}

bool Output::isTerminal() const { return ::isatty(descriptor_) != 0; }

}  // namespace tern::command
