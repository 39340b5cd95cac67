#include "tests/support/JoinedVenues.hpp"

#include "TernCoreKit/model/collections/TernMapCollection.hpp"
#include "TernCoreKit/model/collections/TernWaypointCollection.hpp"

namespace tern::test {

std::shared_ptr<TernActiveVenue> rowVenue(std::int64_t id, const ExternalIds& externalIds) {
  Value waypoints = Value::list();
  Value paths = Value::list();
  for (std::int64_t i = 1; i <= 3; ++i) {
    const std::int64_t waypoint = id * 100 + i;
    const auto externalId = externalIds.find(waypoint);
    const double longitude = static_cast<double>(id) * 0.01 + static_cast<double>(i) * 0.001;
    waypoints.append(
        Value::map({{"id", waypoint},
                    {"mapId", id * 10},
                    {"externalId", externalId != externalIds.end() ? externalId->second : ""},
                    {"coordinates", Value::list({longitude, 50.0})}}));
    if (i == 3) continue;
    paths.append(Value::map({{"id", waypoint},
                             {"pathTypeId", 1},
                             {"waypointIds", Value::list({waypoint, waypoint + 1})}}));
  }
  Value map = Value::map({{"id", id * 10}, {"mmPerPixel", 50}});
  map.set("waypoints", Value::map({{"items", std::move(waypoints)}}));
  map.set("paths", Value::map({{"items", std::move(paths)}}));
  Value walking = Value::map({{"id", 1}, {"weight", 1}});
  auto venue = TernActiveVenue::initWithDictionary(
      Value::map({{"id", id},
                  {"name", "Venue " + std::to_string(id)},
                  {"pathTypes", Value::map({{"items", Value::list({std::move(walking)})}})}}));
  venue->maps->create(std::move(map));
  return venue;
}

std::shared_ptr<TernWaypoint> waypointOf(const TernActiveVenue& venue, std::int64_t id) {
  for (const TernMap& map : venue.maps->each()) {
    if (auto waypoint = map.waypoints->getById(id)) return waypoint;
  }
  return nullptr;
}

}  // namespace tern::test
