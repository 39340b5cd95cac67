// The levels of a station's nodes, where the feed does not say them: they follow from the pathways.
//
// What is walked stays on its level. Where no node has a level, the entrances lie on 0. Whatever
// climbs leads to another level: up or down as its steps say, else farther from the street, which
// for a station without a word of it is down.
//
//   ordinalsOf({{}, {}}, {true, false}, {{.from = 0, .to = 1, .climbs = true}});  // {0, -1}
//
// Threads: free functions. Fails: never.
#pragma once

#include <cstddef>
#include <optional>
#include <span>
#include <vector>

namespace tern::imports {

struct LevelLink {
  std::size_t from = 0;
  std::size_t to = 0;
  bool climbs = false;
  // A lift may pass levels that it does not stop at, so others are asked first.
  bool isLift = false;
  // 1 up, -1 down on the way there; 0 when the feed does not say.
  int rise = 0;
};

// REQUIRES: as many entrances as levels; links between them.
std::vector<double> ordinalsOf(const std::vector<std::optional<double>>& stated,
                               const std::vector<bool>& isEntrance,
                               std::span<const LevelLink> links);

}  // namespace tern::imports
