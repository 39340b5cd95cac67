// Draws a venue: floors as text, a line for each path, letters for what stands at waypoints.
//
//   const DrawnVenue venue = drawVenue({.floors = {{.lines = {"A  B",
//                                                             "   |",
//                                                             "   C"}},
//                                                  {.lines = {"   D"}}},
//                                       .paths = {"A-B", "B-C", "B-D lift", "C>D stairs up"},
//                                       .pathTypes = {{.name = "lift", .weight = 5},
//                                                     {.name = "stairs", .accessibility = 2}},
//                                       .destinations = {{.id = 7, .at = "AB D", .name = "Shop"}},
//                                       .connectors = {{.id = 2, .at = "B D"}}});
//   auto grid = TernASGrid::initASGrid(venue.waypoints, venue.paths, venue.pathTypes,
//                                      venue.maps->getAll(), venue.buildings, false);
//
// A letter is a waypoint; every other character only helps the eye. A's id is 1, B's 2, ...,
// a's 27. One character is `unitsPerCharacter` map units to the right, one line as many downward.
// Maps and floors have the ids 1, 2, ... in the order of the drawing; waypoints lie in reading
// order. Paths have the ids 1, 2, ... in their order and lie on the map of their first waypoint.
//
// A path's first word names its waypoints, two or more; the others its type (without one it is the
// walkway, type 1) and "up" or "down" when it is one-way, which is also what ">" for "-" demands.
// Path types have the ids 2, 3, ... in their order; one without a name redefines the walkway.
//
// A place has one location for each word of letters, on the map of the word's first letter.
//
// To load a drawing as a hub does, see ActiveVenue.hpp.
//
// Ownership: records are shared. Threads: any. Fails: a drawing that makes no sense throws
// std::invalid_argument.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "TernCoreKit/model/collections/TernMapCollection.hpp"
#include "TernCoreKit/model/records/TernBuilding.hpp"
#include "TernCoreKit/model/records/TernPath.hpp"
#include "TernCoreKit/model/records/TernPathType.hpp"
#include "TernCoreKit/model/records/TernWaypoint.hpp"
#include "TernCoreKit/platform/Value.hpp"
#include "TernCoreKit/wayfinding/TernPathPerFloor.hpp"

namespace tern::test {

inline constexpr int unitsPerCharacter = 10;

struct Drawing {
  struct Floor {
    std::vector<std::string_view> lines = {};
    // DEFAULT: 0 for the first floor, 1 for the next one, and so on.
    std::optional<int> level = std::nullopt;
    Value preference = {};
    double mmPerPixel = 100;
    std::string_view name = {};
  };
  struct PathType {
    std::string_view name = {};
    double weight = 1;
    std::int64_t accessibility = 0;
    double verticalWeight = 0;
  };
  struct Place {
    std::int64_t id;
    std::string at = {};
    std::string_view name = {};
  };

  std::vector<Floor> floors = {};
  std::vector<std::string_view> paths = {};
  std::vector<PathType> pathTypes = {};
  std::vector<Place> destinations = {};
  std::vector<Place> amenities = {};
  // Where path types of these ids are entered and left.
  std::vector<Place> connectors = {};
};

struct DrawnVenue {
  std::vector<std::shared_ptr<TernWaypoint>> waypoints;
  // In the order of their maps.
  std::vector<std::shared_ptr<TernPath>> paths;
  std::vector<std::shared_ptr<TernPathType>> pathTypes;
  std::shared_ptr<TernMapCollection> maps;
  // One, with id 1.
  std::vector<std::shared_ptr<TernBuilding>> buildings;

  // Null when nothing is drawn there.
  std::shared_ptr<TernWaypoint> waypoint(char letter) const;
};

DrawnVenue drawVenue(const Drawing& drawing);

// The same as a service gives it: the venue, with its path types and places and a building without
// floors, and the building's own document.
Value drawVenueDocument(const Drawing& drawing);
Value drawBuildingDocument(const Drawing& drawing);

constexpr std::int64_t idOf(char letter) {
  return letter >= 'a' ? letter - 'a' + 27 : letter - 'A' + 1;
}

// The letters of a route's waypoints, its segments apart: "AB DE".
std::string lettersOf(const TernRoute& route);
std::string lettersOf(const std::vector<std::shared_ptr<TernWaypoint>>& waypoints);

}  // namespace tern::test
