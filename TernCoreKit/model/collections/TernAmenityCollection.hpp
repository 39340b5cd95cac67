#pragma once

#include <memory>
#include <vector>

#include "TernCoreKit/model/collections/TernTypedCollection.hpp"
#include "TernCoreKit/model/records/TernAmenity.hpp"

namespace tern::inline v5 {

struct TernBuilding;
struct TernFloor;
struct TernMap;
struct TernWaypoint;

/// The amenities of a venue.
///
/// Ownership, threads and failures are those of every collection: see TernBaseCollection.
class TERN_API TernAmenityCollection : public TernTypedCollection<TernAmenity> {
 public:
  /// Without records.
  TernAmenityCollection();

  /// A new collection of the same records, and nothing else of this one.
  std::shared_ptr<TernAmenityCollection> copyWithZone() const;

  /// Those that the waypoint's associations name, in their order; unknown ids are passed over.
  std::vector<std::shared_ptr<TernAmenity>> getByWaypoint(
      const std::shared_ptr<TernWaypoint>& waypoint) const;
  /// Once for each keyword that equals the argument.
  std::vector<std::shared_ptr<TernAmenity>> getByKeyword(const Value& keyword) const;
  /// Those of that name, in any case.
  std::vector<std::shared_ptr<TernAmenity>> getByName(const Value& name) const;
  /// Those with a location on the map, once for each such location. A map without an id is logged.
  std::vector<std::shared_ptr<TernAmenity>> getByMap(const std::shared_ptr<TernMap>& map) const;
  /// Those with a location on the floor's map, once for each such location. A floor without a map
  /// is logged.
  std::vector<std::shared_ptr<TernAmenity>> getByFloor(
      const std::shared_ptr<TernFloor>& floor) const;
  /// Those of the building's floors, one floor after another. What is missing on the way is logged.
  std::vector<std::shared_ptr<TernAmenity>> getByBuilding(
      const std::shared_ptr<TernBuilding>& building) const;
};

}  // namespace tern
