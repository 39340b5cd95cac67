#include "TernCoreKit/wayfinding/TernASGrid.hpp"

#include <utility>

#include "TernCoreKit/model/records/TernFloor.hpp"
#include "TernCoreKit/model/records/TernPath.hpp"
#include "TernCoreKit/model/records/TernPathType.hpp"
#include "TernCoreKit/model/records/TernWaypoint.hpp"
#include "TernCoreKit/wayfinding/detail/GridNodes.hpp"
#include "TernCoreKit/wayfinding/detail/PlacedNode.hpp"

namespace tern::inline v5 {

namespace {

// Without the room that lists have which grew one by one, since a grid keeps them.
template <class Record>
std::vector<std::shared_ptr<Record>> withoutNulls(std::vector<std::shared_ptr<Record>> records) {
  std::erase(records, nullptr);
  records.shrink_to_fit();
  return records;
}

}  // namespace

std::shared_ptr<TernASGrid> TernASGrid::initASGrid(Waypoints waypointsIn, Paths pathsIn,
                                                   PathTypes pathTypesIn, Maps mapFullsIn,
                                                   Buildings buildings, bool isForMultiVenue) {
  detail::GridRecords records{
      withoutNulls(std::move(waypointsIn)), withoutNulls(std::move(pathsIn)),
      withoutNulls(std::move(pathTypesIn)), withoutNulls(std::move(mapFullsIn)),
      withoutNulls(std::move(buildings)),   isForMultiVenue};
  return std::shared_ptr<TernASGrid>(
      new TernASGrid(std::make_shared<detail::GridNodes>(std::move(records))));
}

TernASGrid::TernASGrid(std::shared_ptr<detail::GridNodes> nodes) : nodes_(std::move(nodes)) {}
TernASGrid::~TernASGrid() = default;

bool TernASGrid::isMultiVenueLoaded() const { return nodes_->graph.records.isForMultiVenue; }
const TernASGrid::Waypoints& TernASGrid::waypoints() const {
  return nodes_->graph.records.waypoints;
}
const TernASGrid::Paths& TernASGrid::paths() const { return nodes_->graph.records.paths; }
const TernASGrid::PathTypes& TernASGrid::pathTypes() const {
  return nodes_->graph.records.pathTypes;
}
const TernASGrid::Maps& TernASGrid::mapFulls() const { return nodes_->graph.records.maps; }
const TernASGrid::Buildings& TernASGrid::buildings() const {
  return nodes_->graph.records.buildings;
}

std::size_t TernASGrid::nodeCount() const { return nodes_->graph.graph.nodeCount(); }
std::size_t TernASGrid::linkCount() const { return nodes_->graph.graph.links.size(); }

std::vector<TernASNode> TernASGrid::nodesAt(std::span<const detail::Position> positions) const {
  std::vector<TernASNode> nodes;
  nodes.reserve(positions.size());
  for (const detail::Position position : positions) nodes.push_back(TernASNode(nodes_, position));
  return nodes;
}

std::vector<TernASNode> TernASGrid::nodes() const {
  std::vector<TernASNode> nodes;
  nodes.reserve(nodeCount());
  for (detail::WaypointIndex i{0}; numberOf(i) < nodeCount(); ++i) {
    nodes.push_back(TernASNode(nodes_, nodes_->graph.order.positionOf(i)));
  }
  return nodes;
}

std::shared_ptr<TernWaypoint> TernASGrid::getWPById(std::int64_t id) const {
  return nodes_->graph.waypointById(id);
}

TernASGrid::Paths TernASGrid::getPathsWithWaypoint(std::int64_t id) const {
  return nodes_->graph.pathsWith(id);
}

std::shared_ptr<TernPathType> TernASGrid::getPathTypeById(std::int64_t id) const {
  return nodes_->graph.pathTypeById(id);
}

std::shared_ptr<TernFloor> TernASGrid::getFloorByMapId(std::int64_t mapId) const {
  return nodes_->graph.facts.floors.find(mapId).floor;
}

std::optional<TernASNode> TernASGrid::getNodeById(std::int64_t id) const {
  const detail::Position position = nodes_->graph.find(id);
  if (position == detail::noPosition) return std::nullopt;
  return TernASNode(nodes_, position);
}

std::vector<TernASNode> TernASGrid::getNodesForIds(const Waypoints& items) const {
  std::vector<std::int64_t> ids;
  for (const auto& item : items) {
    if (item != nullptr) ids.push_back(item->id.integer());
  }
  return nodesAt(nodes_->graph.findAll(ids));
}

float TernASGrid::heuristic(const TernPoint& a, const TernPoint& b) {
  return detail::straightLine({a.x, a.y, a.z}, {b.x, b.y, b.z});
}

float TernASGrid::getMapZValue(std::int64_t mapId) const {
  return nodes_->graph.facts.floors.find(mapId).z;
}

int TernASGrid::getFloorPreferenceMultiplier(std::int64_t mapId) const {
  return nodes_->graph.facts.floors.find(mapId).multiplier;
}

std::vector<TernASEdge> TernASGrid::generateEdges(std::int64_t waypointId) const {
  return nodes_->graph.edgesTouching(waypointId);
}

TernASEdge TernASGrid::generateVirtualEdges(std::int64_t a, std::int64_t b) const {
  return nodes_->graph.virtualEdge(a, b);
}

std::vector<TernNeighbor> TernASGrid::generateNeighbors(
    std::int64_t waypointId, const std::vector<TernASEdge>& edges) const {
  return nodes_->graph.neighborsOver(waypointId, edges);
}

void TernASGrid::reset() { nodes_->reset(); }

void TernASGrid::shouldBlockEdgeBetweenNode(const TernASNode& a, const TernASNode& b, bool block) {
  a.source_->blockEdges(a.position_, b.nodeId(), block);
}

bool TernASGrid::isEdgeBlockedBetweenNode(const TernASNode& a, const TernASNode& b) const {
  return a.source_->isEdgeBlocked(a.position_, b.nodeId());
}

void TernASGrid::shouldBlockEntryToNode(const TernASNode& n, bool block) {
  detail::Ways ways;
  detail::addWaysInto(nodes_->graph, n.nodeId(), placed(n).knownNeighbours(), ways);
  nodes_->block(ways, block);
}

detail::PlacedNode TernASGrid::placed(const TernASNode& n) const {
  const detail::NodeFacts facts = n.source_->facts(n.position_);
  detail::PlacedNode placed{facts.nodeId, facts.mapId, {}};
  for (const std::int64_t id : n.source_->neighborIds(n.position_)) {
    placed.neighbours.push_back({id, nodes_->graph.find(id)});
  }
  return placed;
}

void TernASGrid::shouldBlockExitFromNode(const TernASNode& n, bool block) {
  n.source_->blockEdges(n.position_, std::nullopt, block);
}

}  // namespace tern
