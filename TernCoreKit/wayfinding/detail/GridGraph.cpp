#include "TernCoreKit/wayfinding/detail/GridGraph.hpp"

#include <algorithm>

#include "TernCoreKit/model/records/TernPathType.hpp"
#include "TernCoreKit/model/records/TernWaypoint.hpp"
#include "TernCoreKit/wayfinding/detail/ExitLink.hpp"

namespace tern::inline v5::detail {

namespace {

Passage passageOver(const TernASEdge& edge) {
  return {edge.type.integer() == walkingType, edge.direction.integer(),
          static_cast<float>(edge.cost.number()), static_cast<float>(edge.speed.number())};
}

}  // namespace

GridGraph::GridGraph(GridRecords given)
    : records(std::move(given)),
      facts(readVenue(records)),
      bounds(boundLinks(facts, records.paths)),
      edges(listEdges(facts, bounds)),
      order(orderNodes(facts, edges)),
      graph(layGraph(facts, bounds, edges, order)) {}

Position GridGraph::find(std::int64_t nodeId) const {
  const auto waypoint = facts.waypoints.byId.first<WaypointIndex>(nodeId);
  return waypoint != none<WaypointIndex> ? order.positionOf(waypoint) : noPosition;
}

std::vector<Position> GridGraph::findAll(std::span<const std::int64_t> ids) const {
  std::vector<WaypointIndex> found;
  for (const std::int64_t id : ids) {
    const auto waypoint = facts.waypoints.byId.first<WaypointIndex>(id);
    if (waypoint != none<WaypointIndex>) found.push_back(waypoint);
  }
  std::ranges::sort(found);
  found.erase(std::unique(found.begin(), found.end()), found.end());
  if (facts.hasRepeats()) {
    // The later nodes of these ids are wanted too.
    const std::vector<WaypointIndex> firsts = std::move(found);
    found.clear();
    for (WaypointIndex i{0}; numberOf(i) < facts.waypoints.count(); ++i) {
      if (std::ranges::binary_search(firsts, facts.firstOf(i))) found.push_back(i);
    }
  }
  std::vector<Position> positions;
  positions.reserve(found.size());
  for (const WaypointIndex waypoint : found) positions.push_back(order.positionOf(waypoint));
  return positions;
}

TypeRank GridGraph::rankLimit(std::int64_t accessLevel) const {
  const auto end =
      std::ranges::upper_bound(facts.ranks, accessLevel, {}, &RankedType::accessibility);
  return TypeRank{static_cast<std::uint32_t>(end - facts.ranks.begin())};
}

std::shared_ptr<TernWaypoint> GridGraph::waypointById(std::int64_t id) const {
  const KnownIndex known = facts.knownById(id);
  if (known == none<KnownIndex>) return nullptr;
  const auto& list =
      facts.mapWaypoints != nullptr ? facts.mapWaypoints->records : records.waypoints;
  return list[numberOf(known)];
}

std::vector<PathIndex> GridGraph::pathsTouching(std::int64_t waypointId) const {
  std::vector<PathIndex> paths;
  const PathEnd wanted = facts.endOf(waypointId);
  for (PathIndex path{0}; numberOf(path) < facts.paths.recordCount; ++path) {
    const auto ends = facts.paths.endsOf(path);
    if (std::ranges::find(ends, wanted) != ends.end()) paths.push_back(path);
  }
  return paths;
}

TernASGrid::Paths GridGraph::pathsWith(std::int64_t waypointId) const {
  TernASGrid::Paths found;
  for (const PathIndex path : pathsTouching(waypointId)) {
    found.push_back(records.paths[numberOf(path)]);
  }
  return found;
}

std::shared_ptr<TernPathType> GridGraph::pathTypeById(std::int64_t id) const {
  const std::uint32_t at = facts.pathTypeById.find(id);
  return at != IdIndex::none ? records.pathTypes[at] : nullptr;
}

NodeFacts GridGraph::nodeFacts(Position position) const {
  const std::uint32_t waypoint = numberOf(order.waypointAt(position));
  const WaypointColumns& columns = facts.waypoints;
  const MapFacts& map = facts.maps[columns.mapOf(waypoint)];
  return {columns.ids.integer(waypoint), columns.xs.number(waypoint), columns.ys.number(waypoint),
          map.z, map.mapId};
}

NodeProgress GridGraph::progress(const SearchState& state, Position position) const {
  NodeProgress progress;
  progress.closed = state.stage(position) == NodeState::closed;
  progress.visited = state.isVisited(position);
  if (!progress.visited) return progress;
  const NodeState& node = state.nodes[position];
  progress.score = node.score;
  progress.parent = node.parent;
  progress.usedEdgeTypeId = facts.ranks[graph.links[node.link].rank].typeId;
  return progress;
}

std::vector<Distance> GridGraph::distances(const SearchState& state,
                                           std::span<const Position> positions) const {
  std::vector<Distance> distances;
  distances.reserve(positions.size());
  Position last = noPosition;
  FloorPoint lastPoint;
  for (const Position position : positions) {
    const FloorPoint point = pointOf(position);
    Distance distance;
    if (state.isVisited(position)) {
      const NodeState& node = state.nodes[position];
      const bool follows = node.parent == last;
      const float before =
          follows && distances.back() ? *distances.back() : distanceTo(state, node.parent);
      distance = before + lengthOf(node.link, follows ? lastPoint : pointOf(node.parent), point);
    }
    distances.push_back(distance);
    last = position;
    lastPoint = point;
  }
  return distances;
}

// Nodes that a caller has cleared since still say from where the search came.
float GridGraph::distanceTo(const SearchState& state, Position position) const {
  std::vector<Position> chain = {position};
  while (state.nodes[chain.back()].parent != noPosition) {
    chain.push_back(state.nodes[chain.back()].parent);
  }
  float distance = 0;
  FloorPoint from = pointOf(chain.back());
  for (std::size_t i = chain.size() - 1; i > 0; --i) {
    const FloorPoint to = pointOf(chain[i - 1]);
    distance += lengthOf(state.nodes[chain[i - 1]].link, from, to);
    from = to;
  }
  return distance;
}

Indexed<LinkIndex, float> GridGraph::linkLengths() const {
  Indexed<LinkIndex, float> lengths;
  lengths.reserve(graph.links.size());
  for (Position node{0}; numberOf(node) < graph.nodeCount(); ++node) {
    const FloorPoint from = pointOf(node);
    for (const Link& link : graph.linksOf(node)) {
      const bool leadsOn = link.target != noPosition;
      lengths.push_back(leadsOn ? lengthOf(lengths.endIndex(), from, pointOf(link.target)) : 0);
    }
  }
  return lengths;
}

// Anywhere, where no length is measured between points.
FloorPoint GridGraph::pointOf(Position position) const {
  if (graph.listsDistances || graph.walksCostTheirLength) return {};
  return facts.pointOf(KnownIndex{numberOf(facts.firstOf(order.waypointAt(position)))});
}

// Map units of a walk, else 1.
float GridGraph::lengthOf(LinkIndex link, const FloorPoint& from, const FloorPoint& to) const {
  if (graph.listsDistances) return graph.distances[link];
  const Link& taken = graph.links[link];
  if (facts.ranks[taken.rank].typeId != walkingType) return 1;
  return graph.walksCostTheirLength ? taken.cost : straightLine(to, from);
}

TernASEdge GridGraph::edgeOver(PathIndex path) const {
  const PathRule& rule = facts.ruleOf(path);
  std::vector<std::int64_t> nodes;
  for (const PathEnd end : facts.paths.endsOf(path)) nodes.push_back(facts.idOf(end));
  return TernASEdge::initASEdge(facts.paths.ids[numberOf(path)], std::move(nodes), rule.type,
                                rule.facts.weight, rule.facts.accessibility,
                                rule.facts.verticalWeight, rule.direction);
}

TernASEdge GridGraph::virtualEdge(std::int64_t a, std::int64_t b) const {
  const PathTypeFacts walking = facts.pathType(walkingType);
  return TernASEdge::initASEdge(virtualEdgeId(a, b), {a, b}, walkingType, walking.weight,
                                walking.accessibility, walking.verticalWeight, 0);
}

std::vector<TernASEdge> GridGraph::edgesTouching(std::int64_t waypointId) const {
  std::vector<TernASEdge> made;
  for (const PathIndex path : pathsTouching(waypointId)) made.push_back(edgeOver(path));
  return made;
}

std::vector<TernNeighbor> GridGraph::neighborsOver(std::int64_t waypointId,
                                                   std::span<const TernASEdge> over) const {
  const WaypointColumns& known = facts.known();
  const FloorPoint from = facts.pointOf(facts.knownById(waypointId));
  std::vector<TernNeighbor> neighbors;
  for (const TernASEdge& edge : over) {
    const Passage passage = passageOver(edge);
    for (const std::int64_t id : edge.nodes) {
      if (id == waypointId) continue;
      const KnownIndex at = facts.knownById(id);
      const FloorPoint to = facts.pointOf(at);
      const auto link = linkCost(from, to, passage);
      if (!link) continue;
      auto& made = neighbors.emplace_back(
          TernNeighbor::initNeighbor(nullptr, edge, link->cost, link->distance, to.z));
      if (at == none<KnownIndex>) continue;
      made.neighborId = known.ids[numberOf(at)];
      made.x = known.xs[numberOf(at)];
      made.y = known.ys[numberOf(at)];
    }
  }
  return neighbors;
}

std::vector<TernNeighbor> GridGraph::neighbors(Position position) const {
  std::vector<TernASEdge> linked;
  for (const PathIndex path : edges.of(order.waypointAt(position))) {
    if (bounds.isLinked(path)) linked.push_back(edgeOver(path));
  }
  return neighborsOver(nodeId(position), linked);
}

std::vector<std::int64_t> GridGraph::neighborIds(Position position) const {
  std::vector<std::int64_t> ids;
  for (const Link& link : graph.linksOf(position)) {
    if (link.target != noPosition) ids.push_back(nodeId(link.target));
  }
  return ids;
}

}  // namespace tern::detail
