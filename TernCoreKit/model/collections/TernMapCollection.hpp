// The maps of a venue's loaded floors.
//
// Ownership, threads and failures are those of every collection: see TernBaseCollection.hpp.
#pragma once

#include <memory>
#include <vector>

#include "TernCoreKit/model/collections/TernTypedCollection.hpp"
#include "TernCoreKit/model/records/TernMap.hpp"

namespace tern {

struct TernAmenity;
struct TernBuilding;
struct TernDestination;
struct TernFloor;
struct TernWaypoint;

class TERN_API TernMapCollection : public TernTypedCollection<TernMap> {
 public:
  TernMapCollection();

  std::shared_ptr<TernMapCollection> copyWithZone() const;

  // Those of every map, of one map, of a floor's map, of all floors of a building.
  std::vector<std::shared_ptr<TernWaypoint>> getAllWaypoints() const;
  std::vector<std::shared_ptr<TernWaypoint>> getWaypointsByMap(
      const std::shared_ptr<TernMap>& map) const;
  std::vector<std::shared_ptr<TernWaypoint>> getWaypointsByFloor(
      const std::shared_ptr<TernFloor>& floor) const;
  std::vector<std::shared_ptr<TernWaypoint>> getWaypointsByBuilding(
      const std::shared_ptr<TernBuilding>& building) const;
  // Those of any map at which something, or the given place, is reached.
  std::vector<std::shared_ptr<TernWaypoint>> getWaypointsWithDestinations() const;
  std::vector<std::shared_ptr<TernWaypoint>> getWaypointsWithAmenities() const;
  std::vector<std::shared_ptr<TernWaypoint>> getWaypointsByDestination(
      const std::shared_ptr<TernDestination>& destination) const;
  std::vector<std::shared_ptr<TernWaypoint>> getWaypointsByAmenity(
      const std::shared_ptr<TernAmenity>& amenity) const;
  // Puts the map under its id, in place of one that is there; null is ignored, an absent id is 0.
  void addMapToCollection(std::shared_ptr<TernMap> map);
};

}  // namespace tern
