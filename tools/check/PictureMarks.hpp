// What a picture of a check marks at each waypoint.
//
// Threads: plain values. Fails: never.
#pragma once

#include <algorithm>
#include <array>
#include <cstdint>
#include <utility>
#include <vector>

#include "tools/check/Subject.hpp"

namespace tern::check {

enum class Mark : std::uint8_t {
  // A way leads there and none back.
  trap,
  // A path or a mover ends there that leads nowhere.
  loose,
  // Another waypoint at the same point is joined to it.
  noLength,
  // A link that is too long, or leads through a wall; it is marked itself, not its ends.
  wrongLink,
};
inline constexpr std::array allMarks{Mark::trap, Mark::loose, Mark::noLength, Mark::wrongLink};

struct PictureMarks {
  // For each node the place of its part among all, the largest first: 0 is the mainland.
  std::vector<std::uint32_t> ranks;
  // How many nodes each part has, by its place.
  std::vector<std::uint32_t> sizes;
  // Nodes, each with what is marked there; none twice.
  std::vector<std::pair<std::uint32_t, Mark>> nodes;
  // The ends of links.
  std::vector<std::pair<std::uint32_t, std::uint32_t>> wrongLinks;

  bool has(Mark mark) const {
    if (mark == Mark::wrongLink) return !wrongLinks.empty();
    return std::ranges::any_of(nodes, [&](const auto& marked) { return marked.second == mark; });
  }
};

PictureMarks marksOf(const Subject& subject, const Findings& findings);

}  // namespace tern::check
