#include "tools/tern/Whereabouts.hpp"

#include <algorithm>
#include <cmath>

#include "TernCoreKit/model/collections/TernAmenityCollection.hpp"
#include "TernCoreKit/model/collections/TernDestinationCollection.hpp"
#include "TernCoreKit/model/collections/TernMapCollection.hpp"
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

}  // namespace

std::string venueTitle(const TernActiveVenue& venue) {
  return "venue " + std::to_string(venue.id.integer());
}

std::string placeName(const TernVenueData& venue, std::int64_t waypointId) {
  const std::string names = namesAt(venue, waypointId);
  return names.empty() ? "waypoint " + std::to_string(waypointId) : names;
}

std::string placeNameWithId(const TernVenueData& venue, std::int64_t waypointId) {
  const std::string names = namesAt(venue, waypointId);
  const std::string waypoint = "waypoint " + std::to_string(waypointId);
  return names.empty() ? waypoint : names + " (" + waypoint + ")";
}

std::string placeOnFloor(const TernVenueData& venue, const TernWaypoint& waypoint) {
  return placeNameWithId(venue, waypoint.id.integer()) + " on " +
         words::floorName(venue, waypoint.mapId.integer()).text();
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
  for (const char* field : {"from", "to"}) {
    const Value* id = request.find(field);
    if (id == nullptr || grid.getWPById(id->integer()) != nullptr) continue;
    const std::string name = "waypoint " + id->printed();
    if (name != names) names += names.empty() ? name : " and no " + name;
  }
  return names.empty() ? names : "there is no " + names + " in " + place;
}

}  // namespace tern::command
