#include "TernCoreKit/model/records/TernPath.hpp"

#include <utility>

#include "TernCoreKit/model/detail/FieldTable.hpp"

namespace tern::inline v5 {

template <>
const detail::FieldTable<TernPath>& detail::fieldsOf<TernPath>() {
  using Table = detail::FieldTable<TernPath>;
  static const detail::Immortal table{Table(
      "TernPath",
      {Table::copied<&TernPath::id>("id"), Table::copied<&TernPath::externalId>("externalId"),
       Table::copied<&TernPath::pathTypeId>("pathTypeId"), Table::copied<&TernPath::name>("name"),
       Table::copied<&TernPath::direction>("direction"),
       Table::copied<&TernPath::waypointIds>("waypointIds"),
       Table::uncopied<&TernPath::extensors>("extensors"),
       Table::uncopied<&TernPath::status>("status")})};
  return table.value;
}

std::shared_ptr<TernPath> TernPath::initWithDictionary(Value dictionary) {
  return detail::fieldsOf<TernPath>().make(std::move(dictionary));
}

std::shared_ptr<TernPath> TernPath::copyWithZone() const {
  return detail::fieldsOf<TernPath>().copy(*this);
}

}  // namespace tern
