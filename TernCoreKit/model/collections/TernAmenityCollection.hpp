// The amenities of a venue.
//
// Ownership, threads and failures are those of every collection: see TernBaseCollection.hpp.
#pragma once

#include <memory>
#include <vector>

#include "TernCoreKit/model/collections/TernTypedCollection.hpp"
#include "TernCoreKit/model/records/TernAmenity.hpp"

namespace tern {

struct TernBuilding;
struct TernFloor;
struct TernMap;
struct TernWaypoint;

class TERN_API TernAmenityCollection : public TernTypedCollection<TernAmenity> {
 public:
  TernAmenityCollection();

  std::shared_ptr<TernAmenityCollection> copyWithZone() const;

  // Those that the waypoint's associations name, in their order; unknown ids are passed over.
  std::vector<std::shared_ptr<TernAmenity>> getByWaypoint(
      const std::shared_ptr<TernWaypoint>& waypoint) const;
  // Once for each keyword that equals the argument.
  std::vector<std::shared_ptr<TernAmenity>> getByKeyword(const Value& keyword) const;
  // In any case.
  std::vector<std::shared_ptr<TernAmenity>> getByName(const Value& name) const;
  // Those with a location on the map, on the floor's map, on the maps of the building's floors one
  // after another: once for each such location. What is missing on the way is logged.
  std::vector<std::shared_ptr<TernAmenity>> getByMap(const std::shared_ptr<TernMap>& map) const;
  std::vector<std::shared_ptr<TernAmenity>> getByFloor(
      const std::shared_ptr<TernFloor>& floor) const;
  std::vector<std::shared_ptr<TernAmenity>> getByBuilding(
      const std::shared_ptr<TernBuilding>& building) const;
};

}  // namespace tern
