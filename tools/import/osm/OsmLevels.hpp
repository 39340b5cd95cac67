// Which levels an OpenStreetMap record lies on: "0", "-1;0", "0-3", "-2--1", "0.5", and what
// `repeat_on` adds.
//
// Threads: free functions. Fails: by value; what cannot be read is said to be so.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "tools/import/osm/OsmData.hpp"

namespace tern::imports {

// No building is higher or deeper, and nothing lies on more of its levels.
inline constexpr double mostLevel = 300;
inline constexpr std::size_t mostLevelsOfOne = 300;

struct [[nodiscard]] OsmLevels {
  // From the lowest to the highest, each once.
  std::vector<double> levels;
  // What of the text is no level.
  std::string unread;
};

OsmLevels osmLevels(std::string_view text);
// Of `level` and `repeat_on` together.
OsmLevels osmLevels(const OsmTags& tags);

}  // namespace tern::imports
