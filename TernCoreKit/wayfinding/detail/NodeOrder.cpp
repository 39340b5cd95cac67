#include "TernCoreKit/wayfinding/detail/NodeOrder.hpp"

namespace tern::inline v5::detail {

namespace {

// Whether most paths join waypoints that stand near each other in the list: near enough for their
// states to share the nearest cache.
bool isListedAlongPaths(const VenueFacts& facts) {
  constexpr std::uint32_t nearby = 1024;
  const std::vector<PathEnd>& ends = facts.paths.ends;
  std::size_t far = 0;
  for (std::size_t i = 1; i < ends.size(); ++i) {
    // Where one path ends and the next begins says much the same.
    const std::uint32_t a = numberOf(ends[i - 1]);
    const std::uint32_t b = numberOf(ends[i]);
    const bool areNodes = facts.isWaypoint(ends[i - 1]) && facts.isWaypoint(ends[i]);
    far += static_cast<std::size_t>(areNodes && (a > b ? a - b : b - a) > nearby);
  }
  return far * 8 <= ends.size();
}

NodeOrder breadthFirst(const VenueFacts& facts, const EdgeLists& edges) {
  NodeOrder order;
  order.positions = Indexed<WaypointIndex, Position>(facts.waypoints.count(), noPosition);
  order.waypoints.reserve(facts.waypoints.count());
  const auto take = [&](WaypointIndex waypoint) {
    if (order.positions[waypoint] != noPosition) return;
    order.positions[waypoint] = order.waypoints.endIndex();
    order.waypoints.push_back(waypoint);
  };
  std::vector<bool> walked(facts.paths.count(), false);
  Position expanded{0};
  for (WaypointIndex seed{0}; seed < order.positions.endIndex(); ++seed) {
    take(seed);
    for (; expanded < order.waypoints.endIndex(); ++expanded) {
      for (const PathIndex path : edges.of(order.waypoints[expanded])) {
        if (walked[numberOf(path)]) continue;
        walked[numberOf(path)] = true;
        for (const PathEnd end : facts.paths.endsOf(path)) {
          if (facts.isWaypoint(end)) take(WaypointIndex{numberOf(end)});
        }
      }
    }
  }
  return order;
}

}  // namespace

NodeOrder orderNodes(const VenueFacts& facts, const EdgeLists& edges) {
  return isListedAlongPaths(facts) ? NodeOrder() : breadthFirst(facts, edges);
}

}  // namespace tern::detail
