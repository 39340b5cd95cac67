// All that is built of a grid's records: what they said, the edges of every node, the order of the
// nodes and the graph that is searched. Each is made of those before it.
//
// Edges and neighbours are not stored: they are made of the facts when somebody asks.
//
// Ownership: shares the records. Threads: never changes; any number of readers. Fails: never.
#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <utility>
#include <vector>

#include "TernCoreKit/wayfinding/TernASEdge.hpp"
#include "TernCoreKit/wayfinding/TernNeighbor.hpp"
#include "TernCoreKit/wayfinding/detail/EdgeLists.hpp"
#include "TernCoreKit/wayfinding/detail/Graph.hpp"
#include "TernCoreKit/wayfinding/detail/GridRecords.hpp"
#include "TernCoreKit/wayfinding/detail/NodeOrder.hpp"
#include "TernCoreKit/wayfinding/detail/NodeSource.hpp"
#include "TernCoreKit/wayfinding/detail/SearchState.hpp"
#include "TernCoreKit/wayfinding/detail/VenueFacts.hpp"

namespace tern::inline v5::detail {

class GridGraph {
 public:
  explicit GridGraph(GridRecords given);

  const GridRecords records;
  const VenueFacts facts;
  const LinkBounds bounds;
  const EdgeLists edges;
  const NodeOrder order;
  const Graph graph;

  // Of the first waypoint with that id.
  Position find(std::int64_t nodeId) const;
  // Of all waypoints with one of these ids, in the order of the list of waypoints.
  std::vector<Position> findAll(std::span<const std::int64_t> ids) const;
  // Below it lie the ranks of all path types that the level admits.
  TypeRank rankLimit(std::int64_t accessLevel) const;

  std::shared_ptr<TernWaypoint> waypointById(std::int64_t id) const;
  TernASGrid::Paths pathsWith(std::int64_t waypointId) const;
  std::shared_ptr<TernPathType> pathTypeById(std::int64_t id) const;

  std::int64_t nodeId(Position position) const { return facts.idOf(order.waypointAt(position)); }
  MapIndex mapOf(Position position) const {
    return facts.waypoints.mapOf(numberOf(order.waypointAt(position)));
  }
  std::int64_t mapId(Position position) const { return facts.maps[mapOf(position)].mapId; }
  NodeFacts nodeFacts(Position position) const;

  // What the search that the state is of knows of the node.
  NodeProgress progress(const SearchState& state, Position position) const;
  // Soonest for nodes that follow each other on the way of the search.
  std::vector<Distance> distances(const SearchState& state,
                                  std::span<const Position> positions) const;
  // Length of the way on which the search came to the node, map units.
  float distanceTo(const SearchState& state, Position position) const;
  // What each link adds to a way, map units; of one that leads nowhere 0.
  Indexed<LinkIndex, float> linkLengths() const;

  // The node's edges: the first, and the one behind the last.
  std::pair<EdgeIndex, EdgeIndex> edgesOf(Position position) const {
    const WaypointIndex waypoint = order.waypointAt(position);
    return {edges.first[waypoint], edges.endOf(waypoint)};
  }
  TernASEdge edgeOver(PathIndex path) const;
  TernASEdge virtualEdge(std::int64_t a, std::int64_t b) const;
  std::vector<TernASEdge> edgesTouching(std::int64_t waypointId) const;
  std::vector<TernNeighbor> neighborsOver(std::int64_t waypointId,
                                          std::span<const TernASEdge> over) const;
  std::vector<TernNeighbor> neighbors(Position position) const;
  // Of the nodes that the node has links to.
  std::vector<std::int64_t> neighborIds(Position position) const;

 private:
  FloorPoint pointOf(Position position) const;
  float lengthOf(LinkIndex link, const FloorPoint& from, const FloorPoint& to) const;
  std::vector<PathIndex> pathsTouching(std::int64_t waypointId) const;
};

}  // namespace tern::detail
