#include "TernCoreKit/model/TernWaypointCollection.hpp"

#include "TernCoreKit/model/TernAmenity.hpp"
#include "TernCoreKit/model/TernDestination.hpp"
#include "TernCoreKit/model/detail/Queries.hpp"
#include "TernCoreKit/model/detail/RecordKind.hpp"

namespace tern {

TernWaypointCollection::TernWaypointCollection() {
  assignCollectionModelClass(detail::kindOf<TernWaypoint>());
}

std::shared_ptr<TernWaypointCollection> TernWaypointCollection::copyWithZone() const {
  return copyOf(*this);
}

std::vector<std::shared_ptr<TernWaypoint>> TernWaypointCollection::getByDestination(
    const std::shared_ptr<TernDestination>& destination) const {
  if (destination == nullptr) return {};
  return collect([&](const TernWaypoint& waypoint) {
    return detail::countAtWaypoint(destination->locations, waypoint.id, waypoint.mapId);
  });
}

std::vector<std::shared_ptr<TernWaypoint>> TernWaypointCollection::getByAmenity(
    const std::shared_ptr<TernAmenity>& amenity) const {
  if (amenity == nullptr) return {};
  return collect([&](const TernWaypoint& waypoint) {
    return detail::countAtWaypoint(amenity->locations, waypoint.id, waypoint.mapId);
  });
}

}  // namespace tern
