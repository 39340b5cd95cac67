#include "tools/tern/Whereabouts.hpp"

#include <algorithm>
#include <cmath>
#include <set>
#include <span>

#include "TernCoreKit/guidance/Landmark.hpp"
#include "TernCoreKit/model/collections/TernAmenityCollection.hpp"
#include "TernCoreKit/model/collections/TernDestinationCollection.hpp"
#include "TernCoreKit/model/collections/TernMapCollection.hpp"
#include "TernCoreKit/model/collections/TernWaypointCollection.hpp"
#include "TernCoreKit/model/records/TernWaypoint.hpp"
#include "TernCoreKit/wayfinding/TernASGrid.hpp"
#include "tools/tern/words/FloorName.hpp"
#include "tools/tern/words/WalkLength.hpp"

namespace tern::command {

namespace {

// The names of the records that are reached at the waypoint, "" without any.
template <class Collection>
std::string namesIn(const Nested<Collection>& collection, std::int64_t waypointId) {
  std::string names;
  if (!collection) return names;
  for (const auto& record : collection->each()) {
    const auto isHere = [&](const auto& waypoint) { return waypoint->id.integer() == waypointId; };
    if (record.name.text().empty() || std::ranges::none_of(record.waypoints, isHere)) continue;
    names.append(names.empty() ? "" : ", ").append(record.name.text());
  }
  return names;
}

std::string namesAt(const TernVenueData& venue, std::int64_t waypointId) {
  std::string names = namesIn(venue.destinations, waypointId);
  return names.empty() ? namesIn(venue.amenities, waypointId) : names;
}

std::string waypointText(std::int64_t id) { return "waypoint " + std::to_string(id); }

// Null when no map has it.
const TernWaypoint* waypointOf(const TernVenueData& venue, std::int64_t id) {
  if (!venue.maps) return nullptr;
  for (const TernMap& map : venue.maps->each()) {
    if (!map.waypoints) continue;
    if (const TernWaypoint* waypoint = map.waypoints->findById(id)) return waypoint;
  }
  return nullptr;
}

std::string onFloorText(const TernVenueData& venue, const TernWaypoint& waypoint) {
  return " on " + words::floorName(venue, waypoint.mapId.integer()).text();
}

// "near Coral Books"; empty when nothing with a name is near.
std::string nearText(const TernVenueData& venue, const TernWaypoint& waypoint) {
  const auto landmark = landmarkNear(venue, waypoint);
  return landmark != nullptr ? "near " + std::string(landmark->name.text()) : "";
}

}  // namespace

std::string venueTitle(const TernActiveVenue& venue) {
  return "venue " + std::to_string(venue.id.integer());
}

std::string placeName(const TernVenueData& venue, std::int64_t waypointId) {
  const std::string names = namesAt(venue, waypointId);
  const TernWaypoint* waypoint = waypointOf(venue, waypointId);
  if (!names.empty() || waypoint == nullptr) {
    return names.empty() ? waypointText(waypointId) : names;
  }
  const std::string near = nearText(venue, *waypoint);
  return near.empty() ? waypointText(waypointId) + onFloorText(venue, *waypoint) : near;
}

std::string placeNameWithId(const TernVenueData& venue, std::int64_t waypointId) {
  const std::string names = namesAt(venue, waypointId);
  if (!names.empty()) return names + " (" + waypointText(waypointId) + ")";
  const TernWaypoint* waypoint = waypointOf(venue, waypointId);
  return waypoint != nullptr ? placeOnFloor(venue, *waypoint) : waypointText(waypointId);
}

std::string placeOnFloor(const TernVenueData& venue, const TernWaypoint& waypoint) {
  const std::int64_t id = waypoint.id.integer();
  std::string names = namesAt(venue, id);
  if (names.empty()) names = nearText(venue, waypoint);
  const std::string place =
      names.empty() ? waypointText(id) : names + " (" + waypointText(id) + ")";
  return place + onFloorText(venue, waypoint);
}

std::string awayText(const TernVenueData& venue, const TernWaypoint& waypoint, const Value& point) {
  const Value& x = waypoint.coordinate(0);
  const Value& y = waypoint.coordinate(1);
  const auto from = point.items();
  const double mapUnits =
      y.isAbsent() ? 0 : std::hypot(x.number() - from[0].number(), y.number() - from[1].number());
  const TernMap* map = venue.maps->findById(waypoint.mapId.integer());
  const std::string length = words::lengthOn(map, mapUnits).text();
  return length.empty() ? ", right there" : ", " + length + " away";
}

std::string unknownWaypoints(const Value& request, const TernASGrid& grid,
                             const std::string& place) {
  std::string names;
  std::set<std::string> named;
  for (const char* field : {"from", "to"}) {
    const Value* ids = request.find(field);
    if (ids == nullptr) continue;
    for (const Value& id : ids->isList() ? ids->items() : std::span(ids, 1)) {
      const std::string name = "waypoint " + id.printed();
      if (grid.getWPById(id.integer()) != nullptr || !named.insert(name).second) continue;
      names += names.empty() ? name : " and no " + name;
    }
  }
  return names.empty() ? names : "there is no " + names + " in " + place;
}

}  // namespace tern::command
