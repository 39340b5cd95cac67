// The floors of all buildings by the map that they show.
//
// Ownership: shares the floors.
#pragma once

#include <cstdint>
#include <memory>
#include <vector>

#include "TernCoreKit/model/records/TernBuilding.hpp"
#include "TernCoreKit/model/records/TernFloor.hpp"
#include "TernCoreKit/wayfinding/detail/IdIndex.hpp"

namespace tern::inline v5::detail {

class FloorIndex {
 public:
  // What the costs read of a floor. A map that no floor shows lies at height 0.
  struct Facts {
    float z = 0;  // map units
    std::int32_t multiplier = 1;
    std::shared_ptr<TernFloor> floor;
  };

  FloorIndex() = default;
  FloorIndex(const std::vector<std::shared_ptr<TernBuilding>>& buildings, int verticalScale);

  // Of the first floor that shows the map.
  const Facts& find(std::int64_t mapId) const;

 private:
  std::vector<Facts> facts_;  // of every floor
  IdIndex indices_;           // by the map's id: an index of `facts_`
};

}  // namespace tern::detail
