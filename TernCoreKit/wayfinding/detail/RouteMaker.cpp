#include "TernCoreKit/wayfinding/detail/RouteMaker.hpp"

#include <algorithm>
#include <numeric>
#include <utility>

#include "TernCoreKit/model/collections/TernMapCollection.hpp"
#include "TernCoreKit/model/records/TernPathType.hpp"
#include "TernCoreKit/model/records/TernWaypoint.hpp"
#include "TernCoreKit/platform/Log.hpp"

namespace tern::inline v5::detail {

bool RouteMaker::isRoute(std::size_t nodes) {
  if (nodes < 2) logSdk("NO PATH");
  return nodes >= 2;
}

std::vector<RouteMaker::Step> RouteMaker::stepsAlong(const std::shared_ptr<NodeSource>& source,
                                                     std::span<const Position> route,
                                                     const TernASNode* start) {
  std::vector<Step> steps;
  steps.reserve(route.size());
  for (const Position position : route) {
    const bool isStart = start != nullptr && steps.empty();
    TernASNode node = isStart ? *start : TernASNode(source, position);
    const NodeFacts facts = node.source_->facts(node.position_);
    steps.push_back({std::move(node), facts.mapId,
                     TernPoint::initWithX(static_cast<float>(facts.x), static_cast<float>(facts.y),
                                          static_cast<float>(facts.mapId))});
  }
  return steps;
}

std::optional<TernRoute> RouteMaker::make(const std::shared_ptr<NodeSource>& source,
                                          std::span<const Position> route,
                                          const ProgressAt& progressAt,
                                          std::span<const Distance> distances,
                                          const TernASNode* start) const {
  std::vector<Step> steps = stepsAlong(source, route, start);
  if (!isRoute(steps.size())) return std::nullopt;
  TernRoute made;
  for (std::size_t first = 0; first < steps.size();) {
    std::size_t next = first + 1;
    while (next < steps.size() && steps[next].mapId == steps[first].mapId) ++next;
    const std::size_t reachedByMover = std::min(next, steps.size() - 1);
    made.push_back(segmentOf(std::span(steps).subspan(first, next - first),
                             progressAt(next - 1).score, distances[next - 1],
                             progressAt(reachedByMover).usedEdgeTypeId));
    first = next;
  }
  return made;
}

std::optional<TernRoute> RouteMaker::makeOfAll(const std::shared_ptr<NodeSource>& source,
                                               std::size_t count) const {
  std::vector<Position> route;
  route.reserve(count);
  for (Position position{0}; numberOf(position) < count; ++position) route.push_back(position);
  return make(
      source, route, [&](std::size_t at) { return source->progress(route[at]); },
      source->distances(route));
}

TernPathPerFloor RouteMaker::segmentOf(std::span<Step> steps, float score, Distance distance,
                                       std::int64_t moverTypeId) const {
  TernPathPerFloor segment;
  segment.mapId = steps.back().mapId;
  if (graph_ != nullptr) segment.mover = graph_->pathTypeById(moverTypeId);
  segment.cost = score;
  segment.pixelDistance = distance.value_or(0);
  segment.mmDistance = millimetres(segment.pixelDistance, segment.mapId);
  segment.points.reserve(steps.size());
  segment.mapPoints.reserve(steps.size());
  for (Step& step : steps) {
    segment.points.push_back(std::move(step.node));
    segment.mapPoints.push_back(step.point);
  }
  return segment;
}

float RouteMaker::millimetres(float distance, std::int64_t mapId) const {
  const auto map = maps_ != nullptr ? maps_->getById(mapId) : nullptr;
  return map != nullptr ? distance * static_cast<float>(map->mmPerPixel.number()) : 0.0F;
}

}  // namespace tern::detail
