#include "TernCoreKit/guidance/detail/MapPlaces.hpp"

#include <algorithm>
#include <cmath>

#include "TernCoreKit/model/collections/TernBuildingCollection.hpp"
#include "TernCoreKit/model/collections/TernFloorCollection.hpp"
#include "TernCoreKit/model/collections/TernMapCollection.hpp"

namespace tern::inline v5::detail {

namespace {

// What a map without a scale is taken to be across, in metres.
constexpr double ordinaryBuilding = 150;

MapPlace placeOf(Venues venues, std::int64_t mapId) {
  for (const auto& venue : venues) {
    auto map = venue->maps != nullptr ? venue->maps->getById(mapId) : nullptr;
    if (map == nullptr) continue;
    if (venue->buildings) {
      for (const auto& building : venue->buildings->getAll()) {
        if (!building->floors) continue;
        for (const auto& floor : building->floors->getAll()) {
          if (floor->map && floor->map->id.integer() == mapId) return {venue, building, floor, map};
        }
      }
    }
    return {venue, nullptr, nullptr, map};
  }
  return {};
}

}  // namespace

const MapPlace& MapPlaces::of(std::int64_t mapId) {
  const auto known = known_.find(mapId);
  return known != known_.end() ? known->second
                               : known_.emplace(mapId, placeOf(venues_, mapId)).first->second;
}

double metresPerUnit(const TernMap* map) {
  if (map == nullptr) return 1;
  const double mmPerPixel = map->mmPerPixel.number();
  if (mmPerPixel > 0 && std::isfinite(mmPerPixel)) return mmPerPixel / 1000;
  const double across = std::max(map->width.number(), map->height.number());
  return across > 0 ? ordinaryBuilding / across : 1;
}

}  // namespace tern::detail
