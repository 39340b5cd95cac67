// The kind of record that a collection holds: how one is called, what an empty one looks like and
// how one is made of a document.
//
// Ownership: one for each kind, as long as the process lives. Threads: any. Fails: never.
#pragma once

#include <memory>
#include <string_view>
#include <utility>

#include "TernCoreKit/model/detail/FieldTable.hpp"
#include "TernCoreKit/model/records/TernBaseModel.hpp"
#include "TernCoreKit/platform/detail/common/Immortal.hpp"

namespace tern::inline v5::detail {

struct RecordKind {
  std::string_view name;
  std::shared_ptr<const TernBaseModel> prototype;
  std::shared_ptr<TernBaseModel> (*make)(Value&& dictionary, KeyOrder& order);
};

template <class Record>
const RecordKind& kindOf() {
  static const Immortal kind{
      RecordKind{fieldsOf<Record>().kind(), std::make_shared<const Record>(),
                 [](Value&& dictionary, KeyOrder& order) -> std::shared_ptr<TernBaseModel> {
                   return fieldsOf<Record>().make(std::move(dictionary), order);
                 }}};
  return kind.value;
}

}  // namespace tern::detail
