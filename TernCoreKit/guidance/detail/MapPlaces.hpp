// Where maps are: their venue, building and floor.
//
// Ownership: the records are shared, the list of venues is borrowed. Threads: one. Fails: never; a
// map that no venue has is nowhere.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <span>

#include "TernCoreKit/model/collections/TernVenueData.hpp"
#include "TernCoreKit/model/records/TernBuilding.hpp"
#include "TernCoreKit/model/records/TernFloor.hpp"
#include "TernCoreKit/model/records/TernMap.hpp"

namespace tern::inline v5::detail {

using Venues = std::span<const std::shared_ptr<const TernVenueData>>;

// Where a map is: null where there is none.
struct MapPlace {
  std::shared_ptr<const TernVenueData> venue;
  std::shared_ptr<const TernBuilding> building;
  std::shared_ptr<const TernFloor> floor;
  std::shared_ptr<const TernMap> map;
};

// Each map is looked up once.
class MapPlaces {
 public:
  explicit MapPlaces(Venues venues) : venues_(venues) {}

  bool areOfJoinedVenues() const { return venues_.size() > 1; }
  // Stays where it is.
  const MapPlace& of(std::int64_t mapId);

 private:
  Venues venues_;
  std::map<std::int64_t, MapPlace> known_;
};

// The scale of a map in metres; where none is known one for which an ordinary building fits the
// map.
double metresPerUnit(const TernMap* map);

}  // namespace tern::detail
