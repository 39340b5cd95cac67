#include "TernCoreKit/model/records/TernUri.hpp"

#include <utility>

#include "TernCoreKit/model/detail/FieldTable.hpp"

namespace tern {

const detail::FieldTable<TernUri>& TernUri::fields() {
  using Table = detail::FieldTable<TernUri>;
  static const detail::Immortal table{Table(
      "TernUri",
      {Table::copied<&TernUri::id>("id"), Table::copied<&TernUri::externalId>("externalId"),
       Table::copied<&TernUri::resourceType>("resourceType"),
       Table::copied<&TernUri::mimeType>("mimeType"), Table::copied<&TernUri::path>("path")})};
  return table.value;
}

std::shared_ptr<TernUri> TernUri::initWithDictionary(Value dictionary) {
  return fields().make(std::move(dictionary));
}

std::shared_ptr<TernUri> TernUri::copyWithZone() const { return fields().copy(*this); }

}  // namespace tern
