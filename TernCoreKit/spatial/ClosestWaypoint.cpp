#include "TernCoreKit/spatial/ClosestWaypoint.hpp"

#include <cmath>
#include <limits>

#include "TernCoreKit/model/records/TernWaypoint.hpp"

namespace tern::inline v5 {

namespace {

// As single precision holds it; 0 when there is none.
double roundedCoordinate(const TernWaypoint& waypoint, std::size_t axis) {
  return static_cast<float>(waypoint.coordinate(axis).number());
}

double straightDistance(const TernWaypoint& waypoint, TernCoordinate point) {
  const double x = roundedCoordinate(waypoint, 0) - point.x;
  const double y = roundedCoordinate(waypoint, 1) - point.y;
  return std::sqrt(x * x + y * y);
}

}  // namespace

std::shared_ptr<TernWaypoint> closestWaypoint(
    const std::vector<std::shared_ptr<TernWaypoint>>& waypoints, TernCoordinate at) {
  std::shared_ptr<TernWaypoint> best;
  double bestDistance = std::numeric_limits<double>::infinity();
  for (const auto& waypoint : waypoints) {
    if (waypoint == nullptr) continue;
    const double distance = straightDistance(*waypoint, at);
    if (!(distance < bestDistance)) continue;
    best = waypoint;
    bestDistance = distance;
  }
  return best;
}

}  // namespace tern
