#include "TernCoreKit/model/records/TernMapLabel.hpp"

#include <utility>

#include "TernCoreKit/model/detail/FieldTable.hpp"

namespace tern::inline v5 {

namespace {

void finish(TernMapLabel& label, Value&) {
  detail::makeCollection(label.uris);
  detail::makeCollection(label.mapLabelInstances);
}

}  // namespace

template <>
const detail::FieldTable<TernMapLabel>& detail::fieldsOf<TernMapLabel>() {
  using Table = detail::FieldTable<TernMapLabel>;
  static const detail::Immortal table{
      Table("TernMapLabel",
            {Table::uncopied<&TernMapLabel::id>("id"),
             Table::uncopied<&TernMapLabel::externalId>("externalId"),
             Table::copied<&TernMapLabel::name>("name"),
             Table::copied<&TernMapLabel::mapLabelInstances>("mapLabelInstances"),
             Table::copied<&TernMapLabel::uris>("uris"), Table::copied<&TernMapLabel::svg>("svg"),
             Table::uncopied<&TernMapLabel::status>("status")},
            finish)};
  return table.value;
}

std::shared_ptr<TernMapLabel> TernMapLabel::initWithDictionary(Value dictionary) {
  return detail::fieldsOf<TernMapLabel>().make(std::move(dictionary));
}

std::shared_ptr<TernMapLabel> TernMapLabel::copyWithZone() const {
  return detail::fieldsOf<TernMapLabel>().copy(*this);
}

}  // namespace tern
