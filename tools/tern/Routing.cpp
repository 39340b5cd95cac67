#include "tools/tern/Routing.hpp"

#include <utility>
#include <vector>

#include "TernCoreKit/model/collections/TernMapCollection.hpp"
#include "TernCoreKit/model/records/TernWaypoint.hpp"
#include "TernCoreKit/model/venue/TernActiveVenue.hpp"
#include "TernCoreKit/wayfinding/TernASGrid.hpp"
#include "TernCoreKit/wayfinding/TernASSearch.hpp"

namespace tern::command {

namespace {

std::vector<std::shared_ptr<TernWaypoint>> knownWaypoints(const TernASGrid& grid,
                                                          std::span<const std::int64_t> ids) {
  std::vector<std::shared_ptr<TernWaypoint>> waypoints;
  for (const std::int64_t id : ids) {
    if (auto waypoint = grid.getWPById(id)) waypoints.push_back(std::move(waypoint));
  }
  return waypoints;
}

}  // namespace

std::string unknownWaypoints(const TernASGrid& grid, std::int64_t from, std::int64_t to,
                             const std::string& place) {
  std::string names;
  for (const std::int64_t id : {from, to}) {
    const std::string name = "waypoint " + std::to_string(id);
    if (grid.getWPById(id) != nullptr || name == names) continue;
    names += names.empty() ? name : " and no " + name;
  }
  return names.empty() ? names : "there is no " + names + " in " + place;
}

TernRoute findRoute(TernActiveVenue& venue, std::int64_t from, std::int64_t to,
                    std::int64_t level) {
  const auto grid = venue.globalASGrid();
  const auto start = grid->getWPById(from);
  const auto end = grid->getWPById(to);
  if (!start || !end) return {};
  return venue.wayfind(start, end, level);
}

TernRoute findRouteToAny(TernActiveVenue& venue, std::int64_t from,
                         std::span<const std::int64_t> to, std::int64_t level) {
  TernASSearch search;
  search.grid = venue.globalASGrid();
  search.maps = venue.maps;
  return search.searchInArray(from, knownWaypoints(*search.grid, to), level).value_or(TernRoute());
}

std::shared_ptr<TernWaypoint> findClosestByRoute(TernActiveVenue& venue,
                                                 std::span<const std::int64_t> candidates,
                                                 std::int64_t to, std::int64_t level) {
  const auto grid = venue.globalASGrid();
  const auto target = grid->getWPById(to);
  if (!target) return nullptr;
  return venue.getClosestWaypointInArray(knownWaypoints(*grid, candidates), target, level);
}

}  // namespace tern::command
