#pragma once

#include <memory>
#include <vector>

#include "TernCoreKit/model/collections/TernTypedCollection.hpp"
#include "TernCoreKit/model/records/TernDestination.hpp"

namespace tern::inline v5 {

struct TernBuilding;
struct TernFloor;
struct TernMap;
struct TernWaypoint;

/// The destinations of a venue.
///
/// Ownership, threads and failures are those of every collection: see TernBaseCollection.
class TERN_API TernDestinationCollection : public TernTypedCollection<TernDestination> {
 public:
  /// Without records.
  TernDestinationCollection();

  /// A new collection of the same records, and nothing else of this one.
  std::shared_ptr<TernDestinationCollection> copyWithZone() const;

  /// Once for each tag that equals the argument.
  std::vector<std::shared_ptr<TernDestination>> getByTag(const Value& tag) const;
  /// Once for each keyword that equals the argument.
  std::vector<std::shared_ptr<TernDestination>> getByKeyword(const Value& keyword) const;
  /// Those of that unit number.
  std::vector<std::shared_ptr<TernDestination>> getByUnitNumber(const Value& unitNumber) const;
  /// Those with a location on the map, once for each such location.
  std::vector<std::shared_ptr<TernDestination>> getByMap(const std::shared_ptr<TernMap>& map) const;
  /// Those with a location on the floor's map, once for each such location.
  std::vector<std::shared_ptr<TernDestination>> getByFloor(
      const std::shared_ptr<TernFloor>& floor) const;
  /// Those with a location on the map of one of the building's floors, once for each such location
  /// and floor.
  std::vector<std::shared_ptr<TernDestination>> getByBuilding(
      const std::shared_ptr<TernBuilding>& building) const;
  /// Those with a location that names the waypoint, once for each such location.
  std::vector<std::shared_ptr<TernDestination>> getByWaypoint(
      const std::shared_ptr<TernWaypoint>& waypoint) const;
};

}  // namespace tern
