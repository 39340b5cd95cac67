#include "TernCoreKit/model/records/TernDestination.hpp"

#include <utility>

#include "TernCoreKit/model/detail/FieldTable.hpp"
#include "TernCoreKit/model/records/TernLocation.hpp"
#include "TernCoreKit/model/records/TernWaypoint.hpp"
#include "TernCoreKit/model/records/detail/Locations.hpp"

namespace tern::inline v5 {

namespace {

void finish(TernDestination& destination, Value& dictionary) {
  detail::makeCollection(destination.uris);
  detail::takeLocations(dictionary, destination.locations);
}

}  // namespace

template <>
const detail::FieldTable<TernDestination>& detail::fieldsOf<TernDestination>() {
  using Table = detail::FieldTable<TernDestination>;
  static const detail::Immortal table{
      Table("TernDestination",
            {Table::copied<&TernDestination::id>("id"),
             Table::copied<&TernDestination::externalId>("externalId"),
             Table::copied<&TernDestination::unitNumber>("unitNumber"),
             Table::copied<&TernDestination::name>("name"),
             Table::copied<&TernDestination::description>("description"),
             Table::copied<&TernDestination::primaryUri>("primaryUri"),
             Table::copied<&TernDestination::localeCode>("localeCode"),
             Table::copied<&TernDestination::extensors>("extensors"),
             Table::copied<&TernDestination::uris>("uris"),
             Table::copied<&TernDestination::locations>("locations"),
             Table::copied<&TernDestination::categoryIds>("categoryIds"),
             Table::copied<&TernDestination::keywords>("keywords"),
             Table::copied<&TernDestination::tags>("tags"),
             Table::uncopied<&TernDestination::waypoints>("waypoints"),
             Table::copied<&TernDestination::displayMode>("displayMode"),
             Table::uncopied<&TernDestination::status>("status"),
             Table::uncopied<&TernDestination::svg>("svg")},
            finish)};
  return table.value;
}

std::shared_ptr<TernDestination> TernDestination::initWithDictionary(Value dictionary) {
  return detail::fieldsOf<TernDestination>().make(std::move(dictionary));
}

std::shared_ptr<TernDestination> TernDestination::copyWithZone() const {
  return detail::fieldsOf<TernDestination>().copy(*this);
}

void TernDestination::addWaypoints(std::vector<std::shared_ptr<TernWaypoint>> list) {
  waypoints = std::move(list);
}

}  // namespace tern
