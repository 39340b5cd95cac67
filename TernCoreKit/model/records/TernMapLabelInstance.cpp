#include "TernCoreKit/model/records/TernMapLabelInstance.hpp"

#include <utility>

#include "TernCoreKit/model/detail/FieldTable.hpp"

namespace tern::inline v5 {

template <>
const detail::FieldTable<TernMapLabelInstance>& detail::fieldsOf<TernMapLabelInstance>() {
  using Table = detail::FieldTable<TernMapLabelInstance>;
  static const detail::Immortal table{Table(
      "TernMapLabelInstance", {Table::copied<&TernMapLabelInstance::id>("id"),
                               Table::copied<&TernMapLabelInstance::externalId>("externalId"),
                               Table::copied<&TernMapLabelInstance::position>("position"),
                               Table::copied<&TernMapLabelInstance::name>("name"),
                               Table::copied<&TernMapLabelInstance::mapId>("mapId"),
                               Table::copied<&TernMapLabelInstance::scale>("scale"),
                               Table::copied<&TernMapLabelInstance::skew>("skew"),
                               Table::copied<&TernMapLabelInstance::trans>("trans"),
                               Table::copied<&TernMapLabelInstance::rotation>("rotation"),
                               Table::copied<&TernMapLabelInstance::allLevels>("allLevels")})};
  return table.value;
}

std::shared_ptr<TernMapLabelInstance> TernMapLabelInstance::initWithDictionary(Value dictionary) {
  return detail::fieldsOf<TernMapLabelInstance>().make(std::move(dictionary));
}

std::shared_ptr<TernMapLabelInstance> TernMapLabelInstance::copyWithZone() const {
  return detail::fieldsOf<TernMapLabelInstance>().copy(*this);
}

}  // namespace tern
