// Text broken into lines.
//
// Threads: any. Fails: never.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace tern::command {

enum class Breaks {
  atSpaces,  // prose
  atCommas,  // and at spaces: JSON
  inShell,   // at spaces outside of quotes, with a backslash: what a shell takes for one line
};

struct Wrap {
  // The longest line. One word that is longer is cut, but not for a shell.
  std::size_t width = 80;
  // Spaces before the first line, and before each further one.
  std::size_t first = 0;
  std::size_t further = 0;
  Breaks breaks = Breaks::atSpaces;
};

// With a line break at the end of each line.
std::string wrapped(std::string_view text, const Wrap& wrap);

}  // namespace tern::command
