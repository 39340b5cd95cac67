#include "TernCoreKit/wayfinding/detail/Graph.hpp"

#include <cmath>
#include <cstddef>

namespace tern::inline v5::detail {

namespace {

Indexed<KnownIndex, FloorPoint> pointsOf(const VenueFacts& facts) {
  Indexed<KnownIndex, FloorPoint> points;
  points.reserve(facts.known().count());
  for (KnownIndex i{0}; numberOf(i) < facts.known().count(); ++i) {
    points.push_back(facts.pointOf(i));
  }
  return points;
}

// Lays out one node's links after the other's.
class LinkLayer {
 public:
  LinkLayer(const VenueFacts& facts, const LinkBounds& bounds, const EdgeLists& edges,
            const NodeOrder& order)
      : facts_(facts),
        bounds_(bounds),
        edges_(edges),
        order_(order),
        points_(pointsOf(facts)),
        nowhere_(facts.pointOf(none<KnownIndex>)) {}

  void layNode(WaypointIndex waypoint, Graph& graph) const {
    const PathEnd self{numberOf(facts_.firstOf(waypoint))};
    const FloorPoint& from = pointOf(facts_.knownAt(self));
    for (const PathIndex path : edges_.of(waypoint)) {
      if (bounds_.isLinked(path)) layPath(path, self, from, graph);
    }
  }

 private:
  const FloorPoint& pointOf(KnownIndex known) const {
    return known != none<KnownIndex> ? points_[known] : nowhere_;
  }

  void layPath(PathIndex path, PathEnd self, const FloorPoint& from, Graph& graph) const {
    const PathRule& rule = facts_.ruleOf(path);
    for (const PathEnd end : facts_.paths.endsOf(path)) {
      if (end == self) continue;
      const KnownIndex known = facts_.knownAt(end);
      const auto cost = linkCost(from, pointOf(known), rule.passage);
      if (!cost) continue;
      const bool isPlain = cost->cost >= 0 && std::isfinite(cost->cost);
      graph.costsArePlain = graph.costsArePlain && isPlain;
      const Position target = targetOf(end, known);
      graph.links.push_back(
          {target, cost->cost, target != noPosition ? rule.rank : none<TypeRank>});
      graph.walksCostTheirLength =
          graph.walksCostTheirLength && (!rule.passage.isWalking || cost->cost == cost->distance);
      if (graph.listsDistances) graph.distances.push_back(cost->distance);
    }
  }

  // The node that has the id of the waypoint as the maps know it, which is 0 where none does.
  Position targetOf(PathEnd end, KnownIndex known) const {
    WaypointIndex target{numberOf(end)};
    if (facts_.mapWaypoints != nullptr || !facts_.isWaypoint(end)) {
      const bool isKnown = known != none<KnownIndex>;
      const std::int64_t id = isKnown ? facts_.known().ids.integer(numberOf(known)) : 0;
      target = facts_.waypoints.byId.first<WaypointIndex>(id);
    }
    return target != none<WaypointIndex> ? order_.positionOf(target) : noPosition;
  }

  const VenueFacts& facts_;
  const LinkBounds& bounds_;
  const EdgeLists& edges_;
  const NodeOrder& order_;
  const Indexed<KnownIndex, FloorPoint> points_;
  const FloorPoint nowhere_;
};

// A path to a waypoint that nobody knows leads to the one whose id is 0, wherever that one lies.
bool leadsToOthers(const VenueFacts& facts) {
  return facts.waypoints.byId.first<WaypointIndex>(0) != none<WaypointIndex>;
}

// How many links there are at the most.
std::size_t roomFor(const VenueFacts& facts, const LinkBounds& bounds, const EdgeLists& edges) {
  std::size_t room = 0;
  for (const PathIndex path : edges.paths) {
    if (bounds.isLinked(path)) room += facts.paths.endsOf(path).size() - 1;
  }
  return room;
}

}  // namespace

Graph layGraph(const VenueFacts& facts, const LinkBounds& bounds, const EdgeLists& edges,
               const NodeOrder& order) {
  Graph graph;
  const auto count = static_cast<std::uint32_t>(facts.waypoints.count());
  const LinkLayer layer(facts, bounds, edges, order);
  graph.listsDistances = facts.hidesPoints() || leadsToOthers(facts);
  graph.firstLink.reserve(count + 1);
  graph.links.reserve(roomFor(facts, bounds, edges));
  for (Position position{0}; numberOf(position) < count; ++position) {
    graph.firstLink.push_back(graph.links.endIndex());
    layer.layNode(order.waypointAt(position), graph);
  }
  graph.firstLink.push_back(graph.links.endIndex());
  graph.links.shrink_to_fit();
  graph.distances.shrink_to_fit();
  return graph;
}

}  // namespace tern::detail
