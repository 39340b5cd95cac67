#include "TernCoreKit/model/records/TernPosition.hpp"

#include <utility>

#include "TernCoreKit/model/detail/FieldTable.hpp"

namespace tern::inline v5 {

template <>
const detail::FieldTable<TernPosition>& detail::fieldsOf<TernPosition>() {
  using Table = detail::FieldTable<TernPosition>;
  static const detail::Immortal table{
      Table("TernPosition", {Table::copied<&TernPosition::topLeft>("topLeft"),
                             Table::copied<&TernPosition::bottomRight>("bottomRight")})};
  return table.value;
}

std::shared_ptr<TernPosition> TernPosition::initWithDictionary(Value dictionary) {
  return detail::fieldsOf<TernPosition>().make(std::move(dictionary));
}

std::shared_ptr<TernPosition> TernPosition::copyWithZone() const {
  return detail::fieldsOf<TernPosition>().copy(*this);
}

}  // namespace tern
