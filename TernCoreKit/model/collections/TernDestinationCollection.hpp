// The destinations of a venue.
//
// Ownership, threads and failures are those of every collection: see TernBaseCollection.hpp.
#pragma once

#include <memory>
#include <vector>

#include "TernCoreKit/model/collections/TernTypedCollection.hpp"
#include "TernCoreKit/model/records/TernDestination.hpp"

namespace tern {

struct TernBuilding;
struct TernFloor;
struct TernMap;
struct TernWaypoint;

class TERN_API TernDestinationCollection : public TernTypedCollection<TernDestination> {
 public:
  TernDestinationCollection();

  std::shared_ptr<TernDestinationCollection> copyWithZone() const;

  std::vector<std::shared_ptr<TernDestination>> getByTag(const Value& tag) const;
  std::vector<std::shared_ptr<TernDestination>> getByKeyword(const Value& keyword) const;
  std::vector<std::shared_ptr<TernDestination>> getByUnitNumber(const Value& unitNumber) const;
  // Those with a location on the map, on the floor's map, on the map of one of the building's
  // floors, or one that names the waypoint: once for each such location (and floor).
  std::vector<std::shared_ptr<TernDestination>> getByMap(const std::shared_ptr<TernMap>& map) const;
  std::vector<std::shared_ptr<TernDestination>> getByFloor(
      const std::shared_ptr<TernFloor>& floor) const;
  std::vector<std::shared_ptr<TernDestination>> getByBuilding(
      const std::shared_ptr<TernBuilding>& building) const;
  std::vector<std::shared_ptr<TernDestination>> getByWaypoint(
      const std::shared_ptr<TernWaypoint>& waypoint) const;
};

}  // namespace tern
