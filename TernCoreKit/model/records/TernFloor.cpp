#include "TernCoreKit/model/records/TernFloor.hpp"

#include <cstdint>
#include <limits>
#include <utility>

#include "TernCoreKit/model/detail/FieldTable.hpp"
#include "TernCoreKit/model/records/TernMap.hpp"

namespace tern::inline v5 {

namespace {

void finish(TernFloor& floor, Value&) {
  detail::makeNested(floor.map);
  if (floor.level.isNull()) floor.level = std::numeric_limits<std::int32_t>::min();
  floor.altitude = floor.elevation;
}

}  // namespace

template <>
const detail::FieldTable<TernFloor>& detail::fieldsOf<TernFloor>() {
  using Table = detail::FieldTable<TernFloor>;
  static const detail::Immortal table{Table(
      "TernFloor",
      {Table::copied<&TernFloor::id>("id"), Table::copied<&TernFloor::externalId>("externalId"),
       Table::copied<&TernFloor::buildingId>("buildingId"), Table::copied<&TernFloor::map>("map"),
       Table::copied<&TernFloor::level>("level"),
       Table::copied<&TernFloor::preference>("preference"),
       Table::copied<&TernFloor::elevation>("elevation"),
       Table::copied<&TernFloor::altitude>("altitude"), Table::copied<&TernFloor::name>("name"),
       Table::copied<&TernFloor::shortName>("shortName"),
       Table::uncopied<&TernFloor::recordHistory>("recordHistory")},
      finish)};
  return table.value;
}

std::shared_ptr<TernFloor> TernFloor::initWithDictionary(Value dictionary) {
  return detail::fieldsOf<TernFloor>().make(std::move(dictionary));
}

std::shared_ptr<TernFloor> TernFloor::copyWithZone() const {
  return detail::fieldsOf<TernFloor>().copy(*this);
}

}  // namespace tern
