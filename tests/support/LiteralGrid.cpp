#include "tests/support/LiteralGrid.hpp"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <string>
#include <utility>

#include "TernCoreKit/model/collections/TernFloorCollection.hpp"
#include "TernCoreKit/model/collections/TernWaypointCollection.hpp"
#include "TernCoreKit/model/records/TernBuilding.hpp"
#include "TernCoreKit/model/records/TernFloor.hpp"
#include "TernCoreKit/model/records/TernMap.hpp"
#include "TernCoreKit/model/records/TernPath.hpp"
#include "TernCoreKit/model/records/TernPathType.hpp"
#include "TernCoreKit/model/records/TernWaypoint.hpp"

namespace tern::test {

namespace {

constexpr std::int64_t verticalScale = 100;

Value coordinate(const TernWaypoint* waypoint, std::size_t axis) {
  if (waypoint == nullptr || axis >= waypoint->coordinates.size()) return {};
  return waypoint->coordinates.items()[axis];
}

std::int64_t mapIdOf(const TernWaypoint* waypoint) {
  return waypoint != nullptr ? waypoint->mapId.integer() : 0;
}

bool contains(const std::vector<std::int64_t>& ids, std::int64_t id) {
  return std::find(ids.begin(), ids.end(), id) != ids.end();
}

std::vector<std::int64_t> waypointIdsOf(const TernPath& path) {
  std::vector<std::int64_t> ids;
  for (const Value& id : path.waypointIds.items()) ids.push_back(id.integer());
  return ids;
}

float heuristic(const TernPoint& a, const TernPoint& b) {
  const double dx = double{a.x} - double{b.x};
  const double dy = double{a.y} - double{b.y};
  const double dz = double{a.z} - double{b.z};
  return static_cast<float>(std::sqrt(dx * dx + dy * dy + dz * dz));
}

constexpr double earthRadius = 6378137.0;
constexpr double pi = 3.141592653589793;

double eastingOf(double longitude) { return longitude * pi / 180 * earthRadius; }

double northingOf(double latitude) {
  return std::log(std::tan(latitude * pi / 180 * 0.5 + 0.7853981633974483)) * earthRadius;
}

float multiplied(float verticalFactor, float typeFactor, float weight, int multiplier) {
  return verticalFactor * (typeFactor * weight * static_cast<float>(multiplier));
}

}  // namespace

void LiteralNode::reset() {
  visited = false;
  closed = false;
  f = 0;
  g = 0;
  distance.reset();
  parent = nullptr;
  usedEdgeTypeId = -1;
}

LiteralGrid::LiteralGrid(VenueLists given) : lists(std::move(given)) {
  for (const auto& waypoint : lists.waypoints) {
    if (waypoint != nullptr) nodes.push_back(makeNode(*waypoint));
  }
}

LiteralNode LiteralGrid::makeNode(const TernWaypoint& waypoint) const {
  LiteralNode node;
  node.nodeId = waypoint.id.integer();
  node.x = coordinate(&waypoint, 0).number();
  node.y = coordinate(&waypoint, 1).number();
  node.z = getMapZValue(waypoint.mapId.integer());
  node.mapId = waypoint.mapId.integer();
  node.edges = generateEdges(node.nodeId);
  const std::string externalId(waypoint.externalId.text());
  const std::size_t colon = externalId.rfind(':');
  if (lists.isForMultiVenue && colon != std::string::npos) {
    const std::int64_t exit = std::strtoll(externalId.c_str() + colon + 1, nullptr, 10);
    if (getWPById(exit) != nullptr) node.edges.push_back(generateVirtualEdge(node.nodeId, exit));
  }
  node.neighbors = generateNeighbors(node.nodeId, node.edges);
  return node;
}

const TernWaypoint* LiteralGrid::getWPById(std::int64_t id) const {
  for (const auto& map : lists.maps) {
    if (map == nullptr || !map->waypoints) continue;
    if (const auto found = map->waypoints->getById(id)) return found.get();
  }
  return nullptr;
}

TernASGrid::Paths LiteralGrid::getPathsWithWaypoint(std::int64_t id) const {
  TernASGrid::Paths found;
  for (const auto& path : lists.paths) {
    if (path != nullptr && contains(waypointIdsOf(*path), id)) found.push_back(path);
  }
  return found;
}

std::shared_ptr<TernPathType> LiteralGrid::getPathTypeById(std::int64_t id) const {
  for (const auto& type : lists.pathTypes) {
    if (type != nullptr && type->id.integer() == id) return type;
  }
  return nullptr;
}

const TernFloor* LiteralGrid::getFloorByMapId(std::int64_t mapId) const {
  for (const auto& building : lists.buildings) {
    if (building == nullptr || !building->floors) continue;
    for (const auto& floor : building->floors->getAll()) {
      if ((floor->map ? floor->map->id.integer() : 0) == mapId) return floor.get();
    }
  }
  return nullptr;
}

LiteralNode* LiteralGrid::getNodeById(std::int64_t id) {
  for (LiteralNode& node : nodes) {
    if (node.nodeId == id) return &node;
  }
  return nullptr;
}

std::vector<LiteralNode*> LiteralGrid::getNodesForIds(const TernASGrid::Waypoints& items) {
  std::vector<LiteralNode*> found;
  for (LiteralNode& node : nodes) {
    const bool isMeant = std::any_of(items.begin(), items.end(), [&](const auto& item) {
      return item != nullptr && item->id.integer() == node.nodeId;
    });
    if (isMeant) found.push_back(&node);
  }
  return found;
}

float LiteralGrid::getMapZValue(std::int64_t mapId) const {
  const TernFloor* floor = getFloorByMapId(mapId);
  return floor != nullptr ? static_cast<float>(verticalScale * floor->level.integer()) : 0;
}

int LiteralGrid::getFloorPreferenceMultiplier(std::int64_t mapId) const {
  const TernFloor* floor = getFloorByMapId(mapId);
  const std::int64_t preference = floor != nullptr ? floor->preference.integer() : 0;
  if (preference == 0) return 1;
  return preference == -2 ? -1 : 0;
}

void LiteralGrid::reset() {
  for (LiteralNode& node : nodes) node.reset();
}

void LiteralGrid::shouldBlockEdgeBetweenNode(LiteralNode& a, const LiteralNode& b, bool block) {
  for (TernASEdge& edge : a.edges) {
    if (contains(edge.nodes, b.nodeId)) edge.blocked = block;
  }
}

bool LiteralGrid::isEdgeBlockedBetweenNode(const LiteralNode& a, const LiteralNode& b) const {
  for (const TernASEdge& edge : a.edges) {
    if (contains(edge.nodes, b.nodeId)) return edge.blocked;
  }
  return false;
}

void LiteralGrid::shouldBlockEntryToNode(const LiteralNode& n, bool block) {
  for (const TernNeighbor& neighbor : n.neighbors) {
    LiteralNode* from = getNodeById(neighbor.neighborId.integer());
    if (from != nullptr) shouldBlockEdgeBetweenNode(*from, n, block);
  }
}

void LiteralGrid::shouldBlockExitFromNode(LiteralNode& n, bool block) {
  for (TernASEdge& edge : n.edges) edge.blocked = block;
}

std::vector<TernASEdge> LiteralGrid::generateEdges(std::int64_t waypointId) const {
  std::vector<TernASEdge> edges;
  for (const auto& path : getPathsWithWaypoint(waypointId)) {
    TernASEdge edge;
    edge.edgeId = path->id;
    edge.nodes = waypointIdsOf(*path);
    edge.type = path->pathTypeId;
    edge.direction = path->direction;
    if (const auto type = getPathTypeById(path->pathTypeId.integer())) {
      edge.cost = type->weight;
      edge.acc = type->accessibility;
      edge.speed = type->verticalWeight;
    }
    edges.push_back(edge);
  }
  return edges;
}

TernASEdge LiteralGrid::generateVirtualEdge(std::int64_t a, std::int64_t b) const {
  const std::string digits = std::to_string(std::min(a, b)) + std::to_string(std::max(a, b));
  TernASEdge edge;
  edge.edgeId = std::int64_t{std::strtoll(digits.c_str(), nullptr, 10)};
  edge.nodes = {a, b};
  edge.type = 1;
  edge.direction = 0;
  if (const auto type = getPathTypeById(1)) {
    edge.cost = type->weight;
    edge.acc = type->accessibility;
    edge.speed = type->verticalWeight;
  }
  return edge;
}

std::vector<TernNeighbor> LiteralGrid::generateNeighbors(
    std::int64_t waypointId, const std::vector<TernASEdge>& edges) const {
  std::vector<TernNeighbor> neighbors;
  for (const TernASEdge& edge : edges) {
    for (const std::int64_t id : edge.nodes) {
      if (id == waypointId) continue;
      if (auto link = neighborOver(edge, getWPById(waypointId), getWPById(id))) {
        neighbors.push_back(*std::move(link));
      }
    }
  }
  return neighbors;
}

std::optional<TernNeighbor> LiteralGrid::neighborOver(const TernASEdge& edge,
                                                      const TernWaypoint* from,
                                                      const TernWaypoint* to) const {
  const TernPoint p = pointOf(from);
  const TernPoint q = pointOf(to);
  const float d = heuristic(q, p);
  int m = 1;
  if (p.z == q.z) {
    m = getFloorPreferenceMultiplier(mapIdOf(to));
  } else {
    if (edge.direction.integer() == 1 && p.z > q.z) return std::nullopt;
    if (edge.direction.integer() == 2 && p.z < q.z) return std::nullopt;
  }
  const bool isWalked = edge.type.integer() == 1;
  const float climb = std::fabs(q.z - p.z) / (static_cast<float>(edge.speed.number()) + 1.0F);
  const float verticalFactor = std::isfinite(climb) ? 1.0F + climb : 1.0F;
  const auto weight = static_cast<float>(edge.cost.number());
  TernNeighbor link;
  link.neighborId = to != nullptr ? to->id : Value();
  link.cost = multiplied(verticalFactor, isWalked ? d : 1.0F, weight, m);
  link.acc = edge.acc;
  link.edgeId = edge.edgeId;
  link.edgeTypeId = edge.type;
  link.distance = isWalked ? d : 1.0F;
  link.x = coordinate(to, 0);
  link.y = coordinate(to, 1);
  link.z = q.z;
  return link;
}

TernPoint LiteralGrid::pointOf(const TernWaypoint* waypoint) const {
  const double x = coordinate(waypoint, 0).number();
  const double y = coordinate(waypoint, 1).number();
  const float z = getMapZValue(mapIdOf(waypoint));
  if (!lists.isForMultiVenue) return {static_cast<float>(x), static_cast<float>(y), z};
  return {static_cast<float>(eastingOf(x)), static_cast<float>(northingOf(y)), z};
}

}  // namespace tern::test
