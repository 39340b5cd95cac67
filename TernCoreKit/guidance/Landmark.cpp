#include "TernCoreKit/guidance/Landmark.hpp"

#include "TernCoreKit/guidance/detail/Landmarks.hpp"
#include "TernCoreKit/model/collections/TernDestinationCollection.hpp"

namespace tern::inline v5 {

std::shared_ptr<TernDestination> landmarkNear(const TernVenueData& venue,
                                              const TernWaypoint& waypoint) {
  const MutexLock lock(venue.recordsMutex());
  const TernDestination* found = detail::destinationNear(venue, waypoint);
  return found != nullptr ? venue.destinations->getById(found->id.integer()) : nullptr;
}

}  // namespace tern
