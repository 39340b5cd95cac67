#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

#include "TernCoreKit/model/collections/RecordRange.hpp"
#include "TernCoreKit/model/collections/TernBaseCollection.hpp"

namespace tern::inline v5 {

/// What every collection of one kind of record offers, in the types of that kind.
///
/// Ownership, threads and failures are those of every collection: see TernBaseCollection.
template <class T>
class TernTypedCollection : public TernBaseCollection {
 public:
  /// Every record, in the order of the batch.
  std::vector<std::shared_ptr<T>> getAll() const;
  /// The record of that id; null without one.
  std::shared_ptr<T> getById(std::int64_t id) const { return shared(items().find(id)); }
  /// The records of that external id; most often one at most.
  std::vector<std::shared_ptr<T>> getByExternalId(const Value& externalId) const;

  /// Every record, without a copy or a change of reference counts. Valid until the collection
  /// changes.
  RecordRange<T> each() const { return RecordRange<T>(items().entries()); }
  /// The record of that id, without a change of reference counts; null without one. Valid until the
  /// collection changes.
  T* findById(std::int64_t id) const;

  /// Each record as often as `times` says of it (a flag counts as once or not at all).
  template <class Times>
  std::vector<std::shared_ptr<T>> collect(Times times) const;
  /// The first record of which `wanted` is true; null without one.
  template <class Wanted>
  std::shared_ptr<T> first(Wanted wanted) const;

 protected:
  /// The record of an entry as what it is; null of none.
  static std::shared_ptr<T> shared(const RecordMap::Entry* entry);
};

// Bodies follow.

template <class T>
std::shared_ptr<T> TernTypedCollection<T>::shared(const RecordMap::Entry* entry) {
  return entry != nullptr ? std::static_pointer_cast<T>(entry->record) : nullptr;
}

template <class T>
T* TernTypedCollection<T>::findById(std::int64_t id) const {
  const RecordMap::Entry* entry = items().find(id);
  return entry != nullptr ? static_cast<T*>(entry->record.get()) : nullptr;
}

template <class T>
std::vector<std::shared_ptr<T>> TernTypedCollection<T>::getAll() const {
  std::vector<std::shared_ptr<T>> all;
  all.reserve(items().size());
  for (const RecordMap::Entry& entry : items().entries()) all.push_back(shared(&entry));
  return all;
}

template <class T>
std::vector<std::shared_ptr<T>> TernTypedCollection<T>::getByExternalId(
    const Value& externalId) const {
  if (!externalId.isText()) return {};
  return collect([&](const T& record) { return record.externalId == externalId; });
}

template <class T>
template <class Times>
std::vector<std::shared_ptr<T>> TernTypedCollection<T>::collect(Times times) const {
  std::vector<std::shared_ptr<T>> result;
  for (const RecordMap::Entry& entry : items().entries()) {
    const std::size_t count = times(static_cast<const T&>(*entry.record));
    if (count > 0) result.insert(result.end(), count, shared(&entry));
  }
  return result;
}

template <class T>
template <class Wanted>
std::shared_ptr<T> TernTypedCollection<T>::first(Wanted wanted) const {
  for (const RecordMap::Entry& entry : items().entries()) {
    if (wanted(static_cast<const T&>(*entry.record))) return shared(&entry);
  }
  return nullptr;
}

}  // namespace tern
