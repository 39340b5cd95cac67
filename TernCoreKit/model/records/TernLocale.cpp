#include "TernCoreKit/model/records/TernLocale.hpp"

#include <utility>

#include "TernCoreKit/model/detail/FieldTable.hpp"

namespace tern::inline v5 {

template <>
const detail::FieldTable<TernLocale>& detail::fieldsOf<TernLocale>() {
  using Table = detail::FieldTable<TernLocale>;
  static const detail::Immortal table{Table(
      "TernLocale",
      {Table::copied<&TernLocale::id>("id"), Table::copied<&TernLocale::externalId>("externalId"),
       Table::copied<&TernLocale::name>("name"),
       Table::copied<&TernLocale::localeCode>("localeCode")})};
  return table.value;
}

std::shared_ptr<TernLocale> TernLocale::initWithDictionary(Value dictionary) {
  return detail::fieldsOf<TernLocale>().make(std::move(dictionary));
}

std::shared_ptr<TernLocale> TernLocale::copyWithZone() const {
  return detail::fieldsOf<TernLocale>().copy(*this);
}

}  // namespace tern
