#include "TernCoreKit/model/records/TernWaypoint.hpp"

#include <utility>

#include "TernCoreKit/model/detail/FieldTable.hpp"
#include "TernCoreKit/model/records/TernAssociation.hpp"

namespace tern::inline v5 {

namespace {

const Value absent;

void finish(TernWaypoint& waypoint, Value&) { detail::makeNested(waypoint.associations); }

}  // namespace

template <>
const detail::FieldTable<TernWaypoint>& detail::fieldsOf<TernWaypoint>() {
  using Table = detail::FieldTable<TernWaypoint>;
  static const detail::Immortal table{
      Table("TernWaypoint",
            {Table::copied<&TernWaypoint::id>("id"),
             Table::copied<&TernWaypoint::externalId>("externalId"),
             Table::copied<&TernWaypoint::unitNumber>("unitNumber"),
             Table::copied<&TernWaypoint::mapId>("mapId"),
             Table::copied<&TernWaypoint::coordinates>("coordinates"),
             Table::copied<&TernWaypoint::associations>("associations"),
             Table::copied<&TernWaypoint::status>("status"),
             Table::uncopied<&TernWaypoint::zoneId>("zoneId")},
            finish)};
  return table.value;
}

const Value& TernWaypoint::coordinate(std::size_t axis) const {
  const auto items = coordinates.items();
  return axis < items.size() ? items[axis] : absent;
}

std::shared_ptr<TernWaypoint> TernWaypoint::initWithDictionary(Value dictionary) {
  return detail::fieldsOf<TernWaypoint>().make(std::move(dictionary));
}

std::shared_ptr<TernWaypoint> TernWaypoint::copyWithZone() const {
  return detail::fieldsOf<TernWaypoint>().copy(*this);
}

}  // namespace tern
