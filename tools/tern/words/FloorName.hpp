// What a floor is called, for a person to read: the one naming that all texts and pictures use.
//
// A floor has its name, else its short name, else it is "map 3" by what lies on it. Its building is
// named before it only where the venue has several, since a venue of one building has one ground
// floor.
//
// Ownership: borrows the records of the venue. Threads: as readers of the venue. Fails: never.
#pragma once

#include <cstdint>
#include <string>

#include "TernCoreKit/model/collections/TernVenueData.hpp"
#include "TernCoreKit/model/records/TernBuilding.hpp"
#include "TernCoreKit/model/records/TernFloor.hpp"

namespace tern::words {

struct FloorName {
  std::string floor;
  // Empty when all of the venue is one building, or the building has no name.
  std::string building;

  // "Harbour Hall, Ground Floor"
  std::string text() const { return building.empty() ? floor : building + ", " + floor; }
};

// The first floor that shows the map, with its building; null without one.
struct ShownFloor {
  const TernFloor* floor = nullptr;
  const TernBuilding* building = nullptr;
};

ShownFloor floorOf(const TernVenueData& venue, std::int64_t mapId);

FloorName floorName(const TernVenueData& venue, std::int64_t mapId);

}  // namespace tern::words
