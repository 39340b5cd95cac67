// The navigation graph in its plainest form, to hold the library's against: every lookup scans a
// list from its front, every node carries its own edges, neighbours and scores.
//
// Slow on purpose: building is quadratic. It shares no code with the library's graph but the
// records and the two plain structs that the library hands out as edges and neighbours. Ownership:
// shares the records; nodes belong to the grid, which is not copied. Threads: one.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include "TernCoreKit/wayfinding/TernASEdge.hpp"
#include "TernCoreKit/wayfinding/TernASGrid.hpp"
#include "TernCoreKit/wayfinding/TernNeighbor.hpp"
#include "TernCoreKit/wayfinding/TernPoint.hpp"
#include "tests/support/VenueLists.hpp"

namespace tern::test {

struct LiteralNode {
  std::int64_t nodeId = 0;
  double x = 0;
  double y = 0;
  float z = 0;
  std::int64_t mapId = 0;
  std::vector<TernASEdge> edges;
  std::vector<TernNeighbor> neighbors;

  bool visited = false;
  bool closed = false;
  float f = 0;
  float g = 0;
  std::optional<float> distance;
  LiteralNode* parent = nullptr;
  std::int64_t usedEdgeTypeId = -1;

  void reset();
};

class LiteralGrid {
 public:
  explicit LiteralGrid(VenueLists lists);
  LiteralGrid(const LiteralGrid&) = delete;
  LiteralGrid& operator=(const LiteralGrid&) = delete;

  const VenueLists lists;
  std::vector<LiteralNode> nodes;

  // The first match, or null.
  const TernWaypoint* getWPById(std::int64_t id) const;
  TernASGrid::Paths getPathsWithWaypoint(std::int64_t id) const;
  std::shared_ptr<TernPathType> getPathTypeById(std::int64_t id) const;
  const TernFloor* getFloorByMapId(std::int64_t mapId) const;
  LiteralNode* getNodeById(std::int64_t id);
  // In the order of `nodes`.
  std::vector<LiteralNode*> getNodesForIds(const TernASGrid::Waypoints& items);

  float getMapZValue(std::int64_t mapId) const;
  int getFloorPreferenceMultiplier(std::int64_t mapId) const;

  void reset();
  void shouldBlockEdgeBetweenNode(LiteralNode& a, const LiteralNode& b, bool block);
  bool isEdgeBlockedBetweenNode(const LiteralNode& a, const LiteralNode& b) const;
  void shouldBlockEntryToNode(const LiteralNode& n, bool block);
  void shouldBlockExitFromNode(LiteralNode& n, bool block);

 private:
  LiteralNode makeNode(const TernWaypoint& waypoint) const;
  std::vector<TernASEdge> generateEdges(std::int64_t waypointId) const;
  TernASEdge generateVirtualEdge(std::int64_t a, std::int64_t b) const;
  std::vector<TernNeighbor> generateNeighbors(std::int64_t waypointId,
                                              const std::vector<TernASEdge>& edges) const;
  std::optional<TernNeighbor> neighborOver(const TernASEdge& edge, const TernWaypoint* from,
                                           const TernWaypoint* to) const;
  // Where the costs see the waypoint; it may be null.
  TernPoint pointOf(const TernWaypoint* waypoint) const;
};

}  // namespace tern::test
