// What answers are made of.
//
// Threads: as readers of what they show. Fails: never; a number that is absent shows as 0.
#pragma once

#include <memory>
#include <string_view>

#include "TernCoreKit/platform/Value.hpp"
#include "TernCoreKit/service/coordinates/TernUtils.hpp"
#include "TernCoreKit/wayfinding/TernNeighbor.hpp"
#include "TernCoreKit/wayfinding/TernPathPerFloor.hpp"

namespace tern::inline v5::detail {

// An answer of one key. A list in braces would be copied.
Value answerOf(std::string_view key, Value value);

// Its id, or null.
Value waypointPart(const std::shared_ptr<TernWaypoint>& waypoint);
// [x, y]
Value pointPart(TernCoordinate point);
// [{"mapId", "mover", "cost", "pixelDistance", "mmDistance", "points", "mapPoints"}, ...]
Value routePart(const TernRoute& route);
// {"id", "cost", "distance", "accessibility", "edge", "pathType"}
Value neighborPart(const TernNeighbor& neighbor);

}  // namespace tern::detail
