// A drawn venue with destinations to visit and connectors to take, loaded and ready to be searched.
//
//   const auto venue = tourVenue({.drawing = {.floors = {{.lines = {"A  B"}}, {.lines = {"C  D"}}},
//                                             .paths = {"A-B", "B-C lift", "C-B lift", "C-D"},
//                                             .pathTypes = {{.name = "lift"}}},
//                                 .destinations = {{7, {{2, "D"}}}},
//                                 .connectors = {{2, {{1, "B"}, {2, "C"}}}}});
//
// Ownership: shared. Threads: any. Fails: as `drawVenue`.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "TernCoreKit/model/collections/TernDestinationCollection.hpp"
#include "TernCoreKit/model/collections/TernMapCollection.hpp"
#include "TernCoreKit/model/venue/TernActiveVenue.hpp"
#include "TernCoreKit/model/venue/VenueAssembly.hpp"
#include "TernCoreKit/optimisation/TernPOIOptimization.hpp"
#include "tests/support/DrawnVenue.hpp"

namespace tern::test {

// A record of that id, placed on maps at the waypoints of those letters.
struct Placed {
  std::int64_t id;
  std::vector<std::pair<std::int64_t, std::string>> at;
};

struct TourScene {
  Drawing drawing;
  std::vector<Placed> destinations = {};
  // Path types of the drawing.
  std::vector<Placed> connectors = {};
};

inline Value locationsOf(const Placed& placed) {
  Value locations = Value::list();
  for (const auto& [map, letters] : placed.at) {
    Value ids = Value::list();
    for (const char letter : letters) ids.append(idOf(letter));
    locations.append(Value::map({{"mapId", map}, {"waypointIds", std::move(ids)}}));
  }
  return locations;
}

inline Value tourVenueDocument(const TourScene& scene) {
  Value destinations = Value::list();
  for (const Placed& placed : scene.destinations) {
    destinations.append(Value::map({{"id", placed.id}, {"locations", locationsOf(placed)}}));
  }
  Value document = drawVenueDocument(scene.drawing);
  document.set("destinations", Value::map({{"items", std::move(destinations)}}));
  for (const Placed& connector : scene.connectors) {
    for (Value& type : document.find("pathTypes")->find("items")->items()) {
      if (type["id"].integer() == connector.id) type.set("locations", locationsOf(connector));
    }
  }
  return document;
}

inline std::shared_ptr<TernActiveVenue> loadTourVenue(Value document, Value building) {
  auto venue = TernActiveVenue::initWithDictionary(std::move(document));
  addBuilding(*venue, 1, std::move(building));
  attachWaypoints(*venue);
  venue->loadGridData();
  venue->loadKDTree();
  return venue;
}

inline std::shared_ptr<TernActiveVenue> tourVenue(const TourScene& scene) {
  return loadTourVenue(tourVenueDocument(scene), drawBuildingDocument(scene.drawing));
}

inline std::shared_ptr<TernWaypoint> waypointAt(const TernActiveVenue& venue, char letter) {
  for (const auto& waypoint : venue.maps->getAllWaypoints()) {
    if (waypoint->id.integer() == idOf(letter)) return waypoint;
  }
  return nullptr;
}

inline std::string lettersOf(const TernPOIOptimization::Waypoints& waypoints) {
  std::string letters;
  for (const auto& waypoint : waypoints) {
    const std::int64_t id = waypoint->id.integer();
    letters += static_cast<char>(id > 26 ? 'a' + id - 27 : 'A' + id - 1);
  }
  return letters;
}

}  // namespace tern::test
