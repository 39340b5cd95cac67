#include "tools/tern/FaintIds.hpp"

#include <algorithm>
#include <array>

namespace tern::command {

namespace {

constexpr std::array<std::string_view, 8> kinds{"(waypoint ", "(waypoints ", "(destination ",
                                                "(amenity ",  "(building ",  "(venue ",
                                                "(map ",      "(path type "};

// How long the ids in brackets are that the text begins with; 0 for any other text.
std::size_t idsAtStart(std::string_view text) {
  for (const std::string_view kind : kinds) {
    if (!text.starts_with(kind)) continue;
    const std::size_t end = text.find_first_not_of("-0123456789, ", kind.size());
    if (end != text.npos && text[end] == ')') return end + 1;
  }
  return 0;
}

}  // namespace

std::string withFaintIds(std::string_view text, const Look& look) {
  std::string shown;
  while (!text.empty()) {
    const std::size_t ids = idsAtStart(text);
    const std::size_t end = ids > 0 ? ids : std::min(text.find('(', 1), text.size());
    shown += ids > 0 ? look.faint(text.substr(0, end)) : std::string(text.substr(0, end));
    text.remove_prefix(end);
  }
  return shown;
}

}  // namespace tern::command
