#include "tools/generate/VenueModel.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <map>
#include <set>
#include <string>
#include <utility>

namespace tern::generate {
namespace {

VenueModel venueOf(std::int64_t buildings, std::int64_t floors, std::int64_t shops) {
  GenerateOptions options;
  options.buildings = buildings;
  options.floors = floors;
  options.shops = shops;
  PlannedVenue planned = planVenue(options);
  EXPECT_EQ(planned.error, std::nullopt);
  return std::move(planned.venue);
}

TEST(VenueModel, hasAsManyShopsAsAskedFor) {
  for (std::int64_t shops : {1, 2, 7, 80, 500}) {
    EXPECT_EQ(venueOf(2, 4, shops).shops.size(), static_cast<std::size_t>(shops));
  }
}

TEST(VenueModel, everyShopHasADoor) {
  for (const Shop& shop : venueOf(3, 5, 300).shops) EXPECT_FALSE(shop.doors.empty()) << shop.unit;
}

TEST(VenueModel, departmentStoreSpansTwoFloors) {
  const VenueModel venue = venueOf(2, 4, 80);
  const auto store = std::find_if(venue.shops.begin(), venue.shops.end(), [](const Shop& shop) {
    return shop.name.category == Category::department;
  });
  ASSERT_NE(store, venue.shops.end());
  std::set<int> floors;
  for (const NodeRef& door : store->doors) floors.insert(door.floor);
  EXPECT_EQ(floors, (std::set<int>{1, 2}));
  EXPECT_EQ(store->doors.size(), 4U);
}

TEST(VenueModel, waypointIdsBeginWithTheirMapId) {
  const VenueModel venue = venueOf(2, 4, 80);
  EXPECT_EQ(venue.idsPerMap, 1000);
  EXPECT_EQ(venue.floors.front().mapId, 11);
  EXPECT_EQ(venue.waypointId({0, 0}), 11001);
  EXPECT_EQ(venue.floors.back().mapId, 23);
}

TEST(VenueModel, idsOfLargeFloorsDoNotMeet) {
  const VenueModel venue = venueOf(2, 2, 3000);
  for (const FloorModel& floor : venue.floors) {
    EXPECT_LT(static_cast<std::int64_t>(floor.graph.nodes.size()), venue.idsPerMap);
    EXPECT_LT(static_cast<std::int64_t>(floor.graph.links.size() + floor.paths.size()),
              venue.idsPerMap);
  }
}

TEST(VenueModel, everyHalfOfAConnectorIsListedWhereItLeaves) {
  const VenueModel venue = venueOf(2, 4, 80);
  for (std::size_t i = 0; i < venue.floors.size(); ++i) {
    for (const VenuePath& path : venue.floors[i].paths) {
      EXPECT_EQ(path.from.floor, static_cast<int>(i));
      const int from = venue.floors[i].level;
      const int to = venue.floors[static_cast<std::size_t>(path.to.floor)].level;
      EXPECT_EQ(path.direction, from == to ? 0 : from < to ? 1 : 2) << path.name;
      EXPECT_EQ(path.kind == PathKind::walk, from == to) << path.name;
    }
  }
}

TEST(VenueModel, connectorsStandStraightAboveEachOther) {
  const VenueModel venue = venueOf(2, 4, 80);
  const auto at = [&](NodeRef ref) {
    return venue.floors[static_cast<std::size_t>(ref.floor)]
        .graph.nodes[static_cast<std::size_t>(ref.node)]
        .at;
  };
  int seen = 0;
  for (const FloorModel& floor : venue.floors) {
    for (const VenuePath& path : floor.paths) {
      if (path.kind != PathKind::lift && path.kind != PathKind::stairs) continue;
      EXPECT_EQ(at(path.from), at(path.to)) << path.name;
      ++seen;
    }
  }
  EXPECT_GT(seen, 0);
}

TEST(VenueModel, aLiftGoesToEveryOtherFloor) {
  const VenueModel venue = venueOf(1, 6, 60);
  for (const FloorModel& floor : venue.floors) {
    const auto rides = std::count_if(floor.paths.begin(), floor.paths.end(),
                                     [](const auto& path) { return path.name == "Lift 1"; });
    EXPECT_EQ(rides, 5);
  }
}

TEST(VenueModel, buildingsAreJoinedOnTheGroundAndAboveIt) {
  const VenueModel venue = venueOf(2, 4, 80);
  std::map<std::string, int> walks;
  for (const FloorModel& floor : venue.floors) {
    for (const VenuePath& path : floor.paths) {
      if (path.kind == PathKind::walk) walks[path.name] = floor.level;
    }
  }
  EXPECT_EQ(walks, (std::map<std::string, int>{{"Bridge", 1}, {"Walk", 0}}));
}

TEST(VenueModel, waypointsAreMetNearly) {
  for (std::int64_t wanted : {1000, 3000, 10'000, 40'000}) {
    GenerateOptions options;
    options.waypoints = wanted;
    const PlannedVenue planned = planVenue(options);
    ASSERT_EQ(planned.error, std::nullopt);
    EXPECT_LT(std::abs(planned.venue.waypointCount() - wanted), wanted / 10);
  }
}

TEST(VenueModel, tooFewWaypointsForTheBuildingsAreAnError) {
  GenerateOptions options;
  options.floors = 10;
  options.waypoints = 100;
  EXPECT_THAT(
      planVenue(options).error,
      testing::Optional(testing::StartsWith("--waypoints: 100 is too few for 2 buildings")));
}

TEST(VenueModel, optionOutOfRangeIsAnError) {
  GenerateOptions options;
  options.shops = 0;
  EXPECT_THAT(planVenue(options).error, testing::Optional(testing::StartsWith("--shops: 0")));
}

TEST(VenueModel, stampChangesWithEveryOption) {
  std::set<std::int64_t> stamps;
  GenerateOptions options;
  const auto add = [&] { stamps.insert(planVenue(options).venue.generatedAt); };
  add();
  options.seed = 2, add();
  options.buildings = 1, add();
  options.floors = 2, add();
  options.shops = 50, add();
  options.spacing = 5, add();
  options.customer = 9, add();
  options.venue = 9, add();
  EXPECT_EQ(stamps.size(), 8U);
}

}  // namespace
}  // namespace tern::generate
