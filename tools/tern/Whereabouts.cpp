#include "tools/tern/Whereabouts.hpp"

#include <cmath>

#include "TernCoreKit/model/collections/TernBuildingCollection.hpp"
#include "TernCoreKit/model/records/TernFloor.hpp"
#include "TernCoreKit/model/records/TernMap.hpp"
#include "TernCoreKit/model/records/TernWaypoint.hpp"
#include "tools/tern/Wording.hpp"

namespace tern::command {

std::string venueTitle(const TernActiveVenue& venue) {
  return "venue " + std::to_string(venue.id.integer());
}

std::string floorName(const TernActiveVenue& venue, const std::shared_ptr<TernMap>& map) {
  const auto floor = venue.buildings ? venue.buildings->getFloorByMap(map) : nullptr;
  if (floor != nullptr && !floor->name.text().empty()) return std::string(floor->name.text());
  return "map " + std::to_string(map->id.integer());
}

double straightDistance(const TernWaypoint& waypoint, TernCoordinate point) {
  const Value& x = waypoint.coordinate(0);
  const Value& y = waypoint.coordinate(1);
  return y.isAbsent() ? 0 : std::hypot(x.number() - point.x, y.number() - point.y);
}

std::string lengthText(const TernMap& map, double mapUnits) {
  const double mmPerPixel = map.mmPerPixel.number();
  if (!std::isfinite(mmPerPixel) || mmPerPixel <= 0) return roundedText(mapUnits) + " map units";
  return roundedText(mapUnits * mmPerPixel / 1000) + " m";
}

}  // namespace tern::command
