#include "tests/support/LiteralAlternatives.hpp"

#include <cmath>

#include "TernCoreKit/model/records/TernWaypoint.hpp"
#include "TernCoreKit/wayfinding/TernASGrid.hpp"
#include "TernCoreKit/wayfinding/TernASSearch.hpp"

namespace tern::test {

namespace {

std::string textOf(const TernRoute& route) {
  std::string text;
  for (const TernPathPerFloor& segment : route) {
    text += "map " + std::to_string(segment.mapId) + ":";
    for (const TernASNode& node : segment.points) text += " " + std::to_string(node.nodeId());
    text += " for " + std::to_string(segment.cost) + "; ";
  }
  return text;
}

std::vector<TernASNode> pointsOf(const TernRoute& route) {
  std::vector<TernASNode> points;
  for (const TernPathPerFloor& segment : route) {
    points.insert(points.end(), segment.points.begin(), segment.points.end());
  }
  return points;
}

int turnsOf(const TernPathPerFloor& segment) {
  const auto angle = [&](std::size_t i) {
    return TernASAlternativePath::getAngleFrom(segment.points[i], segment.points[i + 1]);
  };
  int turns = 0;
  for (std::size_t i = 0; i + 2 < segment.points.size(); ++i) {
    const double delta = angle(i + 1) - angle(i);
    if ((135 < delta && delta < 225) || (-225 < delta && delta < -135)) ++turns;
    if ((20 < delta && delta < 160) || (-340 < delta && delta < -200) ||
        (-160 < delta && delta < -20) || (200 < delta && delta < 340)) {
      ++turns;
    }
  }
  return turns;
}

double optionOr(const Value& options, std::string_view key, double missing) {
  const Value* value = options.find(key);
  return value != nullptr ? value->number() : missing;
}

}  // namespace

std::string LiteralAlternatives::differenceOf(const std::optional<TernRoute>& optimal,
                                              const std::optional<Routes>& alternatives,
                                              const std::shared_ptr<TernWaypoint>& from,
                                              const std::shared_ptr<TernWaypoint>& to,
                                              const Value& options, std::int64_t accessibility) {
  if (from == nullptr || to == nullptr) return optimal || alternatives ? "a route of nothing" : "";
  from_ = from->id.integer();
  to_ = to->id.integer();
  level_ = accessibility;
  share_ = optionOr(options, "optimalPathMatchRatio", 0.6);
  longest_ = optionOr(options, "optimalPathDistanceRatio", 2);
  const auto found = shortest();
  const std::string ours = optimal ? textOf(*optimal) : "";
  const std::string theirs = found ? textOf(*found) : "";
  if (ours != theirs) return ours + "instead of " + theirs;
  const auto other = !found ? found : share_ == 1 ? *found : alternativeTo(*found);
  const std::string ourOther = alternatives ? textOf(alternatives->front()) : "";
  const std::string theirOther = other ? textOf(*other) : "";
  return ourOther == theirOther ? "" : ourOther + "beside it instead of " + theirOther;
}

std::optional<TernRoute> LiteralAlternatives::alternativeTo(const TernRoute& optimal) {
  const Nodes points = pointsOf(optimal);
  const std::size_t n = points.size();
  std::optional<TernRoute> best;
  if (n < 3 || share_ > 1) return best;
  destinationId_ = points.back().nodeId();
  destinationMap_ = points.back().mapId();
  const auto w = static_cast<std::size_t>(
      std::round(static_cast<float>((1 - share_) * static_cast<double>(n - 2))));
  for (std::size_t k = 0; k + 1 < n; ++k) {
    if (!isDecision(points, k) || n <= k + w) continue;
    for (std::size_t i = k + 1; i <= k + w; ++i) grid->shouldBlockEntryToNode(points[i], true);
    const auto route = detour(optimal);
    if (route && (!best || route->back().cost < best->back().cost)) best = route;
    for (std::size_t i = k + 1; i <= k + w; ++i) grid->shouldBlockEntryToNode(points[i], false);
  }
  return best;
}

std::int64_t LiteralAlternatives::mapOf(std::int64_t nodeId) const {
  const auto node = grid->getNodeById(nodeId);
  return node ? node->mapId() : 0;
}

bool LiteralAlternatives::isDecision(const Nodes& points, std::size_t i) const {
  const std::int64_t mapId = points[i].mapId();
  if (i > 0 && mapId != points[i - 1].mapId()) return false;
  for (const TernNeighbor& neighbor : points[i].neighbors()) {
    const std::int64_t id = neighbor.neighborId.integer();
    if ((i > 0 && id == points[i - 1].nodeId()) || id == points[i + 1].nodeId()) continue;
    if (mapOf(id) != mapId && destinationMap_ == mapId) continue;
    if (isValid(id, points[i].nodeId(), 2)) return true;
  }
  return false;
}

bool LiteralAlternatives::isValid(std::int64_t nodeId, std::int64_t parentId, int level) const {
  const auto node = grid->getNodeById(nodeId);
  if (!node) return false;
  for (const TernNeighbor& neighbor : node->neighbors()) {
    const std::int64_t id = neighbor.neighborId.integer();
    if (id == parentId) continue;
    if (id == destinationId_) return true;
    if (mapOf(id) != node->mapId() && node->mapId() == destinationMap_) continue;
    if (3 <= level || isValid(id, nodeId, level + 1)) return true;
  }
  return false;
}

std::optional<TernRoute> LiteralAlternatives::detour(const TernRoute& optimal) const {
  auto route = shortest();
  if (!route || (optimal.size() == 1 && route->size() > 1)) return std::nullopt;
  const float ratio = route->back().pixelDistance / optimal.back().pixelDistance;
  if (ratio > longest_) return std::nullopt;
  int turns = 0;
  for (const TernPathPerFloor& segment : *route) turns += turnsOf(segment);
  route->back().cost = static_cast<float>(double{route->back().cost} + turns * 0.001);
  return route;
}

std::optional<TernRoute> LiteralAlternatives::shortest() const {
  TernASSearch search;
  search.grid = grid;
  search.maps = maps;
  return search.search(from_, to_, level_);
}

}  // namespace tern::test
