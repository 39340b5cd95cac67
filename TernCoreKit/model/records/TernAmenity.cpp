#include "TernCoreKit/model/records/TernAmenity.hpp"

#include <utility>

#include "TernCoreKit/model/detail/FieldTable.hpp"
#include "TernCoreKit/model/records/TernLocation.hpp"
#include "TernCoreKit/model/records/TernWaypoint.hpp"
#include "TernCoreKit/model/records/detail/Locations.hpp"

namespace tern::inline v5 {

namespace {

void finish(TernAmenity& amenity, Value& dictionary) {
  if (!detail::takeLocations(dictionary, amenity.locations)) return;
  detail::makeCollection(amenity.uris);
}

}  // namespace

template <>
const detail::FieldTable<TernAmenity>& detail::fieldsOf<TernAmenity>() {
  using Table = detail::FieldTable<TernAmenity>;
  static const detail::Immortal table{Table(
      "TernAmenity",
      {Table::copied<&TernAmenity::id>("id"), Table::copied<&TernAmenity::externalId>("externalId"),
       Table::copied<&TernAmenity::customerId>("customerId"),
       Table::copied<&TernAmenity::name>("name"),
       Table::copied<&TernAmenity::description>("description"),
       Table::copied<&TernAmenity::status>("status"),
       Table::copied<&TernAmenity::displayOrder>("displayOrder"),
       Table::copied<&TernAmenity::primaryUriId>("primaryUriId"),
       Table::copied<&TernAmenity::extensors>("extensors"),
       Table::copied<&TernAmenity::locations>("locations"),
       Table::copied<&TernAmenity::uris>("uris"), Table::copied<&TernAmenity::keywords>("keywords"),
       Table::copied<&TernAmenity::svg>("svg"),
       Table::copied<&TernAmenity::waypoints>("waypoints")},
      finish)};
  return table.value;
}

std::shared_ptr<TernAmenity> TernAmenity::initWithDictionary(Value dictionary) {
  return detail::fieldsOf<TernAmenity>().make(std::move(dictionary));
}

std::shared_ptr<TernAmenity> TernAmenity::copyWithZone() const {
  return detail::fieldsOf<TernAmenity>().copy(*this);
}

void TernAmenity::addWaypoints(std::vector<std::shared_ptr<TernWaypoint>> list) {
  waypoints = std::move(list);
}

}  // namespace tern
