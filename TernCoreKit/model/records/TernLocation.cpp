#include "TernCoreKit/model/records/TernLocation.hpp"

#include <utility>

#include "TernCoreKit/model/detail/FieldTable.hpp"
#include "TernCoreKit/model/records/detail/Locations.hpp"

namespace tern::inline v5 {

template <>
const detail::FieldTable<TernLocation>& detail::fieldsOf<TernLocation>() {
  using Table = detail::FieldTable<TernLocation>;
  static const detail::Immortal table{
      Table("TernLocation", {Table::copied<&TernLocation::mapId>("mapId"),
                             Table::copied<&TernLocation::waypointIds>("waypointIds")})};
  return table.value;
}

std::shared_ptr<TernLocation> TernLocation::initWithDictionary(Value dictionary) {
  return detail::fieldsOf<TernLocation>().make(std::move(dictionary));
}

std::shared_ptr<TernLocation> TernLocation::copyWithZone() const {
  return detail::fieldsOf<TernLocation>().copy(*this);
}

std::vector<std::shared_ptr<TernLocation>> TernLocation::parseLocationsIntoArrayFormDictionary(
    Value dictionary) {
  std::vector<std::shared_ptr<TernLocation>> locations;
  detail::takeLocations(dictionary, locations);
  return locations;
}

}  // namespace tern
