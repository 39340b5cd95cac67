#include "tools/generate/FloorPlan.hpp"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>

namespace tern::generate {
namespace {

bool isRented(const Room& room) {
  return room.kind == RoomKind::shop || room.kind == RoomKind::anchor;
}

auto rentedRooms(const FloorPlan& plan) {
  return std::count_if(plan.rooms.begin(), plan.rooms.end(), isRented);
}

struct AnyFloor {
  SitePlan site =
      planSite(*rc::gen::inRange(1, 4), *rc::gen::inRange(1, 5), *rc::gen::inRange(1, 800));
  const BuildingPlan& building =
      site.buildings[*rc::gen::inRange<std::size_t>(0, site.buildings.size())];
  int level = *rc::gen::inRange(building.lowestLevel, building.highestLevel() + 1);
  int shops = building.shops[static_cast<std::size_t>(level - building.lowestLevel)];
  FloorPlan plan = planFloor(building, level, shops, Random(*rc::gen::arbitrary<std::uint64_t>()));
};

RC_GTEST_PROP(FloorPlan, roomsDoNotOverlapAndStayInside, ()) {
  const AnyFloor floor;
  const std::vector<Room>& rooms = floor.plan.rooms;
  const Box& walls = floor.building.footprint;
  for (std::size_t i = 0; i < rooms.size(); ++i) {
    const Box& box = rooms[i].box;
    RC_ASSERT(box.width() > 0 && box.height() > 0);
    RC_ASSERT(box.left >= walls.left && box.right <= walls.right);
    RC_ASSERT(box.top >= walls.top && box.bottom <= walls.bottom);
    for (std::size_t j = 0; j < i; ++j) RC_ASSERT(!box.meets(rooms[j].box));
  }
}

RC_GTEST_PROP(FloorPlan, asManyShopsAsAskedFor, ()) {
  const AnyFloor floor;
  RC_ASSERT(rentedRooms(floor.plan) == floor.shops);
}

RC_GTEST_PROP(FloorPlan, noCorridorRunsThroughARoom, ()) {
  const AnyFloor floor;
  for (const Line& line : floor.plan.lines) {
    const Box way = Box{std::min(line.from.x, line.to.x), std::min(line.from.y, line.to.y),
                        std::max(line.from.x, line.to.x), std::max(line.from.y, line.to.y)}
                        .grownBy(1);
    for (const Room& room : floor.plan.rooms) RC_ASSERT(!way.meets(room.box));
  }
}

RC_GTEST_PROP(FloorPlan, doorsLieInTheWallBetweenRoomAndCorridor, ()) {
  const AnyFloor floor;
  for (const Room& room : floor.plan.rooms) {
    const Box& box = room.box;
    for (const Door& door : room.doors) {
      RC_ASSERT(door.inside.x > box.left && door.inside.x < box.right);
      RC_ASSERT(door.inside.y > box.top && door.inside.y < box.bottom);
      RC_ASSERT(door.wall.x == box.left || door.wall.x == box.right || door.wall.y == box.top ||
                door.wall.y == box.bottom);
      const Line& line = floor.plan.lines[static_cast<std::size_t>(door.line)];
      RC_ASSERT(door.corridor.x >= line.from.x && door.corridor.x <= line.to.x);
      RC_ASSERT(door.corridor.y >= line.from.y && door.corridor.y <= line.to.y);
    }
  }
}

RC_GTEST_PROP(FloorPlan, everyRoomButUnrentedAndServiceRoomsHasADoor, ()) {
  const AnyFloor floor;
  for (const Room& room : floor.plan.rooms) {
    const bool closed = room.kind == RoomKind::vacant || room.kind == RoomKind::service;
    RC_ASSERT(room.doors.empty() == closed);
  }
}

TEST(FloorPlan, aClosedEndIsALargeShopWithTwoDoors) {
  const SitePlan site = planSite(1, 4, 40);
  const FloorPlan plan = planFloor(site.buildings[0], 0, 10, Random(1));
  const auto anchor = std::find_if(plan.rooms.begin(), plan.rooms.end(),
                                   [](const Room& room) { return room.kind == RoomKind::anchor; });
  ASSERT_NE(anchor, plan.rooms.end());
  EXPECT_EQ(anchor->doors.size(), 2U);
}

TEST(FloorPlan, liftsAndStairsStandAtTheSamePlaceOnAllFloors) {
  const SitePlan site = planSite(1, 4, 60);
  const auto places = [&](int level, RoomKind kind) {
    std::vector<Point> found;
    for (const Room& room : planFloor(site.buildings[0], level, 15, Random(1, 2)).rooms) {
      if (room.kind == kind) found.push_back(room.box.centre());
    }
    return found;
  };
  for (RoomKind kind : {RoomKind::lift, RoomKind::stairs}) {
    EXPECT_FALSE(places(-1, kind).empty());
    EXPECT_EQ(places(-1, kind), places(2, kind));
  }
}

TEST(FloorPlan, aBuildingOfOneFloorHasNoLift) {
  const SitePlan site = planSite(1, 1, 20);
  for (const Room& room : planFloor(site.buildings[0], 0, 20, Random(1)).rooms) {
    EXPECT_NE(room.kind, RoomKind::lift);
    EXPECT_NE(room.kind, RoomKind::stairs);
  }
}

}  // namespace
}  // namespace tern::generate
