// A grid's records with the graph that was built of them.
//
// Edges are not stored: the graph keeps, for each node, which paths touch it and which of these are
// blocked, and makes edges and neighbours anew from the records when somebody asks for them.
// Searches read only `graph`.
//
// Ownership: shares the records. Threads: one at a time.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "TernCoreKit/model/records/TernWaypoint.hpp"
#include "TernCoreKit/wayfinding/TernASGrid.hpp"
#include "TernCoreKit/wayfinding/detail/FloorIndex.hpp"
#include "TernCoreKit/wayfinding/detail/Graph.hpp"
#include "TernCoreKit/wayfinding/detail/IdIndex.hpp"
#include "TernCoreKit/wayfinding/detail/LinkCost.hpp"
#include "TernCoreKit/wayfinding/detail/NodeSource.hpp"

namespace tern::detail {

// The records that a graph is built of. None is null.
struct GridRecords {
  TernASGrid::Waypoints waypoints;
  TernASGrid::Paths paths;
  TernASGrid::PathTypes pathTypes;
  TernASGrid::Maps maps;
  TernASGrid::Buildings buildings;
  bool isForMultiVenue = false;
};

// A link between two venues.
struct VirtualPath {
  std::int64_t a = 0;
  std::int64_t b = 0;
};

// One of a node's edges: a path by its place in the list, virtual ones behind the real ones; the
// top bit while the edge is blocked.
struct EdgeRef {
  static constexpr std::uint32_t blockedBit = 1U << 31U;
  std::uint32_t bits = 0;

  std::uint32_t path() const { return bits & ~blockedBit; }
  bool isBlocked() const { return (bits & blockedBit) != 0; }
  void setBlocked(bool block) { bits = path() | (block ? blockedBit : 0); }
};

// What links of one path type have in common.
struct LinkKind {
  std::int64_t typeId = 0;
  std::int64_t accessibility = 0;
};

// What has to be written to close, or open, the ways into a node.
struct WaysInto {
  std::vector<std::uint32_t> edges;
  // Those that a search tests by the mark of one of the edges.
  std::vector<std::uint32_t> links;
};

class GridGraph final : public NodeSource {
 public:
  explicit GridGraph(GridRecords given);

  const GridRecords records;
  const FloorIndex floors;
  const IdIndex pathTypePlaces;

  // Filled by the builder. `kinds` stands in the order of accessibility.
  Graph graph;
  IdIndex nodePlaces;                    // by waypoint id: a place in the list of waypoints
  std::vector<Position> positionOf;      // by place in the list of waypoints
  std::vector<std::uint32_t> placeOf;    // by position
  std::vector<std::uint32_t> firstEdge;  // by position, one more than there are nodes
  std::vector<EdgeRef> edgeRefs;
  std::vector<VirtualPath> virtualPaths;
  std::vector<LinkKind> kinds;
  std::vector<std::uint32_t> unlinkedPaths;  // ascending
  std::size_t linkCount = 0;
  // Whether the maps hold the very waypoints that the nodes are made of, in their order.
  bool mapsHoldTheNodes = false;

  // Of the first waypoint with that id.
  Position find(std::int64_t nodeId) const;
  // Of all waypoints with one of these ids, in the order of the list of waypoints.
  std::vector<Position> findAll(std::span<const std::int64_t> ids) const;
  // Below it lie the gates of all links that the level admits.
  std::uint32_t gateLimit(std::int64_t accessLevel) const;

  std::shared_ptr<TernWaypoint> waypointById(std::int64_t id) const;
  std::shared_ptr<TernPathType> pathTypeById(std::int64_t id) const;
  Place place(const TernWaypoint* waypoint) const;
  Place place(const TernWaypoint& waypoint, const FloorIndex::Facts& floor) const;
  Passage passage(std::int64_t typeId, std::int64_t direction) const;

  TernASEdge edgeOf(const TernPath& path) const;
  TernASEdge virtualEdge(VirtualPath path) const;
  std::vector<TernNeighbor> neighborsOver(std::int64_t waypointId,
                                          std::span<const TernASEdge> edges) const;

  std::int64_t nodeId(Position position) const { return waypointAt(position).id.integer(); }
  const TernWaypoint& waypointAt(Position position) const {
    return *records.waypoints[placeOf[position]];
  }
  // From the nodes that the node itself has links to. Found once, they are blocked and opened with
  // a few writes, and as `blockEdges` of each of these nodes would do it.
  WaysInto waysInto(Position position) const;
  void block(const WaysInto& ways, bool block);

  NodeFacts facts(Position position) const override;
  float height(Position position) const override;
  NodeProgress progress(Position position) const override;
  std::vector<Position> chainTo(Position position) const override;
  void clearProgress(Position position) override;
  std::vector<TernASEdge> edges(Position position) const override;
  std::vector<bool> blockedEdges(Position position) const override;
  std::vector<TernNeighbor> neighbors(Position position) const override;
  std::vector<std::int64_t> neighborIds(Position position) const override;
  void blockEdges(Position position, std::optional<std::int64_t> joining, bool block) override;
  bool isEdgeBlocked(Position position, std::int64_t joining) const override;

 private:
  std::span<const EdgeRef> edgeRefsOf(Position position) const;
  bool joins(EdgeRef edge, std::int64_t nodeId) const;
  TernASEdge materialize(EdgeRef edge) const;
  TernASEdge makeEdge(Value edgeId, std::vector<std::int64_t> nodes, Value type,
                      Value direction) const;
  // Brings the gates of a node's links in line with its edges' marks.
  void refreshGates(Position position);
  // By the id that it joins: the place of the node's first such edge.
  std::map<std::int64_t, std::uint32_t> firstEdges(Position position) const;
  std::uint32_t firstEdgeJoining(Position position, std::int64_t nodeId) const;
  // For each of the node's links that lead to a node: the place of the edge that a search asks.
  template <class Visit>
  void forEachAskedEdge(Position position, Visit visit) const;
  void addWays(Position from, std::int64_t intoId, WaysInto& ways) const;
};

}  // namespace tern::detail
