// What searches for the nearest element share: for each kind of element and each map of a venue a
// k-d tree of the kind's waypoints there, and which maps and floors the venue had when they were
// built. A building that the venue is given later is not in it.
//
// Ownership: shares records, not the venue.
// Threads: any number at a time; nothing changes once it is built. While it is built it takes the
//   venue's `recordsMutex` for as long as it collects the waypoints.
// Fails: never; null, or no tree, for what it does not know.
#pragma once

#include <cstddef>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "TernCoreKit/spatial/TernElement.hpp"
#include "TernCoreKit/spatial/TernNearestPoint.hpp"
#include "TernCoreKit/spatial/tree/KDTree.hpp"

namespace tern::inline v5 {

class TernMapCollection;
struct TernFloor;
struct TernMap;
struct TernVenueData;

namespace detail {

// None for an id that is absent or null.
std::optional<std::int64_t> idOf(const Value& id);

// Where the waypoint lies: its first coordinate and its last.
TernNearestPoint pointOf(const std::shared_ptr<TernWaypoint>& waypoint,
                         std::shared_ptr<TernBaseModel> element = nullptr);

class NearestIndex {
 public:
  using Tree = KDTree<TernNearestPoint>;
  // By the decimal text of the map's id.
  using Trees = std::map<std::string, Tree>;

  NearestIndex() = default;
  explicit NearestIndex(const TernVenueData& venue);

  // Those of destinations, of amenities, or else of path types.
  const Trees& treesOf(TernElement::Kind kind) const;
  std::optional<Tree> treeOn(TernElement::Kind kind, std::optional<std::int64_t> mapId) const;

  std::shared_ptr<TernMap> mapById(std::int64_t id) const;
  std::shared_ptr<TernFloor> floorByMap(const TernMap& map) const;
  // Those of that level: first those of the building that shows the map, then the others, in their
  // order. A floor without a level lies at 0.
  std::vector<std::shared_ptr<TernFloor>> floorsAt(std::int64_t level, const TernMap& beside) const;

 private:
  struct PlacedFloor {
    std::shared_ptr<TernFloor> floor;
    std::size_t building;
  };

  // REQUIRES: the venue's `recordsMutex` is held.
  void listFloors(const TernVenueData& venue);
  // Null where no floor shows it.
  const PlacedFloor* placeOf(const TernMap& map) const;

  Trees destinations_;
  Trees amenities_;
  Trees pathTypes_;
  std::shared_ptr<const TernMapCollection> maps_;
  // One building's behind the other's.
  std::vector<PlacedFloor> floors_;
};

}  // namespace detail
}  // namespace tern
