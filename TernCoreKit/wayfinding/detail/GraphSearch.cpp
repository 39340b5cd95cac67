#include "TernCoreKit/wayfinding/detail/GraphSearch.hpp"

#include "TernCoreKit/wayfinding/detail/OpenList.hpp"

namespace tern::inline v5::detail {

namespace {

// From this size on a graph outgrows the nearer caches, and fetching ahead pays for itself.
constexpr std::size_t largeGraph = 150'000;

// What becomes of the nodes that are closed.
struct Forgotten {
  void add(Position, const NodeState&) {}
};
struct Listed {
  Settled* next;
  void add(Position at, const NodeState& closed) { *next++ = {at, closed.parent, closed.link}; }
};

template <class Order, bool fetchesAhead, class Closed>
class Loop {
 public:
  Loop(const Links& links, SearchState& state, Closed& closed)
      : closed_(closed),
        links_(links.data()),
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

  Position settle(Position start, TypeRank limit) {
    begin(start);
    while (!open_.isEmpty()) {
      const Position at = open_.first();
      open_.removeFirst();
      NodeState& current = node(at);
      if (current.mark == round_ + NodeState::visitedGoal) return at;
      current.mark = round_ + NodeState::closed;
      closed_.add(at, current);
      if (fetchesAhead && !open_.isEmpty()) fetchNeighbours(node(open_.first()));
      expand(at, current, limit);
    }
    return noPosition;
  }

  void begin(Position start) {
    NodeState& first = node(start);
    first.score = 0;
    first.parent = noPosition;
    open(start, first, 0);
  }

  void open(Position at, NodeState& opened, float score) {
    const bool isGoal = opened.mark == round_ + NodeState::wanted;
    opened.mark = round_ + (isGoal ? NodeState::visitedGoal : NodeState::visited);
    open_.insert(at, score);
  }

  // The first of the open list is most often the next to be settled.
  void fetchNeighbours(const NodeState& next) const {
    for (LinkIndex i = next.firstLink; i < next.endLink; ++i) {
      const Position target = links_[numberOf(i)].target;
      if (target != noPosition) __builtin_prefetch(&node(target));
    }
  }

  void expand(Position at, const NodeState& current, TypeRank limit) {
    const float score = current.score;
    const LinkIndex end = current.endLink;
    for (LinkIndex i = current.firstLink; i < end; ++i) {
      const Link& link = links_[numberOf(i)];
      if (link.rank < limit) relax(at, i, score + link.cost, link.target);
    }
  }

  // Gives the neighbour what the link offers, when that is better than what it has.
  void relax(Position from, LinkIndex link, float tentative, Position to) {
    NodeState& target = node(to);
    const std::uint32_t stage = target.mark - round_;
    if (stage == NodeState::closed) return;
    const bool isVisited = stage - NodeState::visited < 2;
    if (isVisited && !(tentative < target.score)) return;
    target.score = tentative;
    target.parent = from;
    target.link = link;
    if (isVisited) {
      open_.rewriteScore(target, tentative);
      return;
    }
    if (fetchesAhead) __builtin_prefetch(links_ + numberOf(target.firstLink));
    open(to, target, tentative);
  }

  Closed& closed_;
  const Link* const links_;
  SearchState& state_;
  NodeState* const nodes_;
  const std::uint32_t round_;
  OpenList<Order> open_;
};

template <class Closed>
Position search(const Graph& graph, const Links& links, SearchState& state, Position start,
                TypeRank limit, Closed& closed) {
  if (!graph.costsArePlain) {
    return Loop<AnyOrder, false, Closed>(links, state, closed).run(start, limit);
  }
  if (graph.nodeCount() < largeGraph) {
    return Loop<PlainOrder, false, Closed>(links, state, closed).run(start, limit);
  }
  return Loop<PlainOrder, true, Closed>(links, state, closed).run(start, limit);
}

}  // namespace

Position searchGraph(const Graph& graph, const Links& links, SearchState& state, Position start,
                     TypeRank limit) {
  Forgotten closed;
  return search(graph, links, state, start, limit, closed);
}

void searchWhole(const Graph& graph, const Links& links, SearchState& state, Position start,
                 TypeRank limit, std::vector<Settled>& settled) {
  settled.resize(graph.nodeCount());
  Listed closed{settled.data()};
  search(graph, links, state, start, limit, closed);
  settled.resize(static_cast<std::size_t>(closed.next - settled.data()));
}

}  // namespace tern::detail
