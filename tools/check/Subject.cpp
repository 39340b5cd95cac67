#include "tools/check/Subject.hpp"

#include <algorithm>

#include "tools/tern/words/FloorName.hpp"

namespace tern::check {

std::string Subject::floor(std::int64_t map) const { return words::floorName(venue, map).text(); }

std::optional<std::int64_t> commonMap(const Network& network,
                                      std::span<const std::uint32_t> nodes) {
  if (nodes.empty()) return std::nullopt;
  const std::int64_t map = network.nodes()[nodes.front()].map;
  const auto isThere = [&](std::uint32_t node) { return network.nodes()[node].map == map; };
  return std::ranges::all_of(nodes, isThere) ? std::optional(map) : std::nullopt;
}

std::string onFloor(const Subject& subject, std::optional<std::int64_t> map) {
  return map ? " on " + subject.floor(*map) : " on several floors";
}

}  // namespace tern::check
