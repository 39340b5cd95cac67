#include "TernCoreKit/optimisation/TernTourState.hpp"

#include <utility>

namespace tern::inline v5 {

void TernTourLevel::decide(std::shared_ptr<TernWaypoint> waypoint) {
  if (!decidedWaypoints) decidedWaypoints.emplace();
  decidedWaypoints->push_back(std::move(waypoint));
}

}  // namespace tern
