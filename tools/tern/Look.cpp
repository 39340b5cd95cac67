#include "tools/tern/Look.hpp"

#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>

#include "tools/tern/Wording.hpp"

namespace tern::command {

namespace {

// Longer lines are hard to read, and shorter ones leave no room for an option and its meaning.
constexpr std::size_t leastWidth = 40;
constexpr std::size_t mostWidth = 100;

std::string_view variable(const char* name) {
  const char* const text = std::getenv(name);
  return text != nullptr ? text : "";
}

std::size_t widthOf(int terminal) {
  winsize size{};
  std::size_t width = 0;
  if (ioctl(terminal, TIOCGWINSZ, &size) == 0) width = size.ws_col;
  if (width == 0) {
    const auto columns = parseWhole(variable("COLUMNS"));
    if (columns && *columns > 0) width = static_cast<std::size_t>(*columns);
  }
  return width == 0 ? Look().width : std::clamp(width, leastWidth, mostWidth);
}

bool hasColours() {
  const std::string_view kind = variable("TERM");
  return variable("NO_COLOR").empty() && !kind.empty() && kind != "dumb";
}

}  // namespace

std::string Look::styled(std::string_view style, std::string_view text) const {
  std::string shown;
  if (isColoured) shown.append("\x1B[").append(style).append("m");
  shown.append(text);
  if (isColoured) shown.append("\x1B[0m");
  return shown;
}

Look lookOf(int descriptor) {
  if (isatty(descriptor) == 0) return {};
  return {.width = widthOf(descriptor), .isColoured = hasColours()};
}

}  // namespace tern::command
