#include "TernCoreKit/guidance/Landmark.hpp"

#include <cmath>
#include <limits>

#include "TernCoreKit/model/collections/TernDestinationCollection.hpp"
#include "TernCoreKit/model/collections/TernMapCollection.hpp"
#include "TernCoreKit/model/records/TernWaypoint.hpp"

namespace tern::inline v5 {

namespace {

double boundPx(const TernVenueData& venue, std::int64_t mapId) {
  const TernMap* map = venue.maps ? venue.maps->findById(mapId) : nullptr;
  const double mmPerPixel = map != nullptr ? map->mmPerPixel.number() : 0;
  return mmPerPixel > 0 ? furthestLandmarkMetres * 1000 / mmPerPixel
                        : std::numeric_limits<double>::max();
}

double distancePx(const TernWaypoint& a, const TernWaypoint& b) {
  return std::hypot(a.coordinate(0).number() - b.coordinate(0).number(),
                    a.coordinate(1).number() - b.coordinate(1).number());
}

}  // namespace

std::shared_ptr<TernDestination> landmarkNear(const TernVenueData& venue,
                                              const TernWaypoint& waypoint) {
  const MutexLock lock(venue.recordsMutex());
  if (!venue.destinations) return nullptr;
  const std::int64_t mapId = waypoint.mapId.integer();
  double nearest = std::nextafter(boundPx(venue, mapId), std::numeric_limits<double>::infinity());
  const TernDestination* found = nullptr;
  for (const TernDestination& destination : venue.destinations->each()) {
    if (destination.name.text().empty()) continue;
    for (const auto& at : destination.waypoints) {
      if (at->mapId.integer() != mapId || distancePx(*at, waypoint) >= nearest) continue;
      nearest = distancePx(*at, waypoint);
      found = &destination;
    }
  }
  return found != nullptr ? venue.destinations->getById(found->id.integer()) : nullptr;
}

}  // namespace tern
