#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "TernCoreKit/model/collections/TernTypedCollection.hpp"
#include "TernCoreKit/model/records/TernMap.hpp"
#include "TernCoreKit/platform/Mutex.hpp"

namespace tern::inline v5 {

struct TernAmenity;
struct TernBuilding;
struct TernDestination;
struct TernFloor;
struct TernWaypoint;

/// The maps of a venue's loaded floors.
///
/// Ownership and failures are those of every collection: see TernBaseCollection.
/// Threads: as every collection, and besides what is declared here may be called at any time, also
/// while a map is added: a venue is asked while a hub adds a building to it.
class TERN_API TernMapCollection : public TernTypedCollection<TernMap> {
 public:
  /// Without records.
  TernMapCollection();

  /// A new collection of the same records, and nothing else of this one.
  std::shared_ptr<TernMapCollection> copyWithZone() const;

  /// Every map, in the order in which they came.
  std::vector<std::shared_ptr<TernMap>> getAll() const;
  /// The map of that id; null without one.
  std::shared_ptr<TernMap> getById(std::int64_t id) const;
  /// The map that came first; null without one.
  std::shared_ptr<TernMap> getFirst() const;
  /// The waypoints of every map.
  std::vector<std::shared_ptr<TernWaypoint>> getAllWaypoints() const;
  /// The waypoints of one map.
  std::vector<std::shared_ptr<TernWaypoint>> getWaypointsByMap(
      const std::shared_ptr<TernMap>& map) const;
  /// The waypoints of the floor's map.
  std::vector<std::shared_ptr<TernWaypoint>> getWaypointsByFloor(
      const std::shared_ptr<TernFloor>& floor) const;
  /// The waypoints of all floors of the building.
  std::vector<std::shared_ptr<TernWaypoint>> getWaypointsByBuilding(
      const std::shared_ptr<TernBuilding>& building) const;
  /// Those of any map at which some destination is reached.
  std::vector<std::shared_ptr<TernWaypoint>> getWaypointsWithDestinations() const;
  /// Those of any map at which some amenity is reached.
  std::vector<std::shared_ptr<TernWaypoint>> getWaypointsWithAmenities() const;
  /// Those of any map whose associations name the destination.
  std::vector<std::shared_ptr<TernWaypoint>> getWaypointsByDestination(
      const std::shared_ptr<TernDestination>& destination) const;
  /// Those of any map whose associations name the amenity.
  std::vector<std::shared_ptr<TernWaypoint>> getWaypointsByAmenity(
      const std::shared_ptr<TernAmenity>& amenity) const;
  /// Puts the map under its id, in place of one that is there; null is ignored, an absent id is 0.
  void addMapToCollection(std::shared_ptr<TernMap> map);
  /// So many more maps can then be added without taking memory.
  void makeRoom(std::size_t more);

 private:
  mutable Mutex mapsMutex_;
};

}  // namespace tern
