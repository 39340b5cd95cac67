#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include "TernCoreKit/model/collections/TernTypedCollection.hpp"
#include "TernCoreKit/model/records/TernFloor.hpp"

namespace tern::inline v5 {

struct TernDestination;
struct TernMap;

/// The floors of a building. A sorted list is made on the first call that asks for it and kept: a
/// floor added later is not in it. Those three operations therefore write.
///
/// Ownership, threads and failures are those of every collection: see TernBaseCollection.
class TERN_API TernFloorCollection : public TernTypedCollection<TernFloor> {
 public:
  /// Id of the floor that is shown first.
  Value defaultFloorId = nullptr;

  /// Without records.
  TernFloorCollection();

  /// A new collection of the same records, and nothing else of this one.
  std::shared_ptr<TernFloorCollection> copyWithZone() const;

  /// The floor under `defaultFloorId`; without one that whose key comes first as text, in any case.
  std::shared_ptr<TernFloor> getDefault() const;
  /// The first on that level, compared in 32 bits.
  std::shared_ptr<TernFloor> getByLevel(std::int64_t level) const;
  /// The first that shows a map of the same id; null for a map without an id.
  std::shared_ptr<TernFloor> getByMap(const std::shared_ptr<TernMap>& map) const;
  /// The floors that show a map on which the destination is placed, once for each such location.
  std::vector<std::shared_ptr<TernFloor>> getByDestination(
      const std::shared_ptr<TernDestination>& destination) const;
  /// All floors by ascending preference, equal ones in the order of the collection; frozen by the
  /// first call.
  std::vector<std::shared_ptr<TernFloor>> getAllSortedByPreference();
  /// The same by level.
  std::vector<std::shared_ptr<TernFloor>> getAllSortedByLevel();
  /// The same by elevation.
  std::vector<std::shared_ptr<TernFloor>> getAllSortedByElevation();
  /// What the first call for the floors by preference made; absent before it.
  const std::optional<std::vector<std::shared_ptr<TernFloor>>>& preferencesArray() const {
    return preferencesArray_;
  }
  /// The same by level.
  const std::optional<std::vector<std::shared_ptr<TernFloor>>>& levelsArray() const {
    return levelsArray_;
  }
  /// The same by elevation.
  const std::optional<std::vector<std::shared_ptr<TernFloor>>>& elevationsArray() const {
    return elevationsArray_;
  }
  /// The same as `getAll`.
  std::vector<std::shared_ptr<TernFloor>> allFloors() const;

 private:
  using Floors = std::vector<std::shared_ptr<TernFloor>>;

  void takeFields(Value& batch) override;
  const Floors& sortedOnce(std::optional<Floors>& cache, Value TernFloor::*order) const;

  std::optional<Floors> preferencesArray_;
  std::optional<Floors> levelsArray_;
  std::optional<Floors> elevationsArray_;
};

}  // namespace tern
