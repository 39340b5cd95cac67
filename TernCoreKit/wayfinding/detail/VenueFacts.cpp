#include "TernCoreKit/wayfinding/detail/VenueFacts.hpp"

#include "TernCoreKit/service/coordinates/TernUtils.hpp"

namespace tern::inline v5::detail {

PathEnd VenueFacts::endOf(std::int64_t id) const {
  const auto waypoint = waypoints.byId.first<PathEnd>(id);
  if (waypoint != none<PathEnd>) return waypoint;
  const std::uint32_t stranger = paths.strangerById.find(id);
  if (stranger == IdIndex::none) return none<PathEnd>;
  return PathEnd{static_cast<std::uint32_t>(waypoints.count()) + stranger};
}

std::int64_t VenueFacts::idOf(PathEnd end) const {
  if (isWaypoint(end)) return idOf(WaypointIndex{numberOf(end)});
  return paths.strangers[numberOf(end) - waypoints.count()];
}

KnownIndex VenueFacts::knownAt(PathEnd end) const {
  if (mapWaypoints != nullptr) return knownById(idOf(end));
  return isWaypoint(end) ? KnownIndex{numberOf(end)} : none<KnownIndex>;
}

FloorPoint VenueFacts::pointOf(KnownIndex waypoint) const {
  const bool isKnown = waypoint != none<KnownIndex>;
  const std::uint32_t at = numberOf(waypoint);
  // What nobody knows lies where an empty record does, which is not quite (0, 0) in metres.
  double x = isKnown ? known().xs.number(at) : 0;
  double y = isKnown ? known().ys.number(at) : 0;
  if (isForMultiVenue) {
    x = TernUtils::convertLongitudeEPSG4326ToEPSG3857(x);
    y = TernUtils::convertLatitudeEPSG4326ToEPSG3857(y);
  }
  FloorPoint point{static_cast<float>(x), static_cast<float>(y)};
  const auto lieOn = [&point](const auto& floor) {
    point.z = floor.z;
    point.multiplier = floor.multiplier;
  };
  if (isKnown) {
    lieOn(maps[known().mapOf(at)]);
  } else {
    lieOn(floors.find(0));
  }
  return point;
}

PathTypeFacts VenueFacts::pathType(std::int64_t id) const {
  const std::uint32_t at = pathTypeById.find(id);
  return at != IdIndex::none ? pathTypes[at] : PathTypeFacts();
}

}  // namespace tern::detail
