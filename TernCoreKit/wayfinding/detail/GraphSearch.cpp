#include "TernCoreKit/wayfinding/detail/GraphSearch.hpp"

#include "TernCoreKit/wayfinding/detail/OpenList.hpp"

namespace tern::detail {

void markGoal(Graph& graph, Position position) {
  graph.states[position].mark = graph.round + NodeState::wanted;
}

namespace {

// From this size on a graph outgrows the nearer caches, and fetching ahead pays for itself.
constexpr std::size_t largeGraph = 150'000;

template <class Order, bool fetchesAhead>
class Loop {
 public:
  explicit Loop(Graph& graph)
      : graph_(graph),
        states_(graph.states.data()),
        links_(graph.links.data()),
        round_(graph.round),
        open_(graph) {}

  Position run(Position start, std::uint32_t gateLimit) {
    const Position end = settle(start, gateLimit);
    graph_.openCount = open_.size();
    return end;
  }

 private:
  Position settle(Position start, std::uint32_t gateLimit) {
    begin(start);
    while (!open_.isEmpty()) {
      const Position at = open_.first();
      open_.removeFirst();
      NodeState& current = states_[at];
      if (current.mark == round_ + NodeState::visitedGoal) return at;
      current.mark = round_ + NodeState::closed;
      if (fetchesAhead && !open_.isEmpty()) fetchNeighbours(states_[open_.first()]);
      expand(at, current, gateLimit);
    }
    return noPosition;
  }

  void begin(Position start) {
    NodeState& first = states_[start];
    first.score = 0;
    first.distance = 0;
    first.parent = noPosition;
    open(start, first, 0);
  }

  void open(Position at, NodeState& node, float score) {
    const bool isGoal = node.mark == round_ + NodeState::wanted;
    node.mark = round_ + (isGoal ? NodeState::visitedGoal : NodeState::visited);
    open_.insert(at, score);
  }

  // The first of the open list is most often the next to be settled.
  void fetchNeighbours(const NodeState& next) const {
    for (std::uint32_t i = next.firstLink; i < next.endLink; ++i) {
      if (links_[i].target != noPosition) __builtin_prefetch(&states_[links_[i].target]);
    }
  }

  void expand(Position at, const NodeState& current, std::uint32_t gateLimit) {
    const float score = current.score;
    const float distance = current.distance;
    const Link* const end = links_ + current.endLink;
    for (const Link* link = links_ + current.firstLink; link != end; ++link) {
      if (link->gate < gateLimit) relax(at, score, distance, *link);
    }
  }

  // Gives the neighbour what the link offers, when that is better than what it has.
  void relax(Position at, float score, float distance, const Link& link) {
    NodeState& node = states_[link.target];
    const std::uint32_t stage = node.mark - round_;
    if (stage == NodeState::closed) return;
    const float tentative = score + link.cost;
    const bool isVisited = stage - NodeState::visited < 2;
    if (isVisited && !(tentative < node.score)) return;
    node.score = tentative;
    node.distance = distance + link.distance;
    node.parent = at;
    node.usedKind = link.gate;
    if (isVisited) {
      open_.rewriteScore(node, tentative);
      return;
    }
    if (fetchesAhead) __builtin_prefetch(links_ + node.firstLink);
    open(link.target, node, tentative);
  }

  Graph& graph_;
  NodeState* const states_;
  const Link* const links_;
  const std::uint32_t round_;
  OpenList<Order> open_;
};

}  // namespace

Position searchGraph(Graph& graph, Position start, std::uint32_t gateLimit) {
  if (!graph.costsArePlain) return Loop<AnyOrder, false>(graph).run(start, gateLimit);
  if (graph.states.size() < largeGraph) return Loop<PlainOrder, false>(graph).run(start, gateLimit);
  return Loop<PlainOrder, true>(graph).run(start, gateLimit);
}

}  // namespace tern::detail
