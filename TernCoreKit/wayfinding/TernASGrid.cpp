#include "TernCoreKit/wayfinding/TernASGrid.hpp"

#include <algorithm>
#include <utility>

#include "TernCoreKit/model/records/TernFloor.hpp"
#include "TernCoreKit/model/records/TernPath.hpp"
#include "TernCoreKit/model/records/TernWaypoint.hpp"
#include "TernCoreKit/wayfinding/detail/GraphBuilder.hpp"
#include "TernCoreKit/wayfinding/detail/GridGraph.hpp"

namespace tern {

namespace {

template <class Record>
std::vector<std::shared_ptr<Record>> withoutNulls(std::vector<std::shared_ptr<Record>> records) {
  std::erase(records, nullptr);
  return records;
}

}  // namespace

std::shared_ptr<TernASGrid> TernASGrid::initASGrid(Waypoints waypointsIn, Paths pathsIn,
                                                   PathTypes pathTypesIn, Maps mapFullsIn,
                                                   Buildings buildings, bool isForMultiVenue) {
  auto graph = std::make_shared<detail::GridGraph>(
      detail::GridRecords{withoutNulls(std::move(waypointsIn)), withoutNulls(std::move(pathsIn)),
                          withoutNulls(std::move(pathTypesIn)), withoutNulls(std::move(mapFullsIn)),
                          withoutNulls(std::move(buildings)), isForMultiVenue});
  detail::buildGraph(*graph);
  return std::shared_ptr<TernASGrid>(new TernASGrid(std::move(graph)));
}

TernASGrid::TernASGrid(std::shared_ptr<detail::GridGraph> graph) : graph_(std::move(graph)) {}
TernASGrid::~TernASGrid() = default;

bool TernASGrid::isMultiVenueLoaded() const { return graph_->records.isForMultiVenue; }
const TernASGrid::Waypoints& TernASGrid::waypoints() const { return graph_->records.waypoints; }
const TernASGrid::Paths& TernASGrid::paths() const { return graph_->records.paths; }
const TernASGrid::PathTypes& TernASGrid::pathTypes() const { return graph_->records.pathTypes; }
const TernASGrid::Maps& TernASGrid::mapFulls() const { return graph_->records.maps; }
const TernASGrid::Buildings& TernASGrid::buildings() const { return graph_->records.buildings; }

TernASNode TernASGrid::node(std::uint32_t position) const { return {graph_, position}; }

std::size_t TernASGrid::nodeCount() const { return graph_->records.waypoints.size(); }
std::size_t TernASGrid::linkCount() const { return graph_->linkCount; }

std::vector<TernASNode> TernASGrid::nodes() const {
  std::vector<TernASNode> nodes;
  nodes.reserve(nodeCount());
  for (const detail::Position position : graph_->positionOf) nodes.push_back(node(position));
  return nodes;
}

std::shared_ptr<TernWaypoint> TernASGrid::getWPById(std::int64_t id) const {
  return graph_->waypointById(id);
}

TernASGrid::Paths TernASGrid::getPathsWithWaypoint(std::int64_t id) const {
  Paths touching;
  for (const auto& path : paths()) {
    const auto ids = path->waypointIds.items();
    const bool touches =
        std::ranges::any_of(ids, [&](const Value& end) { return end.integer() == id; });
    if (touches) touching.push_back(path);
  }
  return touching;
}

std::shared_ptr<TernPathType> TernASGrid::getPathTypeById(std::int64_t id) const {
  return graph_->pathTypeById(id);
}

std::shared_ptr<TernFloor> TernASGrid::getFloorByMapId(std::int64_t mapId) const {
  return graph_->floors.find(mapId).floor;
}

std::optional<TernASNode> TernASGrid::getNodeById(std::int64_t id) const {
  const detail::Position position = graph_->find(id);
  if (position == detail::noPosition) return std::nullopt;
  return node(position);
}

std::vector<TernASNode> TernASGrid::getNodesForIds(const Waypoints& items) const {
  std::vector<std::int64_t> ids;
  for (const auto& item : items) {
    if (item != nullptr) ids.push_back(item->id.integer());
  }
  std::vector<TernASNode> nodes;
  for (const detail::Position position : graph_->findAll(ids)) nodes.push_back(node(position));
  return nodes;
}

float TernASGrid::heuristic(const TernPoint& a, const TernPoint& b) {
  return detail::straightLine({a.x, a.y, a.z}, {b.x, b.y, b.z});
}

float TernASGrid::getMapZValue(std::int64_t mapId) const { return graph_->floors.find(mapId).z; }

int TernASGrid::getFloorPreferenceMultiplier(std::int64_t mapId) const {
  return graph_->floors.find(mapId).multiplier;
}

std::vector<TernASEdge> TernASGrid::generateEdges(std::int64_t waypointId) const {
  std::vector<TernASEdge> edges;
  for (const auto& path : getPathsWithWaypoint(waypointId)) edges.push_back(graph_->edgeOf(*path));
  return edges;
}

TernASEdge TernASGrid::generateVirtualEdges(std::int64_t a, std::int64_t b) const {
  return graph_->virtualEdge({a, b});
}

std::vector<TernNeighbor> TernASGrid::generateNeighbors(
    std::int64_t waypointId, const std::vector<TernASEdge>& edges) const {
  return graph_->neighborsOver(waypointId, edges);
}

void TernASGrid::reset() { graph_->graph.clearSearch(); }

void TernASGrid::shouldBlockEdgeBetweenNode(const TernASNode& a, const TernASNode& b, bool block) {
  a.source_->blockEdges(a.position_, b.nodeId(), block);
}

bool TernASGrid::isEdgeBlockedBetweenNode(const TernASNode& a, const TernASNode& b) const {
  return a.source_->isEdgeBlocked(a.position_, b.nodeId());
}

void TernASGrid::shouldBlockEntryToNode(const TernASNode& n, bool block) {
  const std::int64_t id = n.nodeId();
  // Once for each neighbour, however many links lead there.
  std::vector<std::int64_t> neighborIds = n.source_->neighborIds(n.position_);
  std::ranges::sort(neighborIds);
  neighborIds.erase(std::unique(neighborIds.begin(), neighborIds.end()), neighborIds.end());
  for (const std::int64_t neighborId : neighborIds) {
    const detail::Position neighbor = graph_->find(neighborId);
    if (neighbor != detail::noPosition) graph_->blockEdges(neighbor, id, block);
  }
}

void TernASGrid::shouldBlockExitFromNode(const TernASNode& n, bool block) {
  n.source_->blockEdges(n.position_, std::nullopt, block);
}

}  // namespace tern
