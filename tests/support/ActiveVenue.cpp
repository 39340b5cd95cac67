#include "tests/support/ActiveVenue.hpp"

#include <utility>

#include "TernCoreKit/model/collections/TernMapCollection.hpp"
#include "TernCoreKit/model/collections/TernWaypointCollection.hpp"
#include "TernCoreKit/model/venue/VenueAssembly.hpp"

namespace tern::test {

std::shared_ptr<TernActiveVenue> assembleVenue(Value document, Value building) {
  auto venue = TernActiveVenue::initWithDictionary(std::move(document));
  addBuilding(*venue, 1, std::move(building));
  attachWaypoints(*venue);
  return venue;
}

std::shared_ptr<TernActiveVenue> assembleVenue(const Drawing& drawing) {
  return assembleVenue(drawVenueDocument(drawing), drawBuildingDocument(drawing));
}

std::shared_ptr<TernActiveVenue> assembleVenue(
    const Drawing& drawing, const std::vector<std::vector<std::size_t>>& floorsOfBuildings) {
  auto venue = TernActiveVenue::initWithDictionary(drawVenueDocument(drawing));
  const Value whole = drawBuildingDocument(drawing);
  for (std::size_t i = 0; i < floorsOfBuildings.size(); ++i) {
    Value floors = Value::list();
    for (const std::size_t floor : floorsOfBuildings[i]) {
      floors.append(whole["floors"]["items"].items()[floor]);
    }
    const auto id = static_cast<std::int64_t>(i + 1);
    Value batch = Value::map();
    batch.set("items", std::move(floors));
    addBuilding(*venue, id, Value::map({{"id", id}, {"floors", std::move(batch)}}));
  }
  attachWaypoints(*venue);
  return venue;
}

std::shared_ptr<TernActiveVenue> loadVenue(Value document, Value building) {
  auto venue = assembleVenue(std::move(document), std::move(building));
  venue->loadGridData();
  venue->loadKDTree();
  return venue;
}

std::shared_ptr<TernActiveVenue> loadDrawnVenue(const Drawing& drawing) {
  return loadVenue(drawVenueDocument(drawing), drawBuildingDocument(drawing));
}

std::shared_ptr<TernWaypoint> waypointAt(const TernActiveVenue& venue, char letter) {
  for (const TernMap& map : venue.maps->each()) {
    if (auto waypoint = map.waypoints->getById(idOf(letter))) return waypoint;
  }
  return nullptr;
}

}  // namespace tern::test
