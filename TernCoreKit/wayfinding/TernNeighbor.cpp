#include "TernCoreKit/wayfinding/TernNeighbor.hpp"

#include "TernCoreKit/model/records/TernWaypoint.hpp"
#include "TernCoreKit/wayfinding/TernASEdge.hpp"

namespace tern::inline v5 {

TernNeighbor TernNeighbor::initNeighbor(const TernWaypoint* waypoint, const TernASEdge& currentEdge,
                                        float totalCost, float distance, float z) {
  TernNeighbor neighbor;
  if (waypoint != nullptr) {
    neighbor.neighborId = waypoint->id;
    neighbor.x = waypoint->coordinate(0);
    neighbor.y = waypoint->coordinate(1);
  }
  neighbor.cost = totalCost;
  neighbor.acc = currentEdge.acc;
  neighbor.edgeId = currentEdge.edgeId;
  neighbor.edgeTypeId = currentEdge.type;
  neighbor.distance = distance;
  neighbor.z = z;
  return neighbor;
}

}  // namespace tern
