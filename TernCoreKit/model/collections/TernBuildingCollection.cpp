#include "TernCoreKit/model/collections/TernBuildingCollection.hpp"

#include "TernCoreKit/model/collections/TernFloorCollection.hpp"
#include "TernCoreKit/model/collections/detail/Queries.hpp"
#include "TernCoreKit/model/collections/detail/RecordKind.hpp"
#include "TernCoreKit/model/detail/FieldTable.hpp"
#include "TernCoreKit/model/records/TernMap.hpp"

namespace tern::inline v5 {

TernBuildingCollection::TernBuildingCollection() {
  assignCollectionModelClass(detail::kindOf<TernBuilding>());
}

std::shared_ptr<TernBuildingCollection> TernBuildingCollection::copyWithZone() const {
  return copyOf(*this);
}

template <>
const detail::FieldTable<TernBuildingCollection>& detail::fieldsOf<TernBuildingCollection>() {
  using Table = detail::FieldTable<TernBuildingCollection>;
  static const detail::Immortal table{
      Table("TernBuildingCollection",
            {Table::uncopied<&TernBuildingCollection::loadedBuildingCount>("loadedBuildingCount"),
             Table::uncopied<&TernBuildingCollection::defaultId>("defaultId")},
            nullptr, detail::UnknownKeys::ignore)};
  return table.value;
}

void TernBuildingCollection::takeFields(Value& batch) {
  detail::KeyOrder order;
  detail::fieldsOf<TernBuildingCollection>().fill(*this, batch, order);
}

void TernBuildingCollection::assignDefaultBuildingWithId(std::int64_t buildingId) {
  if (const TernBuilding* building = findById(buildingId)) defaultId = building->id;
}

std::shared_ptr<TernBuilding> TernBuildingCollection::getDefault() const {
  if (!detail::isPresent(defaultId)) return shared(detail::firstByKeyText(items()));
  return shared(items().find(RecordMap::keyOf(defaultId)));
}

std::shared_ptr<TernBuilding> TernBuildingCollection::getByName(const Value& name) const {
  return first([&](const TernBuilding& each) { return detail::sameText(each.name, name); });
}

std::shared_ptr<TernBuilding> TernBuildingCollection::getByFloor(
    const std::shared_ptr<TernFloor>& floor) const {
  if (floor == nullptr) return nullptr;
  return first([id = floor->id.integer()](const TernBuilding& building) {
    return building.floors && building.floors->findById(id) != nullptr;
  });
}

std::shared_ptr<TernBuilding> TernBuildingCollection::getByMap(
    const std::shared_ptr<TernMap>& map) const {
  return first([&](const TernBuilding& building) {
    return building.floors && building.floors->getByMap(map) != nullptr;
  });
}

std::shared_ptr<TernFloor> TernBuildingCollection::getFloorByMap(
    const std::shared_ptr<TernMap>& map) const {
  const std::shared_ptr<TernBuilding> building = getByMap(map);
  return building != nullptr ? building->floors->getByMap(map) : nullptr;
}

std::vector<std::shared_ptr<TernFloor>> TernBuildingCollection::getAllFloors() const {
  std::vector<std::shared_ptr<TernFloor>> all;
  for (const TernBuilding& building : each()) {
    if (building.floors) detail::append(all, building.floors->getAll());
  }
  return all;
}

}  // namespace tern
