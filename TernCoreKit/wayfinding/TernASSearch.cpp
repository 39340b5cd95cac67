#include "TernCoreKit/wayfinding/TernASSearch.hpp"

#include <algorithm>
#include <utility>

#include "TernCoreKit/model/collections/TernMapCollection.hpp"
#include "TernCoreKit/model/records/TernWaypoint.hpp"
#include "TernCoreKit/platform/Log.hpp"
#include "TernCoreKit/wayfinding/TernASGrid.hpp"
#include "TernCoreKit/wayfinding/detail/GridNodes.hpp"
#include "TernCoreKit/wayfinding/detail/RouteMaker.hpp"
#include "TernCoreKit/wayfinding/detail/RouteNodes.hpp"

namespace tern::inline v5 {

namespace {

// With the waypoint of id 0, which always counts as one of several.
std::vector<std::int64_t> goalsOf(const std::vector<std::shared_ptr<TernWaypoint>>& waypoints) {
  std::vector<std::int64_t> goals = {0};
  for (const auto& waypoint : waypoints) {
    if (waypoint != nullptr) goals.push_back(waypoint->id.integer());
  }
  return goals;
}

}  // namespace

std::optional<TernRoute> TernASSearch::search(std::int64_t startId, std::int64_t endId,
                                              std::int64_t accessLevel) {
  const std::int64_t goals[] = {endId};
  return find({startId, goals, accessLevel}, Nodes::ofGrid);
}

std::optional<TernRoute> TernASSearch::searchInArray(
    std::int64_t startId, const std::vector<std::shared_ptr<TernWaypoint>>& endWaypoints,
    std::int64_t accessLevel) {
  return find({startId, goalsOf(endWaypoints), accessLevel}, Nodes::ofGrid);
}

std::optional<TernRoute> TernASSearch::route(std::int64_t startId, std::int64_t endId,
                                             std::int64_t accessLevel) const {
  const std::int64_t goals[] = {endId};
  return find({startId, goals, accessLevel}, Nodes::ofRoute);
}

std::optional<TernRoute> TernASSearch::routeToAny(
    std::int64_t startId, const std::vector<std::shared_ptr<TernWaypoint>>& endWaypoints,
    std::int64_t accessLevel) const {
  return find({startId, goalsOf(endWaypoints), accessLevel}, Nodes::ofRoute);
}

std::optional<TernRoute> TernASSearch::routeToOneOf(
    std::int64_t startId, const std::vector<std::shared_ptr<TernWaypoint>>& endWaypoints,
    std::int64_t accessLevel) const {
  std::vector<std::int64_t> goals;
  for (const auto& waypoint : endWaypoints) {
    const bool isKnown = waypoint != nullptr && grid != nullptr &&
                         grid->nodes_->graph.find(waypoint->id.integer()) != detail::noPosition;
    if (isKnown) goals.push_back(waypoint->id.integer());
  }
  if (goals.empty()) return std::nullopt;
  return find({startId, goals, accessLevel}, Nodes::ofRoute);
}

std::optional<TernRoute> TernASSearch::find(const detail::RouteRequest& request,
                                            Nodes nodes) const {
  if (grid == nullptr) {
    logSdk(
        "Grid has not been initialized, please wait for wayfindDataLoaded callback before "
        "wayfinding.");
    return std::nullopt;
  }
  detail::SearchTurn turn(*grid->nodes_);
  const detail::Position end = turn.search(request, turn.links());
  if (end == detail::noPosition) return std::nullopt;
  const std::vector<detail::Position> route = turn.routeTo(end);
  const detail::RouteMaker maker(&grid->nodes_->graph, maps.get());
  if (nodes == Nodes::ofGrid) {
    return maker.make(
        grid->nodes_, route, [&](std::size_t at) { return turn.progress(route[at]); },
        turn.distances(route));
  }
  return maker.makeOfAll(std::make_shared<detail::RouteNodes>(grid->nodes_, turn, route),
                         route.size());
}

std::optional<TernRoute> TernASSearch::pathTo(const std::optional<TernASNode>& end,
                                              const std::optional<TernASNode>& start) const {
  if (!end || !start) {
    logSdk("no start and/or end");
    return std::nullopt;
  }
  const detail::NodeSource& source = *end->source_;
  std::vector<detail::Position> route = source.chainTo(end->position_);
  std::ranges::reverse(route);
  std::vector<detail::Distance> distances = source.distances(route);
  distances.front() = start->distance();
  const auto progressAt = [&](std::size_t at) {
    return at > 0 ? source.progress(route[at]) : start->source_->progress(start->position_);
  };
  const detail::RouteMaker maker(grid != nullptr ? &grid->nodes_->graph : nullptr, maps.get());
  return maker.make(end->source_, route, progressAt, distances, &*start);
}

float TernASSearch::convertIntoMMDistance(float distance, std::int64_t mapId) const {
  return detail::RouteMaker(nullptr, maps.get()).millimetres(distance, mapId);
}

int TernASSearch::compare(const TernASNode& a, const TernASNode& b) {
  const float first = a.f();
  const float second = b.f();
  if (first == second) return 0;
  return first < second ? -1 : 1;
}

std::vector<TernASNode> TernASSearch::openStartHeap() const {
  return grid != nullptr ? grid->nodesAt(grid->nodes_->openList()) : std::vector<TernASNode>();
}

}  // namespace tern
