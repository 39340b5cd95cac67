#include "TernCoreKit/model/records/TernBuilding.hpp"

#include <utility>

#include "TernCoreKit/model/detail/FieldTable.hpp"
#include "TernCoreKit/model/records/TernPosition.hpp"

namespace tern::inline v5 {

namespace {

void finish(TernBuilding& building, Value&) {
  detail::makeCollection(building.floors);
  detail::makeNested(building.coordinates);
}

}  // namespace

template <>
const detail::FieldTable<TernBuilding>& detail::fieldsOf<TernBuilding>() {
  using Table = detail::FieldTable<TernBuilding>;
  static const detail::Immortal table{
      Table("TernBuilding",
            {Table::copied<&TernBuilding::id>("id"),
             Table::copied<&TernBuilding::externalId>("externalId"),
             Table::copied<&TernBuilding::name>("name"),
             Table::copied<&TernBuilding::coordinates>("coordinates"),
             Table::copied<&TernBuilding::venueId>("venueId"),
             Table::copied<&TernBuilding::floors>("floors"),
             Table::copied<&TernBuilding::address>("address"),
             Table::copied<&TernBuilding::description>("description"),
             Table::uncopied<&TernBuilding::defaultFloorId>("defaultFloorId"),
             Table::uncopied<&TernBuilding::generatedAt>("generatedAt"),
             Table::uncopied<&TernBuilding::customerId>("customerId"),
             Table::uncopied<&TernBuilding::recordHistory>("recordHistory"),
             Table::uncopied<&TernBuilding::mapId>("mapId")},
            finish)};
  return table.value;
}

std::shared_ptr<TernBuilding> TernBuilding::initWithDictionary(Value dictionary) {
  return detail::fieldsOf<TernBuilding>().make(std::move(dictionary));
}

std::shared_ptr<TernBuilding> TernBuilding::copyWithZone() const {
  return detail::fieldsOf<TernBuilding>().copy(*this);
}

}  // namespace tern
