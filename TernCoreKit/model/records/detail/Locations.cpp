#include "TernCoreKit/model/records/detail/Locations.hpp"

#include <utility>

#include "TernCoreKit/model/detail/FieldTable.hpp"

namespace tern::inline v5::detail {

bool takeLocations(Value& dictionary, std::vector<std::shared_ptr<TernLocation>>& locations) {
  Value* list = dictionary.find("locations");
  if (list == nullptr || list->isNull()) return true;
  if (!list->isList()) {
    logWrongKind("\"locations\"", "a record", "a list");
    return false;
  }
  locations.reserve(list->size());
  KeyOrder order;
  for (Value& element : list->items()) {
    locations.push_back(fieldsOf<TernLocation>().make(std::move(element), order));
  }
  return true;
}

}  // namespace tern::detail
