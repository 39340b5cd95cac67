#include "TernCoreKit/wayfinding/detail/GridNodes.hpp"

#include <algorithm>
#include <utility>

#include "TernCoreKit/wayfinding/detail/GraphSearch.hpp"

namespace tern::inline v5::detail {

namespace {

// Of two threads that run at the same time never the same.
const void* thisThread() {
  static thread_local char place;
  return &place;
}

}  // namespace

// One state after the other: a long pile would run out of stack.
GridNodes::~GridNodes() {
  while (idle_ != nullptr) idle_ = std::move(idle_->next);
}

void GridNodes::reset() {
  const MutexLock lock(mutex_);
  if (last_ != nullptr) last_->clear();
}

std::vector<Position> GridNodes::openList() const {
  const MutexLock lock(mutex_);
  std::vector<Position> open;
  if (last_ == nullptr) return open;
  for (const OpenEntry& entry : last_->openEntries()) open.push_back(entry.position());
  return open;
}

void GridNodes::mark(const Ways& ways, bool block) {
  if (blocks_ == nullptr) {
    blocks_ = std::make_shared<Blocks>(noBlocks(graph));
  } else if (blocks_.use_count() > 1) {
    blocks_ = std::make_shared<Blocks>(*blocks_);
  }
  blocks_->mark(ways.edges, ways.links, block);
}

void GridNodes::block(const Ways& ways, bool block) {
  if (ways.edges.empty()) return;
  const MutexLock lock(mutex_);
  mark(ways, block);
}

void GridNodes::open(const Ways& ways) {
  const MutexLock lock(mutex_);
  if (blocks_ == nullptr) return;
  const auto isClosed = [&closed = *blocks_](EdgeIndex edge) { return closed.edges.has(edge); };
  if (std::ranges::any_of(ways.edges, isClosed)) mark(ways, false);
}

NodeProgress GridNodes::progress(Position position) const {
  const MutexLock lock(mutex_);
  return last_ != nullptr ? graph.progress(*last_, position) : NodeProgress();
}

std::vector<Distance> GridNodes::distances(std::span<const Position> positions) const {
  const MutexLock lock(mutex_);
  return last_ != nullptr ? graph.distances(*last_, positions)
                          : std::vector<Distance>(positions.size());
}

std::vector<Position> GridNodes::chainTo(Position position) const {
  const MutexLock lock(mutex_);
  return last_ != nullptr ? last_->chainTo(position) : std::vector{position};
}

void GridNodes::clearProgress(Position position) {
  const MutexLock lock(mutex_);
  if (last_ != nullptr) last_->nodes[position].mark = 0;
}

std::vector<TernASEdge> GridNodes::edges(Position position) const {
  const std::vector<bool> blocked = blockedEdges(position);
  std::vector<TernASEdge> made;
  for (const PathIndex path : graph.edges.of(graph.order.waypointAt(position))) {
    made.push_back(graph.edgeOver(path));
    made.back().blocked = !blocked.empty() && blocked[made.size() - 1];
  }
  return made;
}

std::vector<bool> GridNodes::blockedEdges(Position position) const {
  const MutexLock lock(mutex_);
  return blocks_ != nullptr ? marksOf(blocks_->edges, graph.edgesOf(position))
                            : std::vector<bool>();
}

void GridNodes::blockEdges(Position position, std::optional<std::int64_t> joining, bool block) {
  Ways ways;
  addWaysFrom(graph, position, joining, ways);
  this->block(ways, block);
}

bool GridNodes::isEdgeBlocked(Position position, std::int64_t joining) const {
  const EdgeIndex first = firstEdgeJoining(graph, position, joining);
  const MutexLock lock(mutex_);
  return first != none<EdgeIndex> && blocks_ != nullptr && blocks_->edges.has(first);
}

std::unique_ptr<SearchState> GridNodes::takeState() {
  const void* const thread = thisThread();
  auto* taken = &idle_;
  while (*taken != nullptr && (*taken)->lastThread != thread) taken = &(*taken)->next;
  if (*taken == nullptr) taken = &idle_;
  if (*taken == nullptr) {
    auto made = std::make_unique<SearchState>(graph.graph);
    made->lastThread = thread;
    return made;
  }
  auto state = std::move(*taken);
  *taken = std::move(state->next);
  if (state.get() == last_) last_ = nullptr;
  state->lastThread = thread;
  return state;
}

void GridNodes::giveBack(std::unique_ptr<SearchState> state) {
  last_ = state.get();
  state->next = std::move(idle_);
  idle_ = std::move(state);
}

SearchTurn::SearchTurn(GridNodes& nodes) : nodes_(nodes) {
  const MutexLock lock(nodes.mutex_);
  state_ = nodes.takeState();
  blocks_ = nodes.blocks_;
}

SearchTurn::~SearchTurn() {
  const MutexLock lock(nodes_.mutex_);
  blocks_ = nullptr;
  nodes_.giveBack(std::move(state_));
}

Position SearchTurn::search(const RouteRequest& request, const Links& links) {
  const GridGraph& graph = nodes_.graph;
  state_->clear();
  const Position start = graph.find(request.startId);
  if (start == noPosition) return noPosition;
  for (const std::int64_t id : request.goalIds) {
    Position goal = graph.find(id);
    // The id of a goal that is not there reads as 0.
    if (goal == noPosition) goal = graph.find(0);
    if (goal != noPosition) state_->markGoal(goal);
  }
  return searchGraph(graph.graph, links, *state_, start, graph.rankLimit(request.accessLevel));
}

void SearchTurn::searchWhole(Position start, std::int64_t accessLevel, const Links& links,
                             std::vector<Settled>& settled) {
  const GridGraph& graph = nodes_.graph;
  state_->clear();
  detail::searchWhole(graph.graph, links, *state_, start, graph.rankLimit(accessLevel), settled);
}

std::vector<Position> SearchTurn::routeTo(Position end) const {
  std::vector<Position> route = state_->chainTo(end);
  std::ranges::reverse(route);
  return route;
}

}  // namespace tern::detail
