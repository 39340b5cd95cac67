// Chooses which names are written on a map, and in which order they ask for room.
//
// Threads: a free function. Fails: never.
#pragma once

#include <cstdint>
#include <set>
#include <string_view>
#include <vector>

#include "tools/tern/picture/FloorCanvas.hpp"
#include "tools/tern/picture/FloorNames.hpp"

namespace tern::picture {

struct MapNames {
  const std::vector<PlaceName>& names;
  // Ids of the destinations that a person is told; they come first.
  const std::set<std::int64_t>& landmarks;
  // Points of what the map is about, in pixels.
  const std::vector<Point>& way;
  // Texts of labels, which need not be said again.
  std::vector<std::string_view> labels;
};

// Behind the landmarks come the names near the way; a place of several doors is larger, and seen
// from further off.
void writeNames(FloorCanvas& canvas, const MapNames& wanted);

}  // namespace tern::picture
