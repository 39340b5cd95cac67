// How text may look where it goes: how wide its lines are, and whether they have colours.
//
// Threads: as readers of the environment. Fails: never.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace tern::command {

struct Look {
  std::size_t width = 80;
  bool isColoured = false;

  // The text in bold, in red or faint where there are colours, else as it is.
  std::string bold(std::string_view text) const { return styled("1", text); }
  std::string red(std::string_view text) const { return styled("31", text); }
  std::string faint(std::string_view text) const { return styled("2", text); }

 private:
  std::string styled(std::string_view style, std::string_view text) const;
};

// That of a descriptor. A terminal is as wide as it says, else as COLUMNS says, within what can be
// read; it has colours unless NO_COLOR is set or TERM says that it has none. All else is 80 wide
// and plain.
Look lookOf(int descriptor);

}  // namespace tern::command
