#include "TernCoreKit/model/records/TernAssociation.hpp"

#include <utility>

#include "TernCoreKit/model/detail/FieldTable.hpp"

namespace tern::inline v5 {

template <>
const detail::FieldTable<TernAssociation>& detail::fieldsOf<TernAssociation>() {
  using Table = detail::FieldTable<TernAssociation>;
  static const detail::Immortal table{
      Table("TernAssociation", {Table::copied<&TernAssociation::id>("id"),
                                Table::copied<&TernAssociation::externalId>("externalId"),
                                Table::copied<&TernAssociation::destinations>("destinations"),
                                Table::copied<&TernAssociation::amenities>("amenities")})};
  return table.value;
}

std::shared_ptr<TernAssociation> TernAssociation::initWithDictionary(Value dictionary) {
  return detail::fieldsOf<TernAssociation>().make(std::move(dictionary));
}

std::shared_ptr<TernAssociation> TernAssociation::copyWithZone() const {
  return detail::fieldsOf<TernAssociation>().copy(*this);
}

}  // namespace tern
