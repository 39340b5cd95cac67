#include "TernCoreKit/model/collections/TernFloorCollection.hpp"

#include <algorithm>
#include <cstddef>

#include "TernCoreKit/model/collections/detail/Queries.hpp"
#include "TernCoreKit/model/collections/detail/RecordKind.hpp"
#include "TernCoreKit/model/detail/FieldTable.hpp"
#include "TernCoreKit/model/records/TernDestination.hpp"
#include "TernCoreKit/model/records/TernMap.hpp"

namespace tern::inline v5 {

namespace {

// What is no number sorts as 0; a double that is none either would leave no order at all.
double sortKey(const Value& field) {
  const double number = field.number();
  return number == number ? number : 0;
}

}  // namespace

TernFloorCollection::TernFloorCollection() {
  assignCollectionModelClass(detail::kindOf<TernFloor>());
}

std::shared_ptr<TernFloorCollection> TernFloorCollection::copyWithZone() const {
  return copyOf(*this);
}

template <>
const detail::FieldTable<TernFloorCollection>& detail::fieldsOf<TernFloorCollection>() {
  using Table = detail::FieldTable<TernFloorCollection>;
  static const detail::Immortal table{
      Table("TernFloorCollection",
            {Table::uncopied<&TernFloorCollection::defaultFloorId>("defaultFloorId")}, nullptr,
            detail::UnknownKeys::ignore)};
  return table.value;
}

void TernFloorCollection::takeFields(Value& batch) {
  detail::KeyOrder order;
  detail::fieldsOf<TernFloorCollection>().fill(*this, batch, order);
}

std::shared_ptr<TernFloor> TernFloorCollection::getDefault() const {
  if (!detail::isPresent(defaultFloorId)) return shared(detail::firstByKeyText(items()));
  return getById(defaultFloorId.integer());
}

std::shared_ptr<TernFloor> TernFloorCollection::getByLevel(std::int64_t level) const {
  return first([=](const TernFloor& floor) {
    return static_cast<std::int32_t>(floor.level.integer()) == level;
  });
}

std::shared_ptr<TernFloor> TernFloorCollection::getByMap(
    const std::shared_ptr<TernMap>& map) const {
  if (map == nullptr || !detail::isPresent(map->id)) return nullptr;
  return first([id = map->id.integer()](const TernFloor& floor) {
    return floor.map && detail::isPresent(floor.map->id) && floor.map->id.integer() == id;
  });
}

std::vector<std::shared_ptr<TernFloor>> TernFloorCollection::getByDestination(
    const std::shared_ptr<TernDestination>& destination) const {
  if (destination == nullptr) return {};
  return collect([&](const TernFloor& floor) -> std::size_t {
    return floor.map ? detail::countOnMap(destination->locations, floor.map->id.integer()) : 0;
  });
}

std::vector<std::shared_ptr<TernFloor>> TernFloorCollection::getAllSortedByPreference() {
  return sortedOnce(preferencesArray_, &TernFloor::preference);
}

std::vector<std::shared_ptr<TernFloor>> TernFloorCollection::getAllSortedByLevel() {
  return sortedOnce(levelsArray_, &TernFloor::level);
}

std::vector<std::shared_ptr<TernFloor>> TernFloorCollection::getAllSortedByElevation() {
  return sortedOnce(elevationsArray_, &TernFloor::elevation);
}

std::vector<std::shared_ptr<TernFloor>> TernFloorCollection::allFloors() const { return getAll(); }

auto TernFloorCollection::sortedOnce(std::optional<Floors>& cache, Value TernFloor::*order) const
    -> const Floors& {
  if (!cache) {
    cache = getAll();
    std::stable_sort(cache->begin(), cache->end(), [=](const auto& a, const auto& b) {
      return sortKey((*a).*order) < sortKey((*b).*order);
    });
  }
  return *cache;
}

}  // namespace tern
