#include "tools/tern/words/FloorName.hpp"

#include "TernCoreKit/model/collections/TernBuildingCollection.hpp"
#include "TernCoreKit/model/collections/TernFloorCollection.hpp"
#include "TernCoreKit/model/records/TernMap.hpp"

namespace tern::words {

ShownFloor floorOf(const TernVenueData& venue, std::int64_t mapId) {
  if (!venue.buildings) return {};
  for (const TernBuilding& building : venue.buildings->each()) {
    if (!building.floors) continue;
    for (const TernFloor& floor : building.floors->each()) {
      if (floor.map && floor.map->id.integer() == mapId) return {&floor, &building};
    }
  }
  return {};
}

FloorName floorName(const TernVenueData& venue, std::int64_t mapId) {
  const auto [floor, building] = floorOf(venue, mapId);
  FloorName name;
  if (floor != nullptr) {
    name.floor = floor->name.text().empty() ? floor->shortName.text() : floor->name.text();
    if (venue.buildings->getCount() > 1) name.building = building->name.text();
  }
  if (name.floor.empty()) name.floor = "map " + std::to_string(mapId);
  return name;
}

}  // namespace tern::words
