#include "TernCoreKit/model/venue/VenueAssembly.hpp"

#include <memory>
#include <optional>
#include <utility>
#include <vector>

#include "TernCoreKit/model/collections/TernAmenityCollection.hpp"
#include "TernCoreKit/model/collections/TernBuildingCollection.hpp"
#include "TernCoreKit/model/collections/TernDestinationCollection.hpp"
#include "TernCoreKit/model/collections/TernFloorCollection.hpp"
#include "TernCoreKit/model/collections/TernMapCollection.hpp"
#include "TernCoreKit/model/collections/TernPathTypeCollection.hpp"
#include "TernCoreKit/model/collections/TernWaypointCollection.hpp"
#include "TernCoreKit/model/records/TernLocation.hpp"
#include "TernCoreKit/model/venue/TernActiveVenue.hpp"

namespace tern::inline v5 {

namespace {

using Waypoints = std::vector<std::shared_ptr<TernWaypoint>>;

void stampItems(Value* batch, std::string_view key, std::int64_t number) {
  Value* items = batch != nullptr ? batch->find("items") : nullptr;
  if (items == nullptr) return;
  for (Value& item : items->items()) {
    if (item.isMap()) item.set(key, number);
  }
}

void takeOverFloors(TernActiveVenue& venue, const std::optional<Value>& defaultFloorId) {
  for (const TernBuilding& building : venue.buildings->each()) {
    if (!building.floors) continue;
    if (defaultFloorId) building.floors->defaultFloorId = *defaultFloorId;
    if (venue.maps == nullptr) continue;
    for (const TernFloor& floor : building.floors->each()) {
      venue.maps->addMapToCollection(floor.map.record());
    }
  }
}

Waypoints waypointsAt(const std::vector<std::shared_ptr<TernLocation>>& locations,
                      const TernMapCollection& maps) {
  Waypoints found;
  for (const auto& location : locations) {
    const TernMap* map = maps.findById(location->mapId.integer());
    if (map == nullptr || !map->waypoints) continue;
    for (const Value& id : location->waypointIds.items()) {
      if (auto waypoint = map->waypoints->getById(id.integer())) {
        found.push_back(std::move(waypoint));
      }
    }
  }
  return found;
}

template <class Collection>
void attachTo(const Nested<Collection>& places, const TernMapCollection& maps) {
  if (!places) return;
  for (auto& place : places->each()) {
    Waypoints waypoints = waypointsAt(place.locations, maps);
    if (!waypoints.empty()) place.addWaypoints(std::move(waypoints));
  }
}

}  // namespace

void addBuilding(TernActiveVenue& venue, std::int64_t buildingId, Value answer) {
  if (!venue.buildings) return;
  stampItems(answer.find("floors"), "buildingId", buildingId);
  std::optional<Value> defaultFloorId;
  if (const Value* given = answer.find("defaultFloorId")) defaultFloorId = *given;
  venue.buildings->create(std::move(answer));
  takeOverFloors(venue, defaultFloorId);
}

void attachWaypoints(TernActiveVenue& venue) {
  if (venue.maps == nullptr) return;
  attachTo(venue.amenities, *venue.maps);
  attachTo(venue.destinations, *venue.maps);
  attachTo(venue.pathTypes, *venue.maps);
}

}  // namespace tern
