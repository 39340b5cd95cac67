// One segment of a route: the consecutive nodes that lie on one map.
//
// Costs and distances run from the start of the whole route: a segment's own length is its value
// less that of the segment before it. Ownership: `points` are the grid's own nodes, so the next
// search on that grid overwrites their scores and parents; `copyWithZone` gives a segment that
// stays as it is. Threads: as the grid.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include "TernCoreKit/platform/Export.hpp"
#include "TernCoreKit/platform/Value.hpp"
#include "TernCoreKit/wayfinding/TernASNode.hpp"
#include "TernCoreKit/wayfinding/TernPoint.hpp"

namespace tern {

struct TernPathType;
struct TernWaypoint;

struct TERN_API TernPathPerFloor {
  float cost = 0;
  std::int64_t mapId = 0;
  // The path type of the link that leads on to the next segment; in the last segment that of the
  // route's last link. Null when it is unknown.
  std::shared_ptr<TernPathType> mover;
  std::vector<TernASNode> points;
  float pixelDistance = 0;  // map units
  float mmDistance = 0;     // millimetres, by the scale of this segment's map
  // Not set by the search.
  std::int64_t accessibility = 0;
  Value obstacles;
  // One for each of `points`: x and y as there, z the map's id.
  std::vector<TernPoint> mapPoints;
  // Not set by the search.
  std::vector<std::shared_ptr<TernWaypoint>> waypoints;

  // A copy whose nodes are copies without predecessors.
  TernPathPerFloor copyWithZone() const;
};

// A route: consecutive segments lie on different maps; a map may come again.
using TernRoute = std::vector<TernPathPerFloor>;

}  // namespace tern
