// The waypoints of a map.
//
// Ownership, threads and failures are those of every collection: see TernBaseCollection.hpp.
#pragma once

#include <memory>
#include <vector>

#include "TernCoreKit/model/collections/TernTypedCollection.hpp"
#include "TernCoreKit/model/records/TernWaypoint.hpp"

namespace tern {

struct TernAmenity;
struct TernDestination;

class TERN_API TernWaypointCollection : public TernTypedCollection<TernWaypoint> {
 public:
  TernWaypointCollection();

  std::shared_ptr<TernWaypointCollection> copyWithZone() const;

  // Those that one of its locations on the waypoint's map names, once for each such location.
  std::vector<std::shared_ptr<TernWaypoint>> getByDestination(
      const std::shared_ptr<TernDestination>& destination) const;
  std::vector<std::shared_ptr<TernWaypoint>> getByAmenity(
      const std::shared_ptr<TernAmenity>& amenity) const;
};

}  // namespace tern
