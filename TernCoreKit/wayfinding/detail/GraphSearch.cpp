#include "TernCoreKit/wayfinding/detail/GraphSearch.hpp"

#include "TernCoreKit/wayfinding/detail/OpenList.hpp"

namespace tern::inline v5::detail {

namespace {

// From this size on a graph outgrows the nearer caches, and fetching ahead pays for itself.
constexpr std::size_t largeGraph = 150'000;

template <class Order, bool fetchesAhead, bool hasBlocks>
class Loop {
 public:
  Loop(const Graph& graph, const Blocks* blocks, SearchState& state)
      : firstLinks_(graph.firstLink.data()),
        links_(graph.links.data()),
        blocks_(blocks),
        state_(state),
        nodes_(state.nodes.data()),
        round_(state.round),
        open_(state) {}

  Position run(Position start, TypeRank limit) {
    const Position end = settle(start, limit);
    state_.openCount = open_.size();
    return end;
  }

 private:
  NodeState& node(Position at) const { return nodes_[numberOf(at)]; }
  std::uint32_t firstLink(Position at) const { return numberOf(firstLinks_[numberOf(at)]); }
  std::uint32_t endLink(Position at) const { return numberOf(firstLinks_[numberOf(at) + 1]); }

  Position settle(Position start, TypeRank limit) {
    begin(start);
    while (!open_.isEmpty()) {
      const Position at = open_.first();
      open_.removeFirst();
      NodeState& current = node(at);
      if (current.mark == round_ + NodeState::visitedGoal) return at;
      current.mark = round_ + NodeState::closed;
      if (fetchesAhead && !open_.isEmpty()) fetchNeighbours(open_.first());
      expand(at, current, limit);
    }
    return noPosition;
  }

  void begin(Position start) {
    NodeState& first = node(start);
    first.score = 0;
    first.distance = 0;
    first.parent = noPosition;
    open(start, first, 0);
  }

  void open(Position at, NodeState& opened, float score) {
    const bool isGoal = opened.mark == round_ + NodeState::wanted;
    opened.mark = round_ + (isGoal ? NodeState::visitedGoal : NodeState::visited);
    open_.insert(at, score);
  }

  // The first of the open list is most often the next to be settled.
  void fetchNeighbours(Position next) const {
    const std::uint32_t end = endLink(next);
    for (std::uint32_t i = firstLink(next); i < end; ++i) {
      if (links_[i].target != noPosition) __builtin_prefetch(&node(links_[i].target));
    }
  }

  void expand(Position at, const NodeState& current, TypeRank limit) {
    const float score = current.score;
    const float distance = current.distance;
    const std::uint32_t end = endLink(at);
    for (std::uint32_t i = firstLink(at); i < end; ++i) {
      if (hasBlocks && blocks_->links.has(LinkIndex{i})) continue;
      if (links_[i].rank < limit) relax(at, score, distance, links_[i]);
    }
  }

  // Gives the neighbour what the link offers, when that is better than what it has.
  void relax(Position at, float score, float distance, const Link& link) {
    NodeState& target = node(link.target);
    const std::uint32_t stage = target.mark - round_;
    if (stage == NodeState::closed) return;
    const float tentative = score + link.cost;
    const bool isVisited = stage - NodeState::visited < 2;
    if (isVisited && !(tentative < target.score)) return;
    target.score = tentative;
    target.distance = distance + link.distance;
    target.parent = at;
    target.usedType = link.rank;
    if (isVisited) {
      open_.rewriteScore(target, tentative);
      return;
    }
    if (fetchesAhead) __builtin_prefetch(links_ + firstLink(link.target));
    open(link.target, target, tentative);
  }

  const LinkIndex* const firstLinks_;
  const Link* const links_;
  const Blocks* const blocks_;
  SearchState& state_;
  NodeState* const nodes_;
  const std::uint32_t round_;
  OpenList<Order> open_;
};

template <bool hasBlocks>
Position search(const Graph& graph, const Blocks* blocks, SearchState& state, Position start,
                TypeRank limit) {
  if (!graph.costsArePlain) {
    return Loop<AnyOrder, false, hasBlocks>(graph, blocks, state).run(start, limit);
  }
  if (graph.nodeCount() < largeGraph) {
    return Loop<PlainOrder, false, hasBlocks>(graph, blocks, state).run(start, limit);
  }
  return Loop<PlainOrder, true, hasBlocks>(graph, blocks, state).run(start, limit);
}

}  // namespace

Position searchGraph(const Graph& graph, const Blocks* blocks, SearchState& state, Position start,
                     TypeRank limit) {
  return blocks != nullptr ? search<true>(graph, blocks, state, start, limit)
                           : search<false>(graph, nullptr, state, start, limit);
}

}  // namespace tern::detail
