#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "TernCoreKit/model/collections/TernTypedCollection.hpp"
#include "TernCoreKit/model/records/TernBuilding.hpp"

namespace tern::inline v5 {

struct TernFloor;
struct TernMap;

/// The buildings of a venue.
///
/// Ownership, threads and failures are those of every collection: see TernBaseCollection.
class TERN_API TernBuildingCollection : public TernTypedCollection<TernBuilding> {
 public:
  /// How many buildings count as loaded; filled by a batch that has the key.
  Value loadedBuildingCount;
  /// Id of the building that is shown first; filled by a batch that has the key.
  Value defaultId;

  /// Without records.
  TernBuildingCollection();

  /// A new collection of the same records, and nothing else of this one.
  std::shared_ptr<TernBuildingCollection> copyWithZone() const;

  /// Makes the building of that id the default one; nothing changes when there is none.
  void assignDefaultBuildingWithId(std::int64_t buildingId);
  /// The building under `defaultId`; without one that whose key comes first as text, in any case
  /// (so "10" comes before "9").
  std::shared_ptr<TernBuilding> getDefault() const;
  /// The first of that name.
  std::shared_ptr<TernBuilding> getByName(const Value& name) const;
  /// The first that holds a floor of the same id.
  std::shared_ptr<TernBuilding> getByFloor(const std::shared_ptr<TernFloor>& floor) const;
  /// The first that shows the map on one of its floors.
  std::shared_ptr<TernBuilding> getByMap(const std::shared_ptr<TernMap>& map) const;
  /// The floor on which the first such building shows the map.
  std::shared_ptr<TernFloor> getFloorByMap(const std::shared_ptr<TernMap>& map) const;
  /// The floors of all buildings, one building after another.
  std::vector<std::shared_ptr<TernFloor>> getAllFloors() const;

 private:
  void takeFields(Value& batch) override;
};

}  // namespace tern
