// The buildings of a venue.
//
// Ownership, threads and failures are those of every collection: see TernBaseCollection.hpp.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "TernCoreKit/model/collections/TernTypedCollection.hpp"
#include "TernCoreKit/model/records/TernBuilding.hpp"

namespace tern {

struct TernFloor;
struct TernMap;

class TERN_API TernBuildingCollection : public TernTypedCollection<TernBuilding> {
 public:
  // Filled by a batch that has keys of these names.
  Value loadedBuildingCount;
  Value defaultId;

  TernBuildingCollection();

  std::shared_ptr<TernBuildingCollection> copyWithZone() const;

  // Makes the building of that id the default one; nothing changes when there is none.
  void assignDefaultBuildingWithId(std::int64_t buildingId);
  // The building under `defaultId`; without one that whose key comes first as text, in any case (so
  // "10" comes before "9").
  std::shared_ptr<TernBuilding> getDefault() const;
  // The first of that name.
  std::shared_ptr<TernBuilding> getByName(const Value& name) const;
  // The first that holds a floor of the same id.
  std::shared_ptr<TernBuilding> getByFloor(const std::shared_ptr<TernFloor>& floor) const;
  // The first that shows the map on one of its floors, and that floor.
  std::shared_ptr<TernBuilding> getByMap(const std::shared_ptr<TernMap>& map) const;
  std::shared_ptr<TernFloor> getFloorByMap(const std::shared_ptr<TernMap>& map) const;
  std::vector<std::shared_ptr<TernFloor>> getAllFloors() const;

 private:
  void takeFields(Value& batch) override;
};

}  // namespace tern
