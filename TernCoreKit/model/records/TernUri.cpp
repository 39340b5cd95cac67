#include "TernCoreKit/model/records/TernUri.hpp"

#include <utility>

#include "TernCoreKit/model/detail/FieldTable.hpp"

namespace tern::inline v5 {

template <>
const detail::FieldTable<TernUri>& detail::fieldsOf<TernUri>() {
  using Table = detail::FieldTable<TernUri>;
  static const detail::Immortal table{Table(
      "TernUri",
      {Table::copied<&TernUri::id>("id"), Table::copied<&TernUri::externalId>("externalId"),
       Table::copied<&TernUri::resourceType>("resourceType"),
       Table::copied<&TernUri::mimeType>("mimeType"), Table::copied<&TernUri::path>("path")})};
  return table.value;
}

std::shared_ptr<TernUri> TernUri::initWithDictionary(Value dictionary) {
  return detail::fieldsOf<TernUri>().make(std::move(dictionary));
}

std::shared_ptr<TernUri> TernUri::copyWithZone() const {
  return detail::fieldsOf<TernUri>().copy(*this);
}

}  // namespace tern
