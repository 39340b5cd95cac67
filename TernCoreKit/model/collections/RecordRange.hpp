#pragma once

#include <cstddef>
#include <iterator>
#include <span>

#include "TernCoreKit/model/collections/RecordMap.hpp"

namespace tern::inline v5 {

/// The records of a collection one after another as references to their own kind: no list is copied
/// and no reference count touched.
///
/// Ownership: borrows from the collection, which must outlive it and not change meanwhile.
/// Threads: as the collection it comes from.
/// Fails: never.
///
///     for (const TernWaypoint& waypoint : map.waypoints->each()) ...
template <class T>
class RecordRange {
 public:
  /// Steps from record to record.
  class Iterator {
   public:
    /// What the standard asks of an iterator.
    using difference_type = std::ptrdiff_t;
    /// A kind of record.
    using value_type = T;
    /// Borrowed from the collection.
    using reference = T&;
    /// Borrowed from the collection.
    using pointer = T*;
    /// It can be copied and compared, and goes forward.
    using iterator_category = std::forward_iterator_tag;

    Iterator() = default;
    /// At an entry of the collection.
    explicit Iterator(const RecordMap::Entry* entry) : entry_(entry) {}
    /// The record.
    /// REQUIRES: the iterator is not at the end.
    T& operator*() const { return static_cast<T&>(*entry_->record); }
    /// The record.
    /// REQUIRES: the iterator is not at the end.
    T* operator->() const { return &**this; }
    /// Goes to the next record.
    Iterator& operator++() {
      ++entry_;
      return *this;
    }
    /// Goes to the next record; the answer stays at this one.
    Iterator operator++(int) { return Iterator(entry_++); }
    /// Whether both are at one place.
    friend bool operator==(Iterator a, Iterator b) { return a.entry_ == b.entry_; }

   private:
    const RecordMap::Entry* entry_ = nullptr;
  };

  /// The records of these entries.
  /// REQUIRES: all are of the kind T.
  explicit RecordRange(std::span<const RecordMap::Entry> entries) : entries_(entries) {}
  /// At the first record.
  Iterator begin() const { return Iterator(entries_.data()); }
  /// Behind the last record.
  Iterator end() const { return Iterator(entries_.data() + entries_.size()); }
  /// How many records there are.
  std::size_t size() const { return entries_.size(); }

 private:
  std::span<const RecordMap::Entry> entries_;
};

}  // namespace tern
