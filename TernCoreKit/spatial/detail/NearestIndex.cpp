#include "TernCoreKit/spatial/detail/NearestIndex.hpp"

#include <algorithm>
#include <set>
#include <unordered_map>
#include <utility>

#include "TernCoreKit/model/collections/TernAmenityCollection.hpp"
#include "TernCoreKit/model/collections/TernBuildingCollection.hpp"
#include "TernCoreKit/model/collections/TernDestinationCollection.hpp"
#include "TernCoreKit/model/collections/TernFloorCollection.hpp"
#include "TernCoreKit/model/collections/TernMapCollection.hpp"
#include "TernCoreKit/model/collections/TernPathTypeCollection.hpp"
#include "TernCoreKit/model/collections/TernVenueData.hpp"
#include "TernCoreKit/model/records/TernFloor.hpp"
#include "TernCoreKit/model/records/TernLocation.hpp"

namespace tern::inline v5::detail {

namespace {

using Kind = TernElement::Kind;

std::string keyOf(std::optional<std::int64_t> mapId) {
  return mapId ? std::to_string(*mapId) : std::string();
}

using PointsByMap = std::unordered_map<std::string, std::vector<TernNearestPoint>>;

// An element counts on the maps that its locations name, with its waypoints there.
template <class Collection>
PointsByMap pointsOf(const Collection* collection) {
  PointsByMap points;
  if (collection == nullptr) return points;
  for (const auto& element : collection->getAll()) {
    std::set<std::int64_t> mapIds;
    for (const auto& location : element->locations) mapIds.insert(location->mapId.integer());
    for (const auto& waypoint : element->waypoints) {
      if (waypoint == nullptr || !mapIds.contains(waypoint->mapId.integer())) continue;
      points[keyOf(idOf(waypoint->mapId))].push_back(pointOf(waypoint, element));
    }
  }
  return points;
}

}  // namespace

std::optional<std::int64_t> idOf(const Value& id) {
  if (id.isAbsent() || id.isNull()) return std::nullopt;
  return id.integer();
}

TernNearestPoint pointOf(const std::shared_ptr<TernWaypoint>& waypoint,
                         std::shared_ptr<TernBaseModel> element) {
  const double x = waypoint->coordinate(0).number();
  const double y = waypoint->coordinate(waypoint->coordinates.size() - 1).number();
  return {x, y, idOf(waypoint->mapId), std::move(element), waypoint};
}

NearestIndex::NearestIndex(const TernVenueData& venue) {
  PointsByMap destinations;
  PointsByMap amenities;
  PointsByMap pathTypes;
  {
    const MutexLock lock(venue.recordsMutex());
    listFloors(venue);
    if (venue.maps == nullptr) return;
    maps_ = venue.maps->copyWithZone();
    destinations = pointsOf(venue.destinations.get());
    amenities = pointsOf(venue.amenities.get());
    pathTypes = pointsOf(venue.pathTypes.get());
  }
  for (const TernMap& map : maps_->each()) {
    const std::string key = keyOf(idOf(map.id));
    destinations_[key] = Tree::init(destinations[key]);
    amenities_[key] = Tree::init(amenities[key]);
    pathTypes_[key] = Tree::init(pathTypes[key]);
  }
}

void NearestIndex::listFloors(const TernVenueData& venue) {
  if (!venue.buildings) return;
  std::size_t place = 0;
  for (const TernBuilding& building : venue.buildings->each()) {
    ++place;
    if (!building.floors) continue;
    for (const auto& floor : building.floors->getAll()) floors_.push_back({floor, place});
  }
}

const NearestIndex::Trees& NearestIndex::treesOf(Kind kind) const {
  if (kind == Kind::destination) return destinations_;
  return kind == Kind::amenity ? amenities_ : pathTypes_;
}

std::optional<NearestIndex::Tree> NearestIndex::treeOn(Kind kind,
                                                       std::optional<std::int64_t> mapId) const {
  const Trees& trees = treesOf(kind);
  const auto tree = trees.find(keyOf(mapId));
  return tree != trees.end() ? std::optional(tree->second) : std::nullopt;
}

std::shared_ptr<TernMap> NearestIndex::mapById(std::int64_t id) const {
  return maps_ != nullptr ? maps_->getById(id) : nullptr;
}

const NearestIndex::PlacedFloor* NearestIndex::placeOf(const TernMap& map) const {
  const auto id = idOf(map.id);
  const auto shows = [&](const PlacedFloor& each) {
    return id && each.floor->map && idOf(each.floor->map->id) == id;
  };
  const auto found = std::ranges::find_if(floors_, shows);
  return found != floors_.end() ? &*found : nullptr;
}

std::shared_ptr<TernFloor> NearestIndex::floorByMap(const TernMap& map) const {
  const PlacedFloor* place = placeOf(map);
  return place != nullptr ? place->floor : nullptr;
}

std::vector<std::shared_ptr<TernFloor>> NearestIndex::floorsAt(std::int64_t level,
                                                               const TernMap& beside) const {
  const PlacedFloor* place = placeOf(beside);
  std::vector<std::shared_ptr<TernFloor>> near;
  std::vector<std::shared_ptr<TernFloor>> others;
  for (const PlacedFloor& each : floors_) {
    if (each.floor->level.integer() != level) continue;
    const bool isNear = place != nullptr && each.building == place->building;
    (isNear ? near : others).push_back(each.floor);
  }
  near.insert(near.end(), others.begin(), others.end());
  return near;
}

}  // namespace tern::detail
