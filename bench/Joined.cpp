// The graph of many venues together, beside the sum of each venue's own.
#include <cstdio>
#include <utility>
#include <vector>

#include "TernCoreKit/wayfinding/TernASGrid.hpp"
#include "bench/Bench.hpp"
#include "bench/LoadedVenue.hpp"

namespace tern::bench {

namespace {

// Venues have their ids one after another, as a service that counts them up gives them.
constexpr std::int64_t idsAVenue = 20'000;

void shift(Value* value, std::int64_t by) {
  if (value != nullptr) *value = value->integer() + by;
}

// Gives the map and its waypoints ids of their own among the venues, and places on the globe.
void move(Value& map, std::int64_t venue) {
  const std::int64_t by = venue * idsAVenue;
  shift(map.find("id"), by);
  for (Value& waypoint : map.find("waypoints")->find("items")->items()) {
    shift(waypoint.find("id"), by);
    shift(waypoint.find("mapId"), by);
    const auto at = waypoint["coordinates"].items();
    waypoint.set("coordinates",
                 Value::list({static_cast<double>(venue) * 0.01 + at[0].number() * 1e-7,
                              50 - at[1].number() * 1e-7}));
  }
  for (Value& path : map.find("paths")->find("items")->items()) {
    for (Value& id : path.find("waypointIds")->items()) shift(&id, by);
  }
}

std::shared_ptr<TernActiveVenue> makeVenue(std::size_t waypoints, std::int64_t venue) {
  IndoorVenue documents = makeIndoorVenue(waypoints, IdOrder::walking);
  for (Value& floor : documents.building.find("floors")->find("items")->items()) {
    move(*floor.find("map"), venue);
  }
  auto made = assemble(std::move(documents));
  made->loadGridData();
  return made;
}

using Grids = std::vector<std::shared_ptr<TernASGrid>>;

struct Lists {
  TernASGrid::Waypoints waypoints;
  TernASGrid::Paths paths;
  TernASGrid::PathTypes pathTypes;
  TernASGrid::Maps maps;
  TernASGrid::Buildings buildings;

  void append(const TernASGrid& grid) {
    const auto add = [](auto& list, const auto& more) {
      list.insert(list.end(), more.begin(), more.end());
    };
    add(waypoints, grid.waypoints());
    add(paths, grid.paths());
    add(pathTypes, grid.pathTypes());
    add(maps, grid.mapFulls());
    add(buildings, grid.buildings());
  }
};

// All lists are made before, and the graphs given up behind what is timed.
double buildSeconds(std::vector<Lists> lists, bool isForMultiVenue) {
  Grids built;
  return secondsOf([&] {
    for (Lists& each : lists) {
      built.push_back(TernASGrid::initASGrid(std::move(each.waypoints), std::move(each.paths),
                                             std::move(each.pathTypes), std::move(each.maps),
                                             std::move(each.buildings), isForMultiVenue));
    }
  });
}

}  // namespace

void benchJoined() {
  constexpr std::int64_t venues = 20;
  constexpr std::size_t waypoints = 10'000;
  std::vector<std::shared_ptr<TernActiveVenue>> loaded;
  std::vector<Lists> apart(venues);
  std::vector<Lists> together(1);
  for (std::int64_t venue = 0; venue < venues; ++venue) {
    loaded.push_back(makeVenue(waypoints, venue));
    const auto grid = loaded.back()->globalASGrid();
    apart[static_cast<std::size_t>(venue)].append(*grid);
    together.front().append(*grid);
  }
  std::vector<double> joined;
  std::vector<double> single;
  std::vector<double> singleOnGlobe;
  for (int round = 0; round < 15; ++round) {
    joined.push_back(buildSeconds(together, true));
    single.push_back(buildSeconds(apart, false));
    singleOnGlobe.push_back(buildSeconds(apart, true));
  }
  std::printf(
      "joining %d venues of %zu waypoints takes %.1f ms, %.2f times the sum of the single "
      "builds (%.2f times with their coordinates projected, too)\n",
      static_cast<int>(venues), waypoints, median(joined) * 1e3, ratioOf(joined, single),
      ratioOf(joined, singleOnGlobe));
}

}  // namespace tern::bench
