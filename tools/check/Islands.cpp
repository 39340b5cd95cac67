#include <algorithm>
#include <map>
#include <set>

#include "tools/check/Checks.hpp"
#include "tools/check/MapLinks.hpp"

namespace tern::check {

namespace {

using Members = std::vector<std::uint32_t>;

std::vector<Members> islandsOf(const graph::Standing& standing) {
  std::map<std::uint32_t, Members> parts;
  for (std::uint32_t node = 0; node < standing.weak.size(); ++node) {
    if (!standing.isOnMainland(node)) parts[standing.weak[node]].push_back(node);
  }
  std::vector<Members> islands;
  for (auto& [part, members] : parts) islands.push_back(std::move(members));
  std::ranges::stable_sort(islands, std::ranges::greater(), &Members::size);
  return islands;
}

Finding tell(const Subject& subject, const Members& island) {
  Finding finding{Kind::island, {}, commonMap(subject.network, island), {}};
  for (const std::uint32_t node : island) {
    finding.ids.push_back(subject.network.nodes()[node].id);
  }
  finding.message = listedIds("waypoint", finding.ids) + onFloor(subject, finding.map) +
                    (island.size() == 1 ? " is" : " are") + " joined to nothing else, " +
                    std::to_string(island.size()) + " of " +
                    std::to_string(subject.network.nodes().size()) + " in all";
  return finding;
}

}  // namespace

void checkIslands(const Subject& subject, Findings& findings) {
  const MapLinks links(subject);
  // Floors without any mover whose largest part was seen.
  std::set<std::int64_t> seen;
  for (const std::uint32_t node : subject.standing.core) {
    seen.insert(subject.network.nodes()[node].map);
  }
  for (const Members& island : islandsOf(subject.standing)) {
    const auto map = commonMap(subject.network, island);
    if (map && !links.leadOn(*map) && seen.insert(*map).second) continue;
    findings.push_back(tell(subject, island));
  }
}

}  // namespace tern::check
