#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "TernCoreKit/model/collections/TernAmenityCollection.hpp"
#include "TernCoreKit/model/collections/TernDestinationCollection.hpp"
#include "TernCoreKit/model/records/TernWaypoint.hpp"
#include "tools/check/Checks.hpp"

namespace tern::check {

namespace {

// A person who asks for the name on that floor is asked back.
template <class Collection>
void checkPlaces(const Subject& subject, const Nested<Collection>& places, std::string_view record,
                 Findings& findings) {
  if (!places) return;
  std::map<std::pair<std::int64_t, std::string>, std::vector<std::int64_t>> named;
  for (const auto& place : places->each()) {
    if (place.name.text().empty()) continue;
    std::set<std::int64_t> maps;
    for (const auto& waypoint : place.waypoints) maps.insert(waypoint->mapId.integer());
    for (const std::int64_t map : maps) {
      named[{map, std::string(place.name.text())}].push_back(place.id.integer());
    }
  }
  for (const auto& [key, ids] : named) {
    if (ids.size() < 2) continue;
    findings.push_back(
        {Kind::repeatedName, ids, key.first,
         key.second + " is the name of " + listedIds(record, ids) + onFloor(subject, key.first)});
  }
}

}  // namespace

void checkNames(const Subject& subject, Findings& findings) {
  checkPlaces(subject, subject.venue.destinations, "destination", findings);
  checkPlaces(subject, subject.venue.amenities, "amenity", findings);
}

}  // namespace tern::check
