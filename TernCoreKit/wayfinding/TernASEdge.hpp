#pragma once

#include <cstdint>
#include <vector>

#include "TernCoreKit/platform/Export.hpp"
#include "TernCoreKit/platform/Value.hpp"

namespace tern::inline v5 {

/// One path as seen from one of the waypoints that it joins. Every path gives each of its waypoints
/// an edge of its own: blocking one leaves the others open. An absent number reads as 0.
///
/// Ownership and threads: a plain value; what a grid hands out is a picture of the edge at that
/// time. The grid's own mark is set with its `shouldBlock...` operations.
struct TERN_API TernASEdge {
  /// The path's id; for a link between two venues a number made of both waypoints' ids.
  Value edgeId;
  /// Ids of the waypoints that the path joins, in its order.
  std::vector<std::int64_t> nodes;
  /// Id of the path type.
  Value type;
  /// The type's weight.
  Value cost;
  /// The type's accessibility level.
  Value acc;
  /// The type's vertical weight.
  Value speed;
  /// Where the path changes height: 1 only upward, 2 only downward, anything else both ways.
  Value direction;
  /// Whether nobody may leave along it.
  bool blocked = false;

  /// An edge of these parts that is not blocked.
  static TernASEdge initASEdge(Value edgeId, std::vector<std::int64_t> nodes, Value type,
                               Value cost, Value acc, Value speed, Value direction);

  /// Whether the path names the waypoint.
  bool joins(std::int64_t nodeId) const;
};

}  // namespace tern
