// A route as the line that is walked: its nodes on their maps, and how each is reached.
//
// Threads: as readers of the venues. Fails: never; a node of a map that no venue has lies at (0,
// 0).
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

#include "TernCoreKit/guidance/detail/MapPlaces.hpp"
#include "TernCoreKit/service/coordinates/TernUtils.hpp"
#include "TernCoreKit/wayfinding/TernPathPerFloor.hpp"

namespace tern::inline v5::detail {

// The path type that is simply walked: the only one whose links count by their length.
inline constexpr std::int64_t walkingPathType = 1;

// Where a node of a graph lies on its map, in metres, y down. Joined venues have their nodes on the
// globe.
TernCoordinate onMap(const TernASNode& node, const MapPlace& place, bool isJoined);

struct WalkedNode {
  std::int64_t id = 0;
  std::int64_t mapId = 0;
  TernCoordinate at;
  // From the node before it, as routes count.
  double mm = 0;
  // By which it is reached from the node before it.
  std::int64_t pathTypeId = 0;
};

// A lift, stairs, or whatever else is not simply walked, from the node where it is entered to the
// one where it is left; with stairs, the landings between two of its flights.
struct Ride {
  std::size_t entry = 0;
  std::size_t exit = 0;
  std::int64_t pathTypeId = 0;
};

struct WalkedRoute {
  std::vector<WalkedNode> nodes;
  std::vector<Ride> rides;
};

WalkedRoute walkedRoute(const TernRoute& route, MapPlaces& places);

}  // namespace tern::detail
