#pragma once

#include <memory>
#include <vector>

#include "TernCoreKit/model/collections/TernTypedCollection.hpp"
#include "TernCoreKit/model/records/TernWaypoint.hpp"

namespace tern::inline v5 {

struct TernAmenity;
struct TernDestination;

/// The waypoints of a map.
///
/// Ownership, threads and failures are those of every collection: see TernBaseCollection.
class TERN_API TernWaypointCollection : public TernTypedCollection<TernWaypoint> {
 public:
  /// Without records.
  TernWaypointCollection();

  /// A new collection of the same records, and nothing else of this one.
  std::shared_ptr<TernWaypointCollection> copyWithZone() const;

  /// Those that a location of the destination names, on the waypoint's own map; once for each such
  /// location.
  std::vector<std::shared_ptr<TernWaypoint>> getByDestination(
      const std::shared_ptr<TernDestination>& destination) const;
  /// Those that a location of the amenity names, on the waypoint's own map; once for each such
  /// location.
  std::vector<std::shared_ptr<TernWaypoint>> getByAmenity(
      const std::shared_ptr<TernAmenity>& amenity) const;
};

}  // namespace tern
