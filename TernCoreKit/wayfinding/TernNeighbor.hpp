#pragma once

#include "TernCoreKit/platform/Export.hpp"
#include "TernCoreKit/platform/Value.hpp"

namespace tern::inline v5 {

struct TernASEdge;
struct TernWaypoint;

/// One link from a node to an adjacent waypoint, with all that it costs to take it. An absent
/// number reads as 0; `neighborId`, `x` and `y` are absent when no map knows the waypoint that the
/// path names.
///
/// Ownership and threads: a plain value.
struct TERN_API TernNeighbor {
  /// The adjacent waypoint's id.
  Value neighborId;
  /// What it costs to take the link.
  float cost = 0;
  /// The path type's accessibility level.
  Value acc;
  /// The edge's id.
  Value edgeId;
  /// Id of the path type.
  Value edgeTypeId;
  /// What the link adds to a route's distance: its length in map units where walking is concerned
  /// (path type 1), else 1.
  float distance = 0;
  /// Where the adjacent waypoint lies, as its record says, in map units.
  Value x;
  /// In map units, as x.
  Value y;
  /// Height of the adjacent waypoint in map units.
  float z = 0;

  /// A link to the waypoint, which may be null, over the edge.
  static TernNeighbor initNeighbor(const TernWaypoint* waypoint, const TernASEdge& currentEdge,
                                   float totalCost, float distance, float z);
};

}  // namespace tern
