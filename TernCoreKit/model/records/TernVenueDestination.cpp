#include "TernCoreKit/model/records/TernVenueDestination.hpp"

#include <utility>

#include "TernCoreKit/model/detail/FieldTable.hpp"

namespace tern {

namespace {

void finish(TernVenueDestination& entry, Value&) { detail::makeCollection(entry.destinations); }

}  // namespace

const detail::FieldTable<TernVenueDestination>& TernVenueDestination::fields() {
  using Table = detail::FieldTable<TernVenueDestination>;
  static const detail::Immortal table{
      Table("TernVenueDestination",
            {Table::copied<&TernVenueDestination::venueId>("venueId"),
             Table::copied<&TernVenueDestination::destinations>("destinations")},
            finish)};
  return table.value;
}

std::shared_ptr<TernVenueDestination> TernVenueDestination::initWithDictionary(Value dictionary) {
  return fields().make(std::move(dictionary));
}

std::shared_ptr<TernVenueDestination> TernVenueDestination::copyWithZone() const {
  return fields().copy(*this);
}

}  // namespace tern
