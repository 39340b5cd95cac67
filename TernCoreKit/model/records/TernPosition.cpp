#include "TernCoreKit/model/records/TernPosition.hpp"

#include <utility>

#include "TernCoreKit/model/detail/FieldTable.hpp"

namespace tern {

const detail::FieldTable<TernPosition>& TernPosition::fields() {
  using Table = detail::FieldTable<TernPosition>;
  static const detail::Immortal table{
      Table("TernPosition", {Table::copied<&TernPosition::topLeft>("topLeft"),
                             Table::copied<&TernPosition::bottomRight>("bottomRight")})};
  return table.value;
}

std::shared_ptr<TernPosition> TernPosition::initWithDictionary(Value dictionary) {
  return fields().make(std::move(dictionary));
}

std::shared_ptr<TernPosition> TernPosition::copyWithZone() const { return fields().copy(*this); }

}  // namespace tern
