#include "TernCoreKit/model/records/TernBaseModel.hpp"

#include <utility>

#include "TernCoreKit/model/detail/FieldTable.hpp"

namespace tern::inline v5 {

template <>
const detail::FieldTable<TernBaseModel>& detail::fieldsOf<TernBaseModel>() {
  using Table = detail::FieldTable<TernBaseModel>;
  static const detail::Immortal table{
      Table("TernBaseModel", {Table::copied<&TernBaseModel::id>("id"),
                              Table::copied<&TernBaseModel::externalId>("externalId")})};
  return table.value;
}

TernBaseModel::~TernBaseModel() = default;

std::shared_ptr<TernBaseModel> TernBaseModel::initWithDictionary(Value dictionary) {
  return detail::fieldsOf<TernBaseModel>().make(std::move(dictionary));
}

std::shared_ptr<TernBaseModel> TernBaseModel::copyOfKind() const {
  return detail::fieldsOf<TernBaseModel>().copy(*this);
}

std::shared_ptr<TernBaseModel> TernBaseModel::initWithId(Value id, Value externalId) {
  auto record = std::make_shared<TernBaseModel>();
  record->id = std::move(id);
  record->externalId = std::move(externalId);
  return record;
}

}  // namespace tern
