#include "TernCoreKit/wayfinding/detail/FloorIndex.hpp"

#include "TernCoreKit/model/collections/TernFloorCollection.hpp"
#include "TernCoreKit/model/records/TernMap.hpp"

namespace tern::inline v5::detail {

namespace {

std::int32_t multiplierOf(const TernFloor& floor) {
  switch (floor.preference.integer()) {
    case 0:
      return 1;
    case -2:
      return -1;
    default:
      return 0;
  }
}

float heightOf(const TernFloor& floor, int verticalScale) {
  // Exact for any level that a building has, and never out of range.
  return static_cast<float>(static_cast<double>(floor.level.integer()) * verticalScale);
}

}  // namespace

FloorIndex::FloorIndex(const std::vector<std::shared_ptr<TernBuilding>>& buildings,
                       int verticalScale) {
  std::vector<std::int64_t> mapIds;
  for (const auto& building : buildings) {
    if (!building->floors) continue;
    for (const auto& floor : building->floors->getAll()) {
      mapIds.push_back(floor->map ? floor->map->id.integer() : 0);
      facts_.push_back({heightOf(*floor, verticalScale), multiplierOf(*floor), floor});
    }
  }
  indices_ = IdIndex(mapIds);
}

const FloorIndex::Facts& FloorIndex::find(std::int64_t mapId) const {
  static const Facts unknown;
  const std::uint32_t index = indices_.find(mapId);
  return index != IdIndex::none ? facts_[index] : unknown;
}

}  // namespace tern::detail
