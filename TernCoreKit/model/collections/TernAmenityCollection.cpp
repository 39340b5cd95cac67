#include "TernCoreKit/model/collections/TernAmenityCollection.hpp"

#include <utility>

#include "TernCoreKit/model/collections/TernFloorCollection.hpp"
#include "TernCoreKit/model/collections/detail/Queries.hpp"
#include "TernCoreKit/model/collections/detail/RecordKind.hpp"
#include "TernCoreKit/model/collections/detail/Text.hpp"
#include "TernCoreKit/model/records/TernAssociation.hpp"
#include "TernCoreKit/model/records/TernBuilding.hpp"
#include "TernCoreKit/model/records/TernMap.hpp"
#include "TernCoreKit/model/records/TernWaypoint.hpp"
#include "TernCoreKit/platform/Log.hpp"

namespace tern::inline v5 {

TernAmenityCollection::TernAmenityCollection() {
  assignCollectionModelClass(detail::kindOf<TernAmenity>());
}

std::shared_ptr<TernAmenityCollection> TernAmenityCollection::copyWithZone() const {
  return copyOf(*this);
}

std::vector<std::shared_ptr<TernAmenity>> TernAmenityCollection::getByWaypoint(
    const std::shared_ptr<TernWaypoint>& waypoint) const {
  std::vector<std::shared_ptr<TernAmenity>> found;
  if (waypoint == nullptr || !waypoint->associations) return found;
  for (const Value& id : waypoint->associations->amenities.items()) {
    if (auto amenity = getById(id.integer())) found.push_back(std::move(amenity));
  }
  return found;
}

std::vector<std::shared_ptr<TernAmenity>> TernAmenityCollection::getByKeyword(
    const Value& keyword) const {
  return collect(
      [&](const TernAmenity& each) { return detail::countText(each.keywords, keyword); });
}

std::vector<std::shared_ptr<TernAmenity>> TernAmenityCollection::getByName(
    const Value& name) const {
  return collect(
      [&](const TernAmenity& each) { return detail::sameTextInAnyCase(each.name, name); });
}

std::vector<std::shared_ptr<TernAmenity>> TernAmenityCollection::getByMap(
    const std::shared_ptr<TernMap>& map) const {
  if (map == nullptr) return {};
  if (!detail::isPresent(map->id)) logLine("Error: Map id is not set.");
  return collect([id = map->id.integer()](const TernAmenity& each) {
    return detail::countOnMap(each.locations, id);
  });
}

std::vector<std::shared_ptr<TernAmenity>> TernAmenityCollection::getByFloor(
    const std::shared_ptr<TernFloor>& floor) const {
  if (floor == nullptr) return {};
  if (!floor->map) logLine("Error: Floor map is null.");
  return getByMap(floor->map.record());
}

std::vector<std::shared_ptr<TernAmenity>> TernAmenityCollection::getByBuilding(
    const std::shared_ptr<TernBuilding>& building) const {
  if (building == nullptr) return {};
  std::vector<std::shared_ptr<TernAmenity>> all;
  if (!building->floors) {
    logLine("Error: Floor is null in building.");
    return all;
  }
  for (const std::shared_ptr<TernFloor>& floor : building->floors->getAll()) {
    detail::append(all, getByFloor(floor));
  }
  return all;
}

}  // namespace tern
