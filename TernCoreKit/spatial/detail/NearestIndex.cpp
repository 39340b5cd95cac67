#include "TernCoreKit/spatial/detail/NearestIndex.hpp"

#include <algorithm>
#include <set>
#include <unordered_map>
#include <utility>

#include "TernCoreKit/model/collections/TernAmenityCollection.hpp"
#include "TernCoreKit/model/collections/TernBuildingCollection.hpp"
#include "TernCoreKit/model/collections/TernDestinationCollection.hpp"
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

template <class Wanted>
std::shared_ptr<TernFloor> first(const std::vector<std::shared_ptr<TernFloor>>& floors,
                                 Wanted isWanted) {
  const auto found = std::ranges::find_if(floors, isWanted);
  return found != floors.end() ? *found : nullptr;
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
    if (venue.buildings) floors_ = venue.buildings->getAllFloors();
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

std::shared_ptr<TernFloor> NearestIndex::floorByMap(const TernMap& map) const {
  const auto id = idOf(map.id);
  return first(floors_,
               [&](const auto& floor) { return id && floor->map && idOf(floor->map->id) == id; });
}

std::shared_ptr<TernFloor> NearestIndex::floorAt(std::int64_t level) const {
  return first(floors_, [&](const auto& floor) {
    return !floor->level.isAbsent() && floor->level.integer() == level;
  });
}

}  // namespace tern::detail
