#include "TernCoreKit/model/collections/TernBaseCollection.hpp"

#include <algorithm>
#include <utility>
#include <vector>

#include "TernCoreKit/model/collections/detail/RecordKind.hpp"
#include "TernCoreKit/platform/Log.hpp"

namespace tern::inline v5 {

namespace {

// Whether a record can be made of it, and has a key then.
bool isObject(const Value& element) { return element.isMap() && element.size() > 0; }

// The value that gives the element's record its key: its "id", else that of its first key.
const Value& idOf(const Value& element, const Value& idName) {
  const Value::Entry& first = element.entries().front();
  if (first.key.sameBytes(idName)) return first.value;
  const Value* id = element.find(idName.text());
  return id != nullptr ? *id : first.value;
}

}  // namespace

TernBaseCollection::~TernBaseCollection() = default;

void TernBaseCollection::takeFields(Value&) {}

const std::shared_ptr<const TernBaseModel>& TernBaseCollection::collectionModelClass() const {
  return kind_->prototype;
}

RecordMap TernBaseCollection::createBatch(Value batch) {
  takeBatch(std::move(batch));
  return items_;
}

void TernBaseCollection::takeBatch(Value batch) {
  takeFields(batch);
  Value* list = batch.find("items");
  if (list != nullptr) {
    buildRecords(std::move(*list));
  } else if (!batch.isMap() || getCount() > 0 || !plainItems_.isAbsent()) {
    detail::logWrongKind("\"items\"", kind_->name, "in the batch");
  }
}

// All elements are looked at before the first is taken apart: what cannot be read stays whole.
void TernBaseCollection::buildRecords(Value list) {
  items_ = RecordMap();
  const bool isEmptyMap = list.isMap() && list.size() == 0;
  if (!isEmptyMap && !(list.isList() && std::ranges::all_of(list.items(), isObject))) {
    detail::logWrongKind("\"items\"", kind_->name, "a list of objects");
    plainItems_ = std::move(list);
    return;
  }
  plainItems_ = Value();
  std::vector<RecordMap::Entry> entries;
  entries.reserve(list.size());
  const Value idName("id");
  detail::KeyOrder order;
  for (Value& element : list.items()) {
    Value key = RecordMap::keyOf(idOf(element, idName));
    entries.push_back({kind_->make(std::move(element), order), std::move(key)});
  }
  items_ = RecordMap(std::move(entries));
}

void TernBaseCollection::create(Value object) {
  const Value* id = object.find("id");
  Value key = RecordMap::keyOf(id != nullptr ? *id : Value());
  if (id == nullptr && items_.find(key) == nullptr) {
    logLine("Error in parsing data");
    return;
  }
  detail::KeyOrder order;
  put(std::move(key), kind_->make(std::move(object), order));
}

void TernBaseCollection::put(Value key, std::shared_ptr<TernBaseModel> record) {
  plainItems_ = Value();
  items_.set(std::move(key), std::move(record));
}

void TernBaseCollection::makeRoom(std::size_t more) { items_.makeRoom(more); }

std::size_t TernBaseCollection::getCount() const {
  return plainItems_.isMap() ? plainItems_.size() : items_.size();
}

void TernBaseCollection::shareItemsOf(const TernBaseCollection& other) {
  items_ = other.items_;
  plainItems_ = other.plainItems_;
}

}  // namespace tern
