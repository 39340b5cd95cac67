// A terminal, and all that was written to it.
//
//   Terminal terminal(40);
//   runCommand({"--help"}, {0, terminal.descriptor(), 2});
//   EXPECT_THAT(terminal.text(), ...);
//
// Ownership: closes its descriptors. Threads: reads on one of its own. Fails: a machine without
// terminals ends the test program.
#pragma once

#include <optional>
#include <string>

#include "tests/support/JoiningThread.hpp"

namespace tern::test {

class Terminal {
 public:
  // Without columns it does not know how wide it is.
  explicit Terminal(unsigned short columns = 0);
  ~Terminal();
  Terminal(const Terminal&) = delete;
  Terminal& operator=(const Terminal&) = delete;

  int descriptor() const { return terminal_; }
  // All that it was told; afterwards nothing more can be written.
  const std::string& text();

 private:
  int screen_ = -1;
  int terminal_ = -1;
  std::string text_;
  std::optional<JoiningThread> reader_;
};

}  // namespace tern::test
