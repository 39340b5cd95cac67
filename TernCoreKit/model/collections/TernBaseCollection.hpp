#pragma once

#include <cstddef>
#include <memory>

#include "TernCoreKit/model/collections/RecordMap.hpp"
#include "TernCoreKit/platform/Export.hpp"
#include "TernCoreKit/platform/Value.hpp"

namespace tern::inline v5 {

namespace detail {
struct RecordKind;
}  // namespace detail

/// The base of the typed collections: records of one kind by their ids, filled in one batch from an
/// object of the service whose key "items" holds the list of the records' documents.
///
/// Ownership: shares its records; a query returns a new list of shared ones.
/// Threads: any number of callers of const operations, or one of the others.
/// Fails: never. A query without an answer gives an empty list or null, and so does one whose
/// argument is null or of the wrong kind. A batch that cannot be read is logged; see `createBatch`.
///
///     auto waypoints = std::make_shared<TernWaypointCollection>();
///     waypoints->createBatch(std::move(document));
///     if (const TernWaypoint* start = waypoints->findById(12)) ...
class TERN_API TernBaseCollection {
 public:
  virtual ~TernBaseCollection();
  TernBaseCollection(const TernBaseCollection&) = delete;
  TernBaseCollection& operator=(const TernBaseCollection&) = delete;

  /// An empty record of the kind held here.
  const std::shared_ptr<const TernBaseModel>& collectionModelClass() const;

  /// The records by their keys.
  const RecordMap& items() const { return items_; }
  /// The value under "items" of the last batch when no records could be made of it, else absent.
  const Value& plainItems() const { return plainItems_; }

  /// Replaces all records by those of the batch and stores what it has under the names of the
  /// collection's own fields; other keys mean nothing. A record is kept under its "id", without one
  /// under the value of its first key. Returns a copy of `items`.
  ///
  /// A batch that is no map or has no "items" leaves the records as they are. When "items" is no
  /// list of objects with at least one key, its value becomes `plainItems` and no record is left.
  RecordMap createBatch(Value batch);
  /// The same without a copy.
  void takeBatch(Value batch);

  /// Adds the record of one document, or puts it in place of the one of that id. A document without
  /// an id is logged and not added.
  void create(Value object);

  /// Sees to it that so many more records can be added without memory for their places.
  void makeRoom(std::size_t more);

  /// How many records there are; the number of keys when a map became `plainItems`.
  std::size_t getCount() const;

 protected:
  TernBaseCollection() = default;

  /// Says which kind of record is held; each kind of collection does so when it is made.
  void assignCollectionModelClass(const detail::RecordKind& kind) { kind_ = &kind; }
  /// Moves the values under the names of the collection's own fields out of a batch.
  virtual void takeFields(Value& batch);
  /// A collection of the same kind with the same records and nothing else.
  template <class Collection>
  static std::shared_ptr<Collection> copyOf(const Collection& from) {
    auto copy = std::make_shared<Collection>();
    static_cast<TernBaseCollection&>(*copy).shareItemsOf(from);
    return copy;
  }
  /// Stores a record under a key, in place of one that is there.
  void put(Value key, std::shared_ptr<TernBaseModel> record);

 private:
  void buildRecords(Value list);
  void shareItemsOf(const TernBaseCollection& other);

  const detail::RecordKind* kind_ = nullptr;
  RecordMap items_;
  Value plainItems_;
};

}  // namespace tern
