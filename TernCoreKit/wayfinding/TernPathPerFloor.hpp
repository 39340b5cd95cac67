#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include "TernCoreKit/platform/Export.hpp"
#include "TernCoreKit/platform/Value.hpp"
#include "TernCoreKit/wayfinding/TernASNode.hpp"
#include "TernCoreKit/wayfinding/TernPoint.hpp"

namespace tern::inline v5 {

struct TernPathType;
struct TernWaypoint;

/// One segment of a route: the consecutive nodes that lie on one map. Costs and distances run from
/// the start of the whole route: a segment's own length is its value less that of the segment
/// before it.
///
/// Ownership: the nodes keep the graph alive.
/// Threads: the segment's own fields are plain values. What a search knows of its `points` follows
/// the grid or stays, as TernASSearch says; `copyWithZone` gives a segment of which nothing
/// changes.
struct TERN_API TernPathPerFloor {
  /// Of the route up to the segment's last node.
  float cost = 0;
  /// Id of the segment's map.
  std::int64_t mapId = 0;
  /// The path type of the link that leads on to the next segment; in the last segment that of the
  /// route's last link. Null when it is unknown.
  std::shared_ptr<TernPathType> mover;
  /// The route's nodes on this map.
  std::vector<TernASNode> points;
  /// Length of the route up to the segment's last node: map units.
  float pixelDistance = 0;
  /// The same in millimetres, by the scale of this segment's map.
  float mmDistance = 0;
  /// For the host to fill; a search does not.
  std::int64_t accessibility = 0;
  /// For the host to fill; a search does not.
  Value obstacles;
  /// One for each of `points`: x and y as there, z the map's id.
  std::vector<TernPoint> mapPoints;
  /// For the host to fill; a search does not.
  std::vector<std::shared_ptr<TernWaypoint>> waypoints;

  /// A copy whose nodes are copies without predecessors.
  TernPathPerFloor copyWithZone() const;
};

/// A route: consecutive segments lie on different maps; a map may come again.
using TernRoute = std::vector<TernPathPerFloor>;

}  // namespace tern
