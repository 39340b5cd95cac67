#include "tests/support/VenueLists.hpp"

#include <utility>

#include "TernCoreKit/model/collections/TernWaypointCollection.hpp"
#include "TernCoreKit/model/records/TernMap.hpp"

namespace tern::test {

std::shared_ptr<TernASGrid> VenueLists::makeGrid() const {
  return TernASGrid::initASGrid(waypoints, paths, pathTypes, maps, buildings, isForMultiVenue);
}

VenueLists listsOf(const DrawnVenue& venue) {
  return {venue.waypoints, venue.paths, venue.pathTypes, venue.maps->getAll(), venue.buildings};
}

VenueLists rowOfWaypoints(std::size_t count) {
  Value items = Value::list();
  for (std::size_t i = 0; i < count; ++i) {
    items.append(Value::map({{"id", static_cast<std::int64_t>(i + 1)},
                             {"mapId", 1},
                             {"coordinates", Value::list({static_cast<double>(i), 0})}}));
  }
  auto map = std::make_shared<TernMap>();
  map->id = 1;
  map->waypoints = std::make_shared<TernWaypointCollection>();
  map->waypoints->createBatch(Value::map({{"items", std::move(items)}}));
  auto walkway = std::make_shared<TernPathType>();
  walkway->id = 1;
  walkway->weight = 1;
  return {.waypoints = map->waypoints->getAll(), .pathTypes = {walkway}, .maps = {map}};
}

VenueLists corridor(std::size_t count) {
  VenueLists lists = rowOfWaypoints(count);
  for (std::size_t id = 1; id < count; ++id) {
    const auto from = static_cast<std::int64_t>(id);
    lists.paths.push_back(pathOver({from, from + 1}));
  }
  return lists;
}

std::unique_ptr<detail::GridNodes> builtNodes(const VenueLists& lists) {
  return std::make_unique<detail::GridNodes>(
      detail::GridRecords{lists.waypoints, lists.paths, lists.pathTypes, lists.maps,
                          lists.buildings, lists.isForMultiVenue});
}

std::shared_ptr<TernPath> pathOver(const std::vector<std::int64_t>& waypointIds,
                                   std::int64_t pathTypeId) {
  auto path = std::make_shared<TernPath>();
  path->id = 1;
  path->pathTypeId = pathTypeId;
  path->waypointIds = Value::list();
  for (const std::int64_t id : waypointIds) path->waypointIds.append(id);
  return path;
}

}  // namespace tern::test
