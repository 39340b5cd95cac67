// The records of a collection one after another as references to their own kind: no list is copied
// and no reference count touched.
//
// Ownership: borrows from the collection, which must outlive it and not change meanwhile.
// Threads: as the collection it comes from.
// Fails: never.
//
//   for (const TernWaypoint& waypoint : map.waypoints->each()) ...
#pragma once

#include <cstddef>
#include <iterator>
#include <span>

#include "TernCoreKit/model/collections/RecordMap.hpp"

namespace tern {

template <class T>
class RecordRange {
 public:
  class Iterator {
   public:
    using difference_type = std::ptrdiff_t;
    using value_type = T;
    using reference = T&;
    using pointer = T*;
    using iterator_category = std::forward_iterator_tag;

    Iterator() = default;
    explicit Iterator(const RecordMap::Entry* entry) : entry_(entry) {}
    T& operator*() const { return static_cast<T&>(*entry_->record); }
    T* operator->() const { return &**this; }
    Iterator& operator++() {
      ++entry_;
      return *this;
    }
    Iterator operator++(int) { return Iterator(entry_++); }
    friend bool operator==(Iterator a, Iterator b) { return a.entry_ == b.entry_; }

   private:
    const RecordMap::Entry* entry_ = nullptr;
  };

  explicit RecordRange(std::span<const RecordMap::Entry> entries) : entries_(entries) {}
  Iterator begin() const { return Iterator(entries_.data()); }
  Iterator end() const { return Iterator(entries_.data() + entries_.size()); }
  std::size_t size() const { return entries_.size(); }

 private:
  std::span<const RecordMap::Entry> entries_;
};

}  // namespace tern
