#include <map>

#include "tools/check/Checks.hpp"

namespace tern::check {

namespace {

// The links between nodes that one gets to and not back from.
graph::Digraph trapsOf(const Subject& subject, const std::vector<bool>& isTrap) {
  graph::Digraph graph;
  for (std::uint32_t node = 0; node < subject.ways.count(); ++node) {
    for (const std::uint32_t target : subject.ways.of(node)) {
      if (isTrap[node] && isTrap[target]) graph.targets.push_back(target);
    }
    graph.first.push_back(static_cast<std::uint32_t>(graph.targets.size()));
  }
  return graph;
}

Finding tell(const Subject& subject, const std::vector<std::uint32_t>& trap) {
  Finding finding{Kind::oneWayTrap, {}, commonMap(subject.network, trap), {}};
  for (const std::uint32_t node : trap) finding.ids.push_back(subject.network.nodes()[node].id);
  finding.message = "a way leads to " + listedIds("waypoint", finding.ids) +
                    onFloor(subject, finding.map) + " and none leads back";
  return finding;
}

}  // namespace

void checkTraps(const Subject& subject, Findings& findings) {
  const graph::Standing& standing = subject.standing;
  std::vector<bool> isTrap(subject.ways.count());
  for (std::uint32_t node = 0; node < isTrap.size(); ++node) {
    isTrap[node] = standing.reached[node] && !standing.returns[node];
  }
  const graph::PartNumbers parts = graph::weakParts(trapsOf(subject, isTrap));
  std::map<std::uint32_t, std::vector<std::uint32_t>> traps;
  for (std::uint32_t node = 0; node < isTrap.size(); ++node) {
    if (isTrap[node]) traps[parts[node]].push_back(node);
  }
  for (const auto& [part, trap] : traps) findings.push_back(tell(subject, trap));
}

}  // namespace tern::check
