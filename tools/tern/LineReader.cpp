#include "tools/tern/LineReader.hpp"

#include <poll.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>

namespace tern::command {

namespace {

constexpr std::size_t chunkBytes = std::size_t{64} * 1024;

// As read(2), but waits through interruptions and for a non-blocking descriptor.
ssize_t readPatiently(int descriptor, char* to, std::size_t size) {
  for (;;) {
    const ssize_t count = ::read(descriptor, to, size);
    if (count >= 0 || (errno != EINTR && errno != EAGAIN)) return count;
    if (errno == EINTR) continue;
    pollfd readable{descriptor, POLLIN, 0};
    poll(&readable, 1, -1);
  }
}

}  // namespace

std::optional<LineReader::Line> LineReader::next() {
  for (;;) {
    const std::size_t end = findEnd();
    if (end != noEnd) return take(end);
    if (end_ - begin_ > longestBytes_) dropWhatIsHeld();
    if (readMore()) continue;
    if (begin_ == end_ && !tooLong_) return std::nullopt;
    return take(end_);
  }
}

std::size_t LineReader::findEnd() {
  const std::size_t from = std::max(scanned_, begin_);
  if (from == end_) return noEnd;
  const void* found = std::memchr(buffer_.data() + from, '\n', end_ - from);
  scanned_ = found != nullptr
                 ? static_cast<std::size_t>(static_cast<const char*>(found) - buffer_.data())
                 : end_;
  return found != nullptr ? scanned_ : noEnd;
}

bool LineReader::readMore() {
  makeRoom();
  const ssize_t count = readPatiently(descriptor_, buffer_.data() + end_, buffer_.size() - end_);
  if (count < 0) error_ = errno;
  if (count <= 0) return false;
  end_ += static_cast<std::size_t>(count);
  return true;
}

void LineReader::makeRoom() {
  if (begin_ != 0) {
    std::memmove(buffer_.data(), buffer_.data() + begin_, end_ - begin_);
    scanned_ -= begin_;
    end_ -= begin_;
    begin_ = 0;
  }
  // Doubling keeps the bytes that are moved for a long line linear in its length.
  if (buffer_.size() - end_ < chunkBytes) buffer_.resize(std::max(2 * end_, end_ + chunkBytes));
}

void LineReader::dropWhatIsHeld() {
  begin_ = end_ = scanned_ = 0;
  tooLong_ = true;
}

LineReader::Line LineReader::take(std::size_t end) {
  std::string_view text(buffer_.data() + begin_, end - begin_);
  begin_ = std::min(end + 1, end_);
  scanned_ = begin_;
  if (tooLong_ || text.size() > longestBytes_) {
    tooLong_ = false;
    return {.text = {}, .tooLong = true};
  }
  if (!text.empty() && text.back() == '\r') text.remove_suffix(1);
  return {.text = text};
}

}  // namespace tern::command
