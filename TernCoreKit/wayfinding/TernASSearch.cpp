#include "TernCoreKit/wayfinding/TernASSearch.hpp"

#include <algorithm>
#include <span>
#include <utility>

#include "TernCoreKit/model/collections/TernMapCollection.hpp"
#include "TernCoreKit/model/records/TernPathType.hpp"
#include "TernCoreKit/model/records/TernWaypoint.hpp"
#include "TernCoreKit/platform/Log.hpp"
#include "TernCoreKit/wayfinding/TernASGrid.hpp"
#include "TernCoreKit/wayfinding/detail/GraphSearch.hpp"
#include "TernCoreKit/wayfinding/detail/GridGraph.hpp"

namespace tern {

// A node of a route, with what was read of it once.
struct TernASSearch::Step {
  detail::Position position;
  detail::NodeFacts facts;
};

std::optional<TernRoute> TernASSearch::search(std::int64_t startId, std::int64_t endId,
                                              std::int64_t accessLevel) {
  const std::int64_t goals[] = {endId};
  return searchForAny(startId, goals, accessLevel);
}

std::optional<TernRoute> TernASSearch::searchInArray(
    std::int64_t startId, const std::vector<std::shared_ptr<TernWaypoint>>& endWaypoints,
    std::int64_t accessLevel) {
  std::vector<std::int64_t> goals = {0};
  for (const auto& waypoint : endWaypoints) {
    if (waypoint != nullptr) goals.push_back(waypoint->id.integer());
  }
  return searchForAny(startId, goals, accessLevel);
}

std::optional<TernRoute> TernASSearch::searchForAny(std::int64_t startId,
                                                    std::span<const std::int64_t> goalIds,
                                                    std::int64_t accessLevel) {
  if (grid == nullptr) {
    logSdk(
        "Grid has not been initialized, please wait for wayfindDataLoaded callback before "
        "wayfinding.");
    return std::nullopt;
  }
  detail::GridGraph& graph = *grid->graph_;
  graph.graph.clearSearch();
  const detail::Position start = graph.find(startId);
  if (start == detail::noPosition) return std::nullopt;
  for (const std::int64_t id : goalIds) {
    detail::Position goal = graph.find(id);
    // The id of a goal that is not there reads as 0.
    if (goal == detail::noPosition) goal = graph.find(0);
    if (goal != detail::noPosition) detail::markGoal(graph.graph, goal);
  }
  const detail::Position end =
      detail::searchGraph(graph.graph, start, graph.gateLimit(accessLevel));
  if (end == detail::noPosition) return std::nullopt;
  return pathTo(grid->node(end), grid->node(start));
}

std::optional<TernRoute> TernASSearch::pathTo(const std::optional<TernASNode>& end,
                                              const std::optional<TernASNode>& start) const {
  if (!end || !start) {
    logSdk("no start and/or end");
    return std::nullopt;
  }
  TernRoute route;
  const std::vector<Step> steps = stepsTo(*end, *start);
  for (std::size_t first = 0; first < steps.size() && steps.size() > 1;) {
    std::size_t next = first + 1;
    while (next < steps.size() && steps[next].facts.mapId == steps[first].facts.mapId) ++next;
    const detail::Position reachedByMover = steps[std::min(next, steps.size() - 1)].position;
    route.push_back(segmentOf(end->source_, std::span(steps).subspan(first, next - first),
                              end->source_->progress(reachedByMover).usedEdgeTypeId));
    first = next;
  }
  if (route.empty()) {
    logSdk("NO PATH");
    return std::nullopt;
  }
  // The caller's own, which may stand outside the grid.
  route.front().points.front() = *start;
  return route;
}

// The route's nodes from start to end.
std::vector<TernASSearch::Step> TernASSearch::stepsTo(const TernASNode& end,
                                                      const TernASNode& start) {
  const detail::NodeSource& source = *end.source_;
  const std::vector<detail::Position> backwards = source.chainTo(end.position_);
  std::vector<Step> steps;
  steps.reserve(backwards.size());
  steps.push_back({backwards.back(), start.source_->facts(start.position_)});
  for (auto at = backwards.rbegin() + 1; at != backwards.rend(); ++at) {
    steps.push_back({*at, source.facts(*at)});
  }
  return steps;
}

TernPathPerFloor TernASSearch::segmentOf(const std::shared_ptr<detail::NodeSource>& source,
                                         std::span<const Step> steps,
                                         std::int64_t moverTypeId) const {
  const detail::NodeProgress last = source->progress(steps.back().position);
  TernPathPerFloor segment;
  segment.mapId = steps.back().facts.mapId;
  if (grid != nullptr) segment.mover = grid->getPathTypeById(moverTypeId);
  segment.cost = last.score;
  segment.pixelDistance = last.distance.value_or(0);
  segment.mmDistance = convertIntoMMDistance(segment.pixelDistance, segment.mapId);
  segment.points.reserve(steps.size());
  segment.mapPoints.reserve(steps.size());
  for (const auto& [position, facts] : steps) {
    segment.points.push_back(TernASNode(source, position));
    segment.mapPoints.push_back(TernPoint::initWithX(
        static_cast<float>(facts.x), static_cast<float>(facts.y), static_cast<float>(facts.mapId)));
  }
  return segment;
}

float TernASSearch::convertIntoMMDistance(float distance, std::int64_t mapId) const {
  const TernMap* map = maps != nullptr ? maps->findById(mapId) : nullptr;
  return map != nullptr ? distance * static_cast<float>(map->mmPerPixel.number()) : 0.0F;
}

std::vector<TernASNode> TernASSearch::openStartHeap() const {
  std::vector<TernASNode> open;
  if (grid == nullptr) return open;
  for (const detail::OpenEntry& entry : grid->graph_->graph.openEntries()) {
    open.push_back(grid->node(entry.position()));
  }
  return open;
}

}  // namespace tern
