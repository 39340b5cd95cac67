#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <vector>

#include "TernCoreKit/model/collections/RecordKey.hpp"
#include "TernCoreKit/model/records/TernBaseModel.hpp"
#include "TernCoreKit/platform/Export.hpp"
#include "TernCoreKit/platform/Value.hpp"

namespace tern::inline v5 {

/// The records of a collection by their keys, in the order in which the keys came.
///
/// A key is the text of a record's id. Texts that are plain decimal integers of 64 bits are held as
/// such, so that 7, 7.0 and "7" are one key. A key that comes again keeps its place and takes the
/// new record.
///
/// Ownership: shares the records. Copying one copies the map, not the records.
/// Threads: as a standard container: any number of readers, or one writer.
/// Fails: never; a key that is not there gives null.
class TERN_API RecordMap {
 public:
  /// A record with its key.
  struct Entry {
    /// May be null.
    std::shared_ptr<TernBaseModel> record;
    /// What it is kept under.
    RecordKey key;
  };

  /// The key of an id: its printed text, as an integer where it is one; of a list or a map its JSON
  /// text.
  static Value keyOf(const Value& id);

  RecordMap() = default;
  /// The entries by their keys; of one key the last record, at the first place.
  /// REQUIRES: the keys come from `keyOf`.
  explicit RecordMap(std::vector<Entry> entries);

  /// Puts the record under the key, in place of one that is there.
  /// REQUIRES: the key comes from `keyOf`.
  void set(Value key, std::shared_ptr<TernBaseModel> record);

  /// Sees to it that so many more entries can be set without memory.
  void makeRoom(std::size_t more);

  /// The entry of the key; null without one. Valid until the map changes.
  /// REQUIRES: the key comes from `keyOf`.
  const Entry* find(const Value& key) const noexcept;
  /// The entry of that id.
  const Entry* find(std::int64_t id) const noexcept { return find(Value(id)); }

  /// How many entries there are.
  std::size_t size() const noexcept { return entries_.size(); }
  /// All entries in the order in which their keys came. Valid until the map changes.
  std::span<const Entry> entries() const noexcept { return entries_; }

 private:
  // Open addressing with linear probing: a slot holds the position of an entry plus one, or 0.
  template <class Key>
  std::size_t firstSlot(const Key& key) const noexcept;
  template <class Key>
  std::size_t slotOf(const Key& key) const noexcept;
  // Gives the entry its slot when all before it have theirs. When its key is there already, it
  // hands its record over to the earlier entry and the answer is false.
  bool admit(std::size_t position);
  // Gives the first `count` entries, whose keys differ, slots of a new table.
  void rebuildIndex(std::size_t slotCount, std::size_t count);

  std::vector<Entry> entries_;
  std::vector<std::uint32_t> slots_;
  // 0 as long as integer keys lie at their own value: neighbouring ids are then neighbours here.
  std::uint64_t seed_ = 0;
};

}  // namespace tern
