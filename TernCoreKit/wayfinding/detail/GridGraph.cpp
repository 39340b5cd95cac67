#include "TernCoreKit/wayfinding/detail/GridGraph.hpp"

#include <algorithm>

#include "TernCoreKit/model/collections/TernWaypointCollection.hpp"
#include "TernCoreKit/model/records/TernMap.hpp"
#include "TernCoreKit/model/records/TernPath.hpp"
#include "TernCoreKit/model/records/TernPathType.hpp"
#include "TernCoreKit/model/records/TernWaypoint.hpp"
#include "TernCoreKit/platform/Numbers.hpp"
#include "TernCoreKit/service/coordinates/TernUtils.hpp"

namespace tern::detail {

namespace {

IdIndex indexIds(const TernASGrid::PathTypes& types) {
  std::vector<std::int64_t> ids;
  ids.reserve(types.size());
  for (const auto& type : types) ids.push_back(type->id.integer());
  return IdIndex(ids);
}

// Both ids, the smaller first, written one behind the other and read as one number.
std::int64_t virtualEdgeId(VirtualPath path) {
  return leadingInteger(std::to_string(std::min(path.a, path.b)) +
                        std::to_string(std::max(path.a, path.b)));
}

}  // namespace

GridGraph::GridGraph(GridRecords given)
    : records(std::move(given)),
      floors(records.buildings, TernASGrid::verticalScale),
      pathTypePlaces(indexIds(records.pathTypes)) {}

Position GridGraph::find(std::int64_t nodeId) const {
  const std::uint32_t place = nodePlaces.find(nodeId);
  return place != IdIndex::none ? positionOf[place] : noPosition;
}

std::vector<Position> GridGraph::findAll(std::span<const std::int64_t> ids) const {
  std::vector<std::uint32_t> places;
  for (const std::int64_t id : ids) {
    const std::uint32_t place = nodePlaces.find(id);
    if (place != IdIndex::none) places.push_back(place);
  }
  std::ranges::sort(places);
  places.erase(std::unique(places.begin(), places.end()), places.end());
  if (nodePlaces.distinct() < records.waypoints.size()) {
    // Some ids repeat, and their later nodes are wanted too.
    const std::vector<std::uint32_t> firsts = std::move(places);
    places.clear();
    for (std::uint32_t i = 0; i < records.waypoints.size(); ++i) {
      const std::uint32_t first = nodePlaces.find(records.waypoints[i]->id.integer());
      if (std::ranges::binary_search(firsts, first)) places.push_back(i);
    }
  }
  std::vector<Position> positions;
  positions.reserve(places.size());
  for (const std::uint32_t place : places) positions.push_back(positionOf[place]);
  return positions;
}

std::uint32_t GridGraph::gateLimit(std::int64_t accessLevel) const {
  const auto end = std::ranges::upper_bound(kinds, accessLevel, {}, &LinkKind::accessibility);
  return static_cast<std::uint32_t>(end - kinds.begin());
}

std::shared_ptr<TernWaypoint> GridGraph::waypointById(std::int64_t id) const {
  if (mapsHoldTheNodes) {
    const std::uint32_t place = nodePlaces.find(id);
    return place != IdIndex::none ? records.waypoints[place] : nullptr;
  }
  for (const auto& map : records.maps) {
    if (!map->waypoints) continue;
    if (auto waypoint = map->waypoints->getById(id)) return waypoint;
  }
  return nullptr;
}

std::shared_ptr<TernPathType> GridGraph::pathTypeById(std::int64_t id) const {
  const std::uint32_t place = pathTypePlaces.find(id);
  return place != IdIndex::none ? records.pathTypes[place] : nullptr;
}

Place GridGraph::place(const TernWaypoint* waypoint) const {
  const FloorIndex::Facts& floor = floors.find(waypoint != nullptr ? waypoint->mapId.integer() : 0);
  // What nobody knows lies where an empty record does, which is not quite (0, 0) in metres.
  return waypoint != nullptr ? place(*waypoint, floor) : place(TernWaypoint(), floor);
}

Place GridGraph::place(const TernWaypoint& waypoint, const FloorIndex::Facts& floor) const {
  double x = waypoint.coordinate(0).number();
  double y = waypoint.coordinate(1).number();
  if (records.isForMultiVenue) {
    x = TernUtils::convertLongitudeEPSG4326ToEPSG3857(x);
    y = TernUtils::convertLatitudeEPSG4326ToEPSG3857(y);
  }
  return {static_cast<float>(x), static_cast<float>(y), floor.z, floor.multiplier};
}

Passage GridGraph::passage(std::int64_t typeId, std::int64_t direction) const {
  Passage passage{typeId == walkingType, direction, 0, 0};
  if (const auto type = pathTypeById(typeId)) {
    passage.weight = static_cast<float>(type->weight.number());
    passage.verticalWeight = static_cast<float>(type->verticalWeight.number());
  }
  return passage;
}

TernASEdge GridGraph::makeEdge(Value edgeId, std::vector<std::int64_t> nodes, Value type,
                               Value direction) const {
  const auto found = pathTypeById(type.integer());
  static const Value absent;
  return TernASEdge::initASEdge(std::move(edgeId), std::move(nodes), std::move(type),
                                found ? found->weight : absent,
                                found ? found->accessibility : absent,
                                found ? found->verticalWeight : absent, std::move(direction));
}

TernASEdge GridGraph::edgeOf(const TernPath& path) const {
  std::vector<std::int64_t> nodes;
  for (const Value& id : path.waypointIds.items()) nodes.push_back(id.integer());
  return makeEdge(path.id, std::move(nodes), path.pathTypeId, path.direction);
}

TernASEdge GridGraph::virtualEdge(VirtualPath path) const {
  return makeEdge(virtualEdgeId(path), {path.a, path.b}, walkingType, 0);
}

TernASEdge GridGraph::materialize(EdgeRef edge) const {
  const std::size_t real = records.paths.size();
  TernASEdge made = edge.path() < real ? edgeOf(*records.paths[edge.path()])
                                       : virtualEdge(virtualPaths[edge.path() - real]);
  made.blocked = edge.isBlocked();
  return made;
}

std::vector<TernNeighbor> GridGraph::neighborsOver(std::int64_t waypointId,
                                                   std::span<const TernASEdge> edges) const {
  const Place from = place(waypointById(waypointId).get());
  std::vector<TernNeighbor> neighbors;
  for (const TernASEdge& edge : edges) {
    // The numbers of the edge itself, which may have been made by hand.
    const Passage over{edge.type.integer() == walkingType, edge.direction.integer(),
                       static_cast<float>(edge.cost.number()),
                       static_cast<float>(edge.speed.number())};
    for (const std::int64_t id : edge.nodes) {
      if (id == waypointId) continue;
      const auto waypoint = waypointById(id);
      const Place to = place(waypoint.get());
      if (const auto link = linkCost(from, to, over)) {
        neighbors.push_back(
            TernNeighbor::initNeighbor(waypoint.get(), edge, link->cost, link->distance, to.z));
      }
    }
  }
  return neighbors;
}

NodeFacts GridGraph::facts(Position position) const {
  const TernWaypoint& waypoint = *records.waypoints[placeOf[position]];
  return {waypoint.id.integer(), waypoint.coordinate(0).number(), waypoint.coordinate(1).number(),
          waypoint.mapId.integer()};
}

float GridGraph::height(Position position) const {
  return floors.find(records.waypoints[placeOf[position]]->mapId.integer()).z;
}

NodeProgress GridGraph::progress(Position position) const {
  const NodeState& state = graph.states[position];
  NodeProgress progress;
  progress.closed = graph.stage(state) == NodeState::closed;
  progress.visited = graph.isVisited(state);
  if (!progress.visited) return progress;
  progress.score = state.score;
  progress.distance = state.distance;
  progress.parent = state.parent;
  progress.usedEdgeTypeId = kinds[state.usedKind].typeId;
  return progress;
}

std::vector<Position> GridGraph::chainTo(Position position) const {
  std::vector<Position> chain;
  chain.reserve(64);
  for (Position at = position; at != noPosition;) {
    chain.push_back(at);
    const NodeState& state = graph.states[at];
    at = graph.isVisited(state) ? state.parent : noPosition;
  }
  return chain;
}

void GridGraph::clearProgress(Position position) { graph.states[position].mark = 0; }

std::span<const EdgeRef> GridGraph::edgeRefsOf(Position position) const {
  return std::span(edgeRefs).subspan(firstEdge[position],
                                     firstEdge[position + 1] - firstEdge[position]);
}

std::vector<TernASEdge> GridGraph::edges(Position position) const {
  std::vector<TernASEdge> edges;
  for (const EdgeRef edge : edgeRefsOf(position)) edges.push_back(materialize(edge));
  return edges;
}

std::vector<bool> GridGraph::blockedEdges(Position position) const {
  const auto edges = edgeRefsOf(position);
  std::vector<bool> blocked;
  if (std::ranges::none_of(edges, &EdgeRef::isBlocked)) return blocked;
  for (const EdgeRef edge : edges) blocked.push_back(edge.isBlocked());
  return blocked;
}

std::vector<TernNeighbor> GridGraph::neighbors(Position position) const {
  std::vector<TernASEdge> linked;
  for (const EdgeRef edge : edgeRefsOf(position)) {
    const bool isLinked = !std::ranges::binary_search(unlinkedPaths, edge.path());
    if (isLinked) linked.push_back(materialize(edge));
  }
  return neighborsOver(nodeId(position), linked);
}

std::vector<std::int64_t> GridGraph::neighborIds(Position position) const {
  const NodeState& state = graph.states[position];
  std::vector<std::int64_t> ids;
  for (std::uint32_t i = state.firstLink; i < state.endLink; ++i) {
    const Position target = graph.links[i].target;
    if (target != noPosition) ids.push_back(nodeId(target));
  }
  return ids;
}

bool GridGraph::joins(EdgeRef edge, std::int64_t nodeId) const {
  const std::size_t real = records.paths.size();
  if (edge.path() >= real) {
    const VirtualPath& path = virtualPaths[edge.path() - real];
    return path.a == nodeId || path.b == nodeId;
  }
  return std::ranges::any_of(records.paths[edge.path()]->waypointIds.items(),
                             [&](const Value& id) { return id.integer() == nodeId; });
}

std::uint32_t GridGraph::firstEdgeJoining(Position position, std::int64_t nodeId) const {
  const auto joinsNode = [&](EdgeRef edge) { return joins(edge, nodeId); };
  const auto begin = edgeRefs.begin() + firstEdge[position];
  const auto end = edgeRefs.begin() + firstEdge[position + 1];
  return static_cast<std::uint32_t>(std::find_if(begin, end, joinsNode) - edgeRefs.begin());
}

bool GridGraph::isEdgeBlocked(Position position, std::int64_t joining) const {
  const std::uint32_t first = firstEdgeJoining(position, joining);
  return first != firstEdge[position + 1] && edgeRefs[first].isBlocked();
}

void GridGraph::blockEdges(Position position, std::optional<std::int64_t> joining, bool block) {
  for (std::uint32_t i = firstEdge[position]; i < firstEdge[position + 1]; ++i) {
    if (!joining || joins(edgeRefs[i], *joining)) edgeRefs[i].setBlocked(block);
  }
  refreshGates(position);
}

std::map<std::int64_t, std::uint32_t> GridGraph::firstEdges(Position position) const {
  std::map<std::int64_t, std::uint32_t> firsts;
  for (std::uint32_t i = firstEdge[position]; i < firstEdge[position + 1]; ++i) {
    for (const std::int64_t id : materialize(edgeRefs[i]).nodes) firsts.try_emplace(id, i);
  }
  return firsts;
}

// A search asks the first edge that joins the neighbour, whichever edge the link belongs to.
template <class Visit>
void GridGraph::forEachAskedEdge(Position position, Visit visit) const {
  constexpr std::uint32_t fewLinks = 16;
  const NodeState& state = graph.states[position];
  const bool isFew = state.endLink - state.firstLink <= fewLinks;
  const auto firsts = isFew ? std::map<std::int64_t, std::uint32_t>() : firstEdges(position);
  for (std::uint32_t i = state.firstLink; i < state.endLink; ++i) {
    if (graph.links[i].target == noPosition) continue;
    const std::int64_t id = nodeId(graph.links[i].target);
    const auto first = firsts.find(id);
    const std::uint32_t asked = isFew                   ? firstEdgeJoining(position, id)
                                : first != firsts.end() ? first->second
                                                        : firstEdge[position + 1];
    if (asked != firstEdge[position + 1]) visit(i, asked);
  }
}

void GridGraph::refreshGates(Position position) {
  forEachAskedEdge(position, [&](std::uint32_t link, std::uint32_t edge) {
    graph.links[link].setBlocked(edgeRefs[edge].isBlocked());
  });
}

WaysInto GridGraph::waysInto(Position position) const {
  WaysInto ways;
  if (position == noPosition) return ways;
  const NodeState& state = graph.states[position];
  std::vector<Position> neighbors;
  for (std::uint32_t i = state.firstLink; i < state.endLink; ++i) {
    if (graph.links[i].target != noPosition) neighbors.push_back(graph.links[i].target);
  }
  // Once for each neighbour, however many links lead there.
  std::ranges::sort(neighbors);
  neighbors.erase(std::unique(neighbors.begin(), neighbors.end()), neighbors.end());
  for (const Position neighbor : neighbors) addWays(neighbor, nodeId(position), ways);
  return ways;
}

void GridGraph::addWays(Position from, std::int64_t intoId, WaysInto& ways) const {
  const std::size_t before = ways.edges.size();
  for (std::uint32_t i = firstEdge[from]; i < firstEdge[from + 1]; ++i) {
    if (joins(edgeRefs[i], intoId)) ways.edges.push_back(i);
  }
  const auto closed = std::span(ways.edges).subspan(before);
  forEachAskedEdge(from, [&](std::uint32_t link, std::uint32_t edge) {
    if (std::ranges::binary_search(closed, edge)) ways.links.push_back(link);
  });
}

void GridGraph::block(const WaysInto& ways, bool block) {
  for (const std::uint32_t edge : ways.edges) edgeRefs[edge].setBlocked(block);
  for (const std::uint32_t link : ways.links) graph.links[link].setBlocked(block);
}

}  // namespace tern::detail
