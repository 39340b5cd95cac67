#include "TernCoreKit/model/collections/TernWaypointCollection.hpp"

#include "TernCoreKit/model/collections/detail/Queries.hpp"
#include "TernCoreKit/model/collections/detail/RecordKind.hpp"
#include "TernCoreKit/model/records/TernAmenity.hpp"
#include "TernCoreKit/model/records/TernDestination.hpp"

namespace tern::inline v5 {

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
