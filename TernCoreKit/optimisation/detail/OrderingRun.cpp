#include "TernCoreKit/optimisation/detail/OrderingRun.hpp"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include "TernCoreKit/model/records/TernLocation.hpp"
#include "TernCoreKit/optimisation/detail/ChainLengths.hpp"
#include "TernCoreKit/platform/detail/common/Attempt.hpp"
#include "TernCoreKit/wayfinding/TernASGrid.hpp"
#include "TernCoreKit/wayfinding/TernASSearch.hpp"

namespace tern::inline v5::detail {

TernRoute routeWithinArray(const TernRouting& venue, const TernWaypoint& from, const Waypoints& to,
                           std::int64_t accessibility) {
  TernASSearch search;
  search.grid = venue.getGrid();
  search.maps = venue.getMaps();
  return search.routeToAny(from.id.integer(), to, accessibility).value_or(TernRoute());
}

// Whether a level can be reached is asked once, for the first destination that lies on it.
void OrderingRun::createPriorityLevelScore() {
  auto& levels = tables_.levelComputedDataDict;
  const auto& start = tables_.startWayPoint;
  TernTourLevel& first = levels[start->mapId.integer()];
  first.score = 1;
  first.isVisited = false;
  first.isReachable = true;
  for (const auto& destination : tables_.destinations()) {
    for (const auto& location : destination->locations) {
      const std::int64_t mapId = location->mapId.integer();
      const auto [level, isNew] = levels.try_emplace(mapId);
      if (isNew) {
        level->second.isVisited = false;
        level->second.isReachable = findNearest(start, mapId, {destination}).has_value();
      }
      ++level->second.score;
    }
  }
}

std::optional<TernNearestResult> OrderingRun::findNearest(
    const std::shared_ptr<TernWaypoint>& from, std::int64_t mapId,
    const TernNearestElement::Elements& elements) {
  if (search_ == nullptr) return std::nullopt;
  auto found = search_->getNearestElementFrom(from, mapId, elements, tables_.accessible);
  const auto& error = search_->error();
  if (!found && error && error->message == outOfMemory) hasRunOut_ = true;
  return found;
}

// Each pass visits the level that the last one has chosen, so there are no more passes than levels.
void OrderingRun::getOptimalOrderOfDestinations() {
  const auto& start = tables_.startWayPoint;
  std::optional<NextLevel> next = NextLevel{start->mapId.integer(), start};
  while (next && !tables_.isAllVisited()) {
    getShortestDistanceandTour(next->mapId, next->waypoint);
    next = chooseNextLevel();
    if (next) settleByArrival(*next);
  }
  for (auto& [mapId, level] : tables_.levelComputedDataDict) level.isVisited = true;
}

// Of the levels that are left the nearest to the last stop, of equally near ones the first.
std::optional<OrderingRun::NextLevel> OrderingRun::chooseNextLevel() {
  std::optional<NextLevel> best;
  if (tables_.finalOrderOfWaypoints.empty()) return best;
  float bestDistance = std::numeric_limits<float>::max();
  const std::shared_ptr<TernWaypoint> last = tables_.finalOrderOfWaypoints.back();
  for (auto& [mapId, level] : tables_.levelComputedDataDict) {
    tables_.searchElementConditionWaypoints.clear();
    if (level.isVisited.value_or(false)) continue;
    if (!level.hasDecided() && level.TBDwaypoints.empty()) {
      level.isVisited = true;
      continue;
    }
    if (level.hasDecided()) tables_.searchElementConditionWaypoints = *level.decidedWaypoints;
    const auto found = findNearest(last, mapId, targetsOf(level));
    const float distance = found ? found->totalDistance : 0;
    if (!std::isfinite(distance) || !(distance < bestDistance)) continue;
    best = {mapId, found ? found->waypoint : nullptr};
    bestDistance = distance;
  }
  tables_.searchElementConditionWaypoints.clear();
  return best;
}

TernNearestElement::Elements OrderingRun::targetsOf(const TernTourLevel& level) const {
  TernNearestElement::Elements targets;
  // A level whose stops have all been taken away again is searched for nothing.
  if (level.decidedWaypoints && level.decidedWaypoints->empty()) return targets;
  for (const auto& waypoint : level.hasDecided() ? *level.decidedWaypoints : level.TBDwaypoints) {
    auto owner = tables_.getbyWayPointId(waypoint->id.integer());
    if (owner == nullptr) continue;
    targets.push_back(std::move(owner));
    if (!level.hasDecided()) break;
  }
  return targets;
}

// A destination that was still open is visited where the search has arrived; the other levels in
// question are dropped, whatever else was to be visited there.
void OrderingRun::settleByArrival(const NextLevel& arrival) {
  auto& levels = tables_.levelComputedDataDict;
  if (arrival.waypoint == nullptr || levels[arrival.mapId].TBDwaypoints.empty()) return;
  const auto owner = tables_.getbyWayPointId(arrival.waypoint->id.integer());
  if (owner == nullptr) return;
  for (const std::int64_t mapId :
       tables_.intermediateStateOfDestination[owner->id.integer()].TBDMapids) {
    TernTourLevel& level = levels[mapId];
    if (mapId == arrival.mapId) {
      level.decidedWaypoints = {arrival.waypoint};
    } else {
      level.isVisited = true;
    }
    level.TBDwaypoints.clear();
  }
}

void OrderingRun::getShortestDistanceandTour(std::int64_t mapId,
                                             std::shared_ptr<TernWaypoint> start) {
  TernTourLevel& level = tables_.levelComputedDataDict[mapId];
  level.isVisited = true;
  Waypoints stops = level.decidedWaypoints.value_or(Waypoints());
  const auto at = std::ranges::find(stops, start);
  if (at != stops.end()) std::iter_swap(stops.begin(), at);
  if (stops.size() > 2) {
    if (start == nullptr) start = stops.front();
    const Waypoints chain = chainFrom(std::move(start), std::move(stops));
    ChainLengths(tables_).measure(chain);
    const TernTSP::Result result = TernTSP::solve(tables_.costToPathGraph);
    if (result.tour.size() != chain.size() && chain.size() <= TernTSP::mostStops) hasRunOut_ = true;
    stops = inOrder(chain, result);
  }
  auto& order = tables_.finalOrderOfWaypoints;
  order.insert(order.end(), stops.begin(), stops.end());
}

// From each stop to the one that is cheapest to reach. Where none is, the stop is listed once more
// and the one that stands first among the rest is lost.
Waypoints OrderingRun::chainFrom(std::shared_ptr<TernWaypoint> start, Waypoints stops) {
  Waypoints chain;
  std::shared_ptr<TernWaypoint> current = std::move(start);
  while (stops.size() > 1) {
    chain.push_back(current);
    stops.erase(stops.begin());
    const TernRoute route = venue_ != nullptr
                                ? routeWithinArray(*venue_, *current, stops, tables_.accessible)
                                : TernRoute();
    const std::int64_t from = current->id.integer();
    const std::int64_t end = route.empty() ? from : route.front().points.back().nodeId();
    const auto reached =
        std::ranges::find_if(stops, [end](const auto& stop) { return stop->id.integer() == end; });
    if (reached == stops.end()) continue;
    tables_.dictOfTernPathPerFloor.store(from, end, route);
    std::iter_swap(stops.begin(), reached);
    current = stops.front();
  }
  chain.insert(chain.end(), stops.begin(), stops.end());
  return chain;
}

Waypoints inOrder(const Waypoints& chain, const TernTSP::Result& result) {
  if (result.tour.size() != chain.size()) return chain;
  Waypoints order;
  order.reserve(chain.size());
  for (const std::size_t position : result.tour) order.push_back(chain[position]);
  return order;
}

Destinations OrderingRun::getDestinationOrderFor(const Waypoints& order) const {
  Destinations destinations;
  for (const auto& waypoint : order) {
    auto owner = tables_.getbyWayPointId(waypoint->id.integer());
    if (owner != nullptr) destinations.push_back(std::move(owner));
  }
  return destinations;
}

std::vector<TernRoute> OrderingRun::generatePathPerFloorFor(const Waypoints& order) {
  std::vector<TernRoute> legs;
  for (std::size_t i = 1; i < order.size(); ++i) {
    const std::int64_t from = order[i - 1]->id.integer();
    const std::int64_t to = order[i]->id.integer();
    const TernRoute* leg = tables_.dictOfTernPathPerFloor.find(from, to);
    if (leg == nullptr) {
      leg = &tables_.dictOfTernPathPerFloor.store(
          from, to,
          venue_ != nullptr ? venue_->wayfind(order[i - 1], order[i], tables_.accessible)
                            : TernRoute());
    }
    legs.push_back(*leg);
  }
  return legs;
}

}  // namespace tern::detail
