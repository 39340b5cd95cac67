#include "TernCoreKit/model/records/TernVenueDestination.hpp"

#include <utility>

#include "TernCoreKit/model/detail/FieldTable.hpp"

namespace tern::inline v5 {

namespace {

void finish(TernVenueDestination& entry, Value&) { detail::makeCollection(entry.destinations); }

}  // namespace

template <>
const detail::FieldTable<TernVenueDestination>& detail::fieldsOf<TernVenueDestination>() {
  using Table = detail::FieldTable<TernVenueDestination>;
  static const detail::Immortal table{
      Table("TernVenueDestination",
            {Table::copied<&TernVenueDestination::venueId>("venueId"),
             Table::copied<&TernVenueDestination::destinations>("destinations")},
            finish)};
  return table.value;
}

std::shared_ptr<TernVenueDestination> TernVenueDestination::initWithDictionary(Value dictionary) {
  return detail::fieldsOf<TernVenueDestination>().make(std::move(dictionary));
}

std::shared_ptr<TernVenueDestination> TernVenueDestination::copyWithZone() const {
  return detail::fieldsOf<TernVenueDestination>().copy(*this);
}

}  // namespace tern
