#include "tests/support/Terminal.hpp"

#include <pty.h>
#include <termios.h>
#include <unistd.h>

#include <array>
#include <cstdlib>
#include <utility>

namespace tern::test {

Terminal::Terminal(unsigned short columns) {
  winsize size{};
  size.ws_col = columns;
  termios lines{};
  cfmakeraw(&lines);
  if (openpty(&screen_, &terminal_, nullptr, &lines, &size) != 0) std::abort();
  reader_.emplace([this] {
    std::array<char, 4096> bytes;
    // It fails once nobody can write any more and all is read.
    for (ssize_t count = 0; (count = read(screen_, bytes.data(), bytes.size())) > 0;) {
      text_.append(bytes.data(), static_cast<std::size_t>(count));
    }
  });
}

Terminal::~Terminal() {
  text();
  close(screen_);
}

const std::string& Terminal::text() {
  if (terminal_ >= 0) close(std::exchange(terminal_, -1));
  reader_.reset();
  return text_;
}

}  // namespace tern::test
