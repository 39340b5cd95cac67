#pragma once

#include <memory>
#include <vector>

#include "TernCoreKit/platform/Export.hpp"
#include "TernCoreKit/service/coordinates/TernUtils.hpp"

namespace tern::inline v5 {

struct TernWaypoint;

/// The waypoint nearest to the point by straight line, in map units of the map that all of them lie
/// on; of several the first. Null for an empty list. Threads: any.
TERN_API std::shared_ptr<TernWaypoint> closestWaypoint(
    const std::vector<std::shared_ptr<TernWaypoint>>& waypoints, TernCoordinate at);

}  // namespace tern
