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

// The places of a collection with the waypoints that their locations name.
template <class Place>
using Placed = std::vector<std::pair<Place*, Waypoints>>;

template <class Place, class Collection>
Placed<Place> placedIn(const Nested<Collection>& places, const TernMapCollection& maps) {
  Placed<Place> placed;
  if (!places) return placed;
  for (Place& place : places->each()) {
    Waypoints waypoints = waypointsAt(place.locations, maps);
    if (!waypoints.empty()) placed.emplace_back(&place, std::move(waypoints));
  }
  return placed;
}

// Takes no memory.
template <class Place>
void attach(Placed<Place> placed) {
  for (auto& [place, waypoints] : placed) place->addWaypoints(std::move(waypoints));
}

// How many records the batch has.
std::size_t countOf(const Value* batch) { return batch != nullptr ? (*batch)["items"].size() : 0; }

}  // namespace

void addBuilding(TernActiveVenue& venue, std::int64_t buildingId, Value answer) {
  if (!venue.buildings) return;
  stampItems(answer.find("floors"), "buildingId", buildingId);
  std::optional<Value> defaultFloorId;
  if (const Value* given = answer.find("defaultFloorId")) defaultFloorId = *given;
  // Where there is no memory for all of it, nothing is added.
  venue.buildings->makeRoom(1);
  if (venue.maps != nullptr) venue.maps->makeRoom(countOf(answer.find("floors")));
  venue.buildings->create(std::move(answer));
  takeOverFloors(venue, defaultFloorId);
}

void attachWaypoints(TernActiveVenue& venue) {
  if (venue.maps == nullptr) return;
  auto amenities = placedIn<TernAmenity>(venue.amenities, *venue.maps);
  auto destinations = placedIn<TernDestination>(venue.destinations, *venue.maps);
  attach(placedIn<TernPathType>(venue.pathTypes, *venue.maps));
  attach(std::move(amenities));
  attach(std::move(destinations));
}

}  // namespace tern
