#include "tools/import/write/LostNodes.hpp"

#include <algorithm>
#include <vector>

#include "tools/graph/Neighbours.hpp"
#include "tools/graph/Standing.hpp"

namespace tern::imports {

namespace {

std::uint32_t numberOf(std::size_t waypoint) { return static_cast<std::uint32_t>(waypoint); }

int levelOf(const VenuePlan& plan, std::size_t waypoint) {
  return plan.floors[plan.waypoints[waypoint].floor].level;
}

graph::Digraph waysOf(const VenuePlan& plan) {
  std::vector<graph::Link> links;
  for (const PlannedPath& path : plan.paths) {
    const int rise = levelOf(plan, path.to) - levelOf(plan, path.from);
    const int wanted = path.direction == 1 ? 1 : -1;
    const bool leadsThere = path.direction == 0 || rise * wanted > 0;
    const bool leadsBack = path.direction == 0 || rise * wanted < 0;
    if (leadsThere) links.emplace_back(numberOf(path.from), numberOf(path.to));
    if (leadsBack) links.emplace_back(numberOf(path.to), numberOf(path.from));
  }
  return graph::digraphOf(numberOf(plan.waypoints.size()), links);
}

bool isDeadEnd(const VenuePlan& plan, const graph::Digraph& neighbours, std::uint32_t node) {
  const PlannedWaypoint& waypoint = plan.waypoints[node];
  const auto isOnItsFloor = [&](std::uint32_t other) {
    return plan.waypoints[other].floor == waypoint.floor;
  };
  return waypoint.destinations.empty() && waypoint.amenities.empty() &&
         std::ranges::none_of(neighbours.of(node), isOnItsFloor) &&
         graph::areJoinedWithout(neighbours, node);
}

}  // namespace

void tellLostNodes(VenuePlan& plan) {
  const graph::Digraph ways = waysOf(plan);
  const graph::Digraph neighbours = graph::neighboursIn(ways);
  const graph::Standing standing = graph::standingIn(ways);
  for (std::uint32_t node = 0; node < plan.draft->nodes.size(); ++node) {
    const std::string& id = plan.draft->nodes[node].id;
    if (!standing.isOnMainland(node)) {
      plan.oddities.remark(id, "island", "No way joins it to most of the others.");
    } else if (!standing.returns[node]) {
      plan.oddities.remark(id, "noWayBack", "One-ways lead there, and nothing leads back.");
    } else if (!standing.reached[node]) {
      plan.oddities.remark(id, "noWayThere",
                           "One-ways lead away from it, and nothing leads there.");
    }
    if (isDeadEnd(plan, neighbours, node)) {
      plan.oddities.remark(id, "deadEnd", "Only ways from other floors lead there; none leads on.");
    }
  }
}

}  // namespace tern::imports
