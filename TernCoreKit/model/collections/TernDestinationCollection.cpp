#include "TernCoreKit/model/collections/TernDestinationCollection.hpp"

#include <cstddef>

#include "TernCoreKit/model/collections/TernFloorCollection.hpp"
#include "TernCoreKit/model/collections/detail/Queries.hpp"
#include "TernCoreKit/model/collections/detail/RecordKind.hpp"
#include "TernCoreKit/model/records/TernBuilding.hpp"
#include "TernCoreKit/model/records/TernMap.hpp"
#include "TernCoreKit/model/records/TernWaypoint.hpp"

namespace tern::inline v5 {

TernDestinationCollection::TernDestinationCollection() {
  assignCollectionModelClass(detail::kindOf<TernDestination>());
}

std::shared_ptr<TernDestinationCollection> TernDestinationCollection::copyWithZone() const {
  return copyOf(*this);
}

std::vector<std::shared_ptr<TernDestination>> TernDestinationCollection::getByTag(
    const Value& tag) const {
  return collect(
      [&](const TernDestination& each) { return detail::countText(each.tags, tag) > 0; });
}

std::vector<std::shared_ptr<TernDestination>> TernDestinationCollection::getByKeyword(
    const Value& keyword) const {
  return collect(
      [&](const TernDestination& each) { return detail::countText(each.keywords, keyword) > 0; });
}

std::vector<std::shared_ptr<TernDestination>> TernDestinationCollection::getByUnitNumber(
    const Value& unitNumber) const {
  return collect(
      [&](const TernDestination& each) { return detail::sameText(each.unitNumber, unitNumber); });
}

std::vector<std::shared_ptr<TernDestination>> TernDestinationCollection::getByMap(
    const std::shared_ptr<TernMap>& map) const {
  if (map == nullptr) return {};
  return collect([id = map->id.integer()](const TernDestination& each) {
    return detail::countOnMap(each.locations, id);
  });
}

std::vector<std::shared_ptr<TernDestination>> TernDestinationCollection::getByFloor(
    const std::shared_ptr<TernFloor>& floor) const {
  if (floor == nullptr) return {};
  return getByMap(floor->map.record());
}

std::vector<std::shared_ptr<TernDestination>> TernDestinationCollection::getByBuilding(
    const std::shared_ptr<TernBuilding>& building) const {
  if (building == nullptr || !building->floors) return {};
  return collect([&](const TernDestination& each) {
    std::size_t count = 0;
    for (const TernFloor& floor : building->floors->each()) {
      if (floor.map) count += detail::countOnMap(each.locations, floor.map->id.integer());
    }
    return count;
  });
}

std::vector<std::shared_ptr<TernDestination>> TernDestinationCollection::getByWaypoint(
    const std::shared_ptr<TernWaypoint>& waypoint) const {
  if (waypoint == nullptr) return {};
  return collect([&](const TernDestination& each) {
    return detail::countAtWaypoint(each.locations, waypoint->id);
  });
}

}  // namespace tern
