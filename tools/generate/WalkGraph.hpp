// The waypoints of one floor and the walks between them.
//
// Corridor waypoints stand at every junction, opposite every door and at least every so often; each
// door has one waypoint behind it. Waypoints are numbered by what they are: entrances first, then
// connectors, amenities, shops in the order of the rooms, and corridors last.
// Threads: a free function and plain values.
#pragma once

#include <string_view>
#include <vector>

#include "tools/generate/FloorPlan.hpp"

namespace tern::generate {

enum class NodeKind { entrance, lift, stairs, escalator, amenity, shop, corridor };

struct Node {
  Point at;
  NodeKind kind = NodeKind::corridor;
  // The room behind the door, or -1.
  int room = -1;
};

// A walk between two nodes of the floor, as places in the list of nodes.
struct Link {
  int from;
  int to;
  std::string_view name;
};

// The places where one escalator pair reaches a floor; -1 where no flight leads that way.
struct EscalatorEnds {
  int upFoot = -1;
  int downFoot = -1;
  int upHead = -1;
  int downHead = -1;
};

struct WalkGraph {
  std::vector<Node> nodes;
  std::vector<Link> links;
  // One entry a connector, in the same order on every floor of a building.
  std::vector<int> lifts;
  std::vector<int> stairs;
  std::vector<EscalatorEnds> escalators;
  // One entry a gate, in the order of the plan's gates.
  std::vector<int> gates;
};

// Which flights of escalators meet a floor.
struct Flights {
  bool above = false;
  bool below = false;
  // Whether the flight above rises to the east; flights take turns.
  bool aboveEastward = false;
};

Flights flightsAt(const BuildingPlan& building, int level);

// How far the four strips of a court's escalators lie from its middle line: up and down of the
// flights that rise to the east, then of those that rise to the west.
inline constexpr int escalatorWidthPx = 26;
inline constexpr int escalatorOffsetsPx[4] = {-39, -13, 13, 39};

WalkGraph buildWalkGraph(const FloorPlan& plan, const BuildingPlan& building, int level,
                         int spacingPx);

}  // namespace tern::generate
