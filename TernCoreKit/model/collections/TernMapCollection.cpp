#include "TernCoreKit/model/collections/TernMapCollection.hpp"

#include <utility>

#include "TernCoreKit/model/collections/TernFloorCollection.hpp"
#include "TernCoreKit/model/collections/TernWaypointCollection.hpp"
#include "TernCoreKit/model/collections/detail/Queries.hpp"
#include "TernCoreKit/model/collections/detail/RecordKind.hpp"
#include "TernCoreKit/model/records/TernAmenity.hpp"
#include "TernCoreKit/model/records/TernAssociation.hpp"
#include "TernCoreKit/model/records/TernBuilding.hpp"
#include "TernCoreKit/model/records/TernDestination.hpp"

namespace tern::inline v5 {

namespace {

using Waypoints = std::vector<std::shared_ptr<TernWaypoint>>;

Waypoints waypointsOf(const TernMap& map) {
  return map.waypoints ? map.waypoints->getAll() : Waypoints();
}

// The waypoints of every map of whose associations `wanted` is true.
template <class Wanted>
Waypoints waypointsWith(const TernMapCollection& maps, Wanted wanted) {
  const auto isWanted = [&](const TernWaypoint& waypoint) {
    return waypoint.associations && wanted(*waypoint.associations.get());
  };
  Waypoints all;
  for (const auto& map : maps.getAll()) {
    if (map->waypoints) detail::append(all, map->waypoints->collect(isWanted));
  }
  return all;
}

}  // namespace

TernMapCollection::TernMapCollection() { assignCollectionModelClass(detail::kindOf<TernMap>()); }

std::shared_ptr<TernMapCollection> TernMapCollection::copyWithZone() const {
  const MutexLock lock(mapsMutex_);
  return copyOf(*this);
}

std::vector<std::shared_ptr<TernMap>> TernMapCollection::getAll() const {
  const MutexLock lock(mapsMutex_);
  return TernTypedCollection::getAll();
}

std::shared_ptr<TernMap> TernMapCollection::getById(std::int64_t id) const {
  const MutexLock lock(mapsMutex_);
  return TernTypedCollection::getById(id);
}

std::shared_ptr<TernMap> TernMapCollection::getFirst() const {
  const MutexLock lock(mapsMutex_);
  return items().size() > 0 ? shared(&items().entries().front()) : nullptr;
}

Waypoints TernMapCollection::getAllWaypoints() const {
  Waypoints all;
  for (const auto& map : getAll()) detail::append(all, waypointsOf(*map));
  return all;
}

Waypoints TernMapCollection::getWaypointsByMap(const std::shared_ptr<TernMap>& map) const {
  return map != nullptr ? waypointsOf(*map) : Waypoints();
}

Waypoints TernMapCollection::getWaypointsByFloor(const std::shared_ptr<TernFloor>& floor) const {
  return floor != nullptr ? getWaypointsByMap(floor->map.record()) : Waypoints();
}

Waypoints TernMapCollection::getWaypointsByBuilding(
    const std::shared_ptr<TernBuilding>& building) const {
  if (building == nullptr || !building->floors) return {};
  Waypoints all;
  for (const TernFloor& floor : building->floors->each()) {
    if (floor.map) detail::append(all, waypointsOf(*floor.map.get()));
  }
  return all;
}

Waypoints TernMapCollection::getWaypointsWithDestinations() const {
  return waypointsWith(*this, [](const TernAssociation& association) {
    return !association.destinations.items().empty();
  });
}

Waypoints TernMapCollection::getWaypointsWithAmenities() const {
  return waypointsWith(*this, [](const TernAssociation& association) {
    return !association.amenities.items().empty();
  });
}

Waypoints TernMapCollection::getWaypointsByDestination(
    const std::shared_ptr<TernDestination>& destination) const {
  if (destination == nullptr) return {};
  return waypointsWith(*this, [&](const TernAssociation& association) {
    return detail::containsId(association.destinations, destination->id);
  });
}

Waypoints TernMapCollection::getWaypointsByAmenity(
    const std::shared_ptr<TernAmenity>& amenity) const {
  if (amenity == nullptr) return {};
  return waypointsWith(*this, [&](const TernAssociation& association) {
    return detail::containsId(association.amenities, amenity->id);
  });
}

void TernMapCollection::makeRoom(std::size_t more) {
  const MutexLock lock(mapsMutex_);
  TernTypedCollection::makeRoom(more);
}

void TernMapCollection::addMapToCollection(std::shared_ptr<TernMap> map) {
  if (map == nullptr) return;
  Value key = RecordMap::keyOf(detail::isPresent(map->id) ? map->id : Value(0));
  const MutexLock lock(mapsMutex_);
  put(std::move(key), std::move(map));
}

}  // namespace tern
