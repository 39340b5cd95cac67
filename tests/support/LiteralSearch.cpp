#include "tests/support/LiteralSearch.hpp"

#include <algorithm>
#include <utility>

#include "TernCoreKit/model/records/TernMap.hpp"
#include "TernCoreKit/model/records/TernWaypoint.hpp"

namespace tern::test {

namespace {

int compare(const LiteralNode& a, const LiteralNode& b) {
  if (a.f != b.f) return a.f < b.f ? -1 : 1;
  return 0;
}

}  // namespace

bool LiteralHeap::contains(const LiteralNode* node) const {
  return std::find(nodes_.begin(), nodes_.end(), node) != nodes_.end();
}

void LiteralHeap::insert(LiteralNode* node) {
  nodes_.push_back(node);
  for (std::size_t at = nodes_.size() - 1; at > 0;) {
    const std::size_t parent = (at - 1) / 2;
    if (compare(*nodes_[parent], *nodes_[at]) <= 0) return;
    std::swap(nodes_[parent], nodes_[at]);
    at = parent;
  }
}

LiteralNode* LiteralHeap::removeFirst() {
  LiteralNode* const first = nodes_.front();
  nodes_.front() = nodes_.back();
  nodes_.pop_back();
  for (std::size_t at = 0; 2 * at + 1 < nodes_.size();) {
    std::size_t child = 2 * at + 1;
    if (child + 1 < nodes_.size() && compare(*nodes_[child], *nodes_[child + 1]) > 0) ++child;
    if (compare(*nodes_[at], *nodes_[child]) <= 0) break;
    std::swap(nodes_[at], nodes_[child]);
    at = child;
  }
  return first;
}

std::optional<LiteralRoute> LiteralSearch::search(std::int64_t startId, std::int64_t endId,
                                                  std::int64_t accessLevel) {
  const LiteralNode* end = grid_.getNodeById(endId);
  const std::int64_t goalId = end != nullptr ? end->nodeId : 0;
  return run(startId, accessLevel,
             [goalId](const LiteralNode& node) { return node.nodeId == goalId; });
}

std::optional<LiteralRoute> LiteralSearch::searchInArray(std::int64_t startId,
                                                         const TernASGrid::Waypoints& endWaypoints,
                                                         std::int64_t accessLevel) {
  const std::vector<LiteralNode*> goals = grid_.getNodesForIds(endWaypoints);
  return run(startId, accessLevel, [&](const LiteralNode& node) {
    for (const LiteralNode* goal : goals) {
      if (goal->nodeId == node.nodeId) return true;
    }
    return node.nodeId == 0;
  });
}

std::optional<LiteralRoute> LiteralSearch::run(std::int64_t startId, std::int64_t accessLevel,
                                               const IsGoal& isGoal) {
  grid_.reset();
  open_ = {};
  LiteralNode* const start = grid_.getNodeById(startId);
  if (start == nullptr) return std::nullopt;
  open_.insert(start);
  while (!open_.isEmpty()) {
    LiteralNode* const current = open_.removeFirst();
    if (isGoal(*current)) return pathTo(current, start);
    current->closed = true;
    expand(*current, accessLevel);
  }
  return std::nullopt;
}

void LiteralSearch::expand(LiteralNode& current, std::int64_t accessLevel) {
  for (const TernNeighbor& neighbor : current.neighbors) {
    LiteralNode* const node = grid_.getNodeById(neighbor.neighborId.integer());
    if (node == nullptr) continue;
    if (neighbor.acc.integer() > accessLevel) continue;
    if (grid_.isEdgeBlockedBetweenNode(current, *node)) continue;
    if (node->closed) continue;
    const float tentative = current.g + neighbor.cost;
    if (node->visited && !(tentative < node->g)) continue;
    reach(*node, current, neighbor);
  }
}

void LiteralSearch::reach(LiteralNode& node, LiteralNode& current, const TernNeighbor& over) {
  const bool wasVisited = node.visited;
  node.visited = true;
  node.parent = &current;
  node.g = current.g + over.cost;
  node.f = node.g;
  node.distance = current.distance.value_or(0) + over.distance;
  node.usedEdgeTypeId = over.edgeTypeId.integer();
  if (!wasVisited || !open_.contains(&node)) open_.insert(&node);
}

std::optional<LiteralRoute> LiteralSearch::pathTo(const LiteralNode* end,
                                                  const LiteralNode* start) {
  if (end == nullptr || start == nullptr) {
    log_.push_back("Tern SDK: no start and/or end");
    return std::nullopt;
  }
  std::vector<const LiteralNode*> chain;
  for (const LiteralNode* node = end; node->parent != nullptr; node = node->parent) {
    chain.push_back(node);
  }
  chain.push_back(start);
  std::reverse(chain.begin(), chain.end());

  LiteralRoute route;
  std::vector<const LiteralNode*> pending;
  for (std::size_t i = 0; i < chain.size(); ++i) {
    if (i > 0 && chain[i]->mapId != chain[i - 1]->mapId) {
      route.push_back(segmentOf(pending, *chain[i]));
      pending.clear();
    }
    pending.push_back(chain[i]);
    if (i > 0 && i + 1 == chain.size()) route.push_back(segmentOf(pending, *chain[i]));
  }
  if (!route.empty()) return route;
  log_.push_back("Tern SDK: NO PATH");
  return std::nullopt;
}

LiteralSegment LiteralSearch::segmentOf(const std::vector<const LiteralNode*>& pending,
                                        const LiteralNode& reachedByMover) const {
  const LiteralNode& last = *pending.back();
  const auto map = maps_->getById(last.mapId);
  LiteralSegment segment;
  segment.cost = last.f;
  segment.mapId = last.mapId;
  segment.mover = grid_.getPathTypeById(reachedByMover.usedEdgeTypeId);
  segment.points = pending;
  segment.pixelDistance = last.distance.value_or(0);
  if (map != nullptr) {
    segment.mmDistance = segment.pixelDistance * static_cast<float>(map->mmPerPixel.number());
  }
  for (const LiteralNode* node : pending) {
    segment.mapPoints.push_back({static_cast<float>(node->x), static_cast<float>(node->y),
                                 static_cast<float>(node->mapId)});
  }
  return segment;
}

}  // namespace tern::test
