// The rooms and corridors of one floor of a building.
//
// Rooms never overlap and fill the footprint except for its corridors. Every room that can be
// entered has at least one door; a door names the corridor line that it opens to. Threads: a free
// function and plain values. Lengths are in pixels.
#pragma once

#include <vector>

#include "tools/generate/Random.hpp"
#include "tools/generate/Shapes.hpp"
#include "tools/generate/SitePlan.hpp"

namespace tern::generate {

enum class RoomKind {
  shop,
  anchor,
  // A room that nobody rents, and one of the building's own: neither has a door.
  vacant,
  service,
  lift,
  stairs,
  toilets,
  information,
  cashMachine,
  babyCare,
};

struct Door {
  // Where one stands when one has come in.
  Point inside;
  // The middle of the opening; it lies on the room's edge.
  Point wall;
  // The corridor line the door opens to, and the point of it opposite the door.
  int line = 0;
  Point corridor;
};

struct Room {
  Box box;
  RoomKind kind = RoomKind::vacant;
  // The venue's number of the shop, set by whoever names the shops.
  int shop = -1;
  std::vector<Door> doors;
};

enum class CorridorKind { concourse, passage, court };

// A straight stretch that people walk along.
struct Line {
  Point from;
  Point to;
  CorridorKind kind = CorridorKind::concourse;
};

enum class Side { north, south, west, east };

// Where a corridor meets the façade.
struct Gate {
  Point at;
  Side side = Side::north;
  // Whether it is the one of its side that another building is joined to.
  bool main = false;
};

struct FloorPlan {
  std::vector<Room> rooms;
  std::vector<Line> lines;
  // The middles of the courts, west to east.
  std::vector<Point> courts;
  std::vector<Gate> gates;
};

// The void in the middle of a court, and the way round it.
inline constexpr int courtHalfWidthPx = 190;
inline constexpr int voidHalfWidthPx = 130;
inline constexpr int voidHalfHeightPx = 56;

// Makes the given number of the floor's rooms shops (fewer when it has fewer rooms); the large ones
// at the ends of the concourses come first.
FloorPlan planFloor(const BuildingPlan& building, int level, int shops, Random random);

}  // namespace tern::generate
