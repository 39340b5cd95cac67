#include "TernCoreKit/model/records/TernPathType.hpp"

#include <utility>

#include "TernCoreKit/model/detail/FieldTable.hpp"
#include "TernCoreKit/model/records/TernLocation.hpp"
#include "TernCoreKit/model/records/TernWaypoint.hpp"
#include "TernCoreKit/model/records/detail/Locations.hpp"

namespace tern::inline v5 {

namespace {

void finish(TernPathType& pathType, Value& dictionary) {
  detail::makeCollection(pathType.uris);
  detail::takeLocations(dictionary, pathType.locations);
}

}  // namespace

template <>
const detail::FieldTable<TernPathType>& detail::fieldsOf<TernPathType>() {
  using Table = detail::FieldTable<TernPathType>;
  static const detail::Immortal table{
      Table("TernPathType",
            {Table::copied<&TernPathType::id>("id"),
             Table::copied<&TernPathType::externalId>("externalId"),
             Table::copied<&TernPathType::name>("name"),
             Table::copied<&TernPathType::description>("description"),
             Table::copied<&TernPathType::accessibility>("accessibility"),
             Table::copied<&TernPathType::verticalWeight>("verticalWeight"),
             Table::copied<&TernPathType::speed>("speed"),
             Table::copied<&TernPathType::maxFloors>("maxFloors"),
             Table::copied<&TernPathType::weight>("weight"),
             Table::copied<&TernPathType::direction>("direction"),
             Table::copied<&TernPathType::uris>("uris"),
             Table::copied<&TernPathType::locations>("locations"),
             Table::copied<&TernPathType::svg>("svg"),
             Table::uncopied<&TernPathType::waypoints>("waypoints")},
            finish)};
  return table.value;
}

std::shared_ptr<TernPathType> TernPathType::initWithDictionary(Value dictionary) {
  return detail::fieldsOf<TernPathType>().make(std::move(dictionary));
}

std::shared_ptr<TernPathType> TernPathType::copyWithZone() const {
  return detail::fieldsOf<TernPathType>().copy(*this);
}

void TernPathType::addWaypoints(std::vector<std::shared_ptr<TernWaypoint>> list) {
  waypoints = std::move(list);
}

}  // namespace tern
