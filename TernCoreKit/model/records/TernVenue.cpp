#include "TernCoreKit/model/records/TernVenue.hpp"

#include <utility>

#include "TernCoreKit/model/detail/FieldTable.hpp"
#include "TernCoreKit/model/records/TernPosition.hpp"

namespace tern::inline v5 {

namespace {

void finish(TernVenue& venue, Value&) { detail::makeNested(venue.coordinates); }

}  // namespace

template <>
const detail::FieldTable<TernVenue>& detail::fieldsOf<TernVenue>() {
  using Table = detail::FieldTable<TernVenue>;
  static const detail::Immortal table{Table(
      "TernVenue",
      {Table::copied<&TernVenue::id>("id"), Table::copied<&TernVenue::externalId>("externalId"),
       Table::copied<&TernVenue::name>("name"), Table::copied<&TernVenue::mapId>("mapId"),
       Table::copied<&TernVenue::coordinates>("coordinates"),
       Table::copied<&TernVenue::bbox>("bbox"), Table::uncopied<&TernVenue::status>("status"),
       Table::uncopied<&TernVenue::customerId>("customerId")},
      finish)};
  return table.value;
}

std::shared_ptr<TernVenue> TernVenue::initWithDictionary(Value dictionary) {
  return detail::fieldsOf<TernVenue>().make(std::move(dictionary));
}

std::shared_ptr<TernVenue> TernVenue::copyWithZone() const {
  return detail::fieldsOf<TernVenue>().copy(*this);
}

}  // namespace tern
