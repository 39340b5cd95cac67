#include "TernCoreKit/answers/detail/TourRest.hpp"

#include <algorithm>
#include <utility>

#include "TernCoreKit/model/collections/TernMapCollection.hpp"
#include "TernCoreKit/model/records/TernDestination.hpp"
#include "TernCoreKit/model/records/TernWaypoint.hpp"
#include "TernCoreKit/wayfinding/TernASGrid.hpp"
#include "TernCoreKit/wayfinding/TernASSearch.hpp"

namespace tern::inline v5::detail {

namespace {

using Waypoints = TernActiveVenue::Waypoints;

// A destination with the waypoints that it has now.
struct OpenStop {
  std::shared_ptr<TernDestination> destination;
  Waypoints waypoints;

  bool isAt(std::int64_t waypointId) const {
    return std::ranges::any_of(waypoints, [waypointId](const auto& each) {
      return each != nullptr && each->id.integer() == waypointId;
    });
  }
};

std::vector<OpenStop> openStops(const TernActiveVenue& venue, const TourStops& wanted) {
  std::vector<OpenStop> open;
  const MutexLock lock(venue.recordsMutex());
  for (const auto& destination : wanted) {
    const bool isRepeated =
        std::ranges::find(open, destination, &OpenStop::destination) != open.end();
    if (!isRepeated) open.push_back({destination, destination->waypoints});
  }
  return open;
}

// Takes those that are at the waypoint out of the list.
TourStops takeVisited(std::vector<OpenStop>& open, std::int64_t waypointId) {
  TourStops visited;
  std::erase_if(open, [&](OpenStop& stop) {
    const bool isVisited = stop.isAt(waypointId);
    if (isVisited) visited.push_back(std::move(stop.destination));
    return isVisited;
  });
  return visited;
}

Waypoints waypointsOf(const std::vector<OpenStop>& open) {
  Waypoints waypoints;
  for (const OpenStop& stop : open) {
    waypoints.insert(waypoints.end(), stop.waypoints.begin(), stop.waypoints.end());
  }
  return waypoints;
}

std::int64_t endOf(const TernRoute& route) { return route.back().points.back().nodeId(); }

}  // namespace

void appendTheRest(const TernActiveVenue& venue, const TernWaypoint& start, const TourStops& wanted,
                   std::int64_t level, Tour& tour) {
  std::vector<OpenStop> open = openStops(venue, wanted);
  std::int64_t here = start.id.integer();
  takeVisited(open, here);
  for (const TernRoute& leg : tour.legs) {
    if (leg.empty()) continue;
    here = endOf(leg);
    takeVisited(open, here);
  }
  TernASSearch search;
  search.grid = venue.globalASGrid();
  search.maps = venue.maps;
  while (auto route = search.routeToOneOf(here, waypointsOf(open), level)) {
    here = endOf(*route);
    tour.legs.push_back(*std::move(route));
    for (auto& visited : takeVisited(open, here)) tour.destinations.push_back(std::move(visited));
  }
}

}  // namespace tern::detail
