// One link from a node to an adjacent waypoint, with all that it costs to take it.
//
// Ownership and threads: a plain value. An absent number reads as 0; `neighborId`, `x` and `y` are
// absent when no map knows the waypoint that the path names.
#pragma once

#include "TernCoreKit/platform/Export.hpp"
#include "TernCoreKit/platform/Value.hpp"

namespace tern {

struct TernASEdge;
struct TernWaypoint;

struct TERN_API TernNeighbor {
  // The adjacent waypoint's id.
  Value neighborId;
  float cost = 0;
  // The path type's accessibility level.
  Value acc;
  Value edgeId;
  // Id of the path type.
  Value edgeTypeId;
  // What the link adds to a route's distance: its length in map units where walking is concerned
  // (path type 1), else 1.
  float distance = 0;
  // Where the adjacent waypoint lies, as its record says, and its height; map units.
  Value x;
  Value y;
  float z = 0;

  // The waypoint may be null.
  static TernNeighbor initNeighbor(const TernWaypoint* waypoint, const TernASEdge& currentEdge,
                                   float totalCost, float distance, float z);
};

}  // namespace tern
