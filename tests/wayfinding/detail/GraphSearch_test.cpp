#include "TernCoreKit/wayfinding/detail/GraphSearch.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <bit>
#include <limits>
#include <tuple>
#include <utility>

namespace tern::detail {
namespace {

using testing::ElementsAre;

struct Arc {
  std::uint32_t from;
  std::uint32_t to;
  float cost;
  std::uint32_t rank = 0;
};

constexpr std::uint32_t nowhere = numberOf(noPosition);

Graph graphOf(std::size_t nodes, const std::vector<Arc>& arcs) {
  Graph graph;
  for (std::uint32_t node = 0; node < nodes; ++node) {
    graph.firstLink.push_back(graph.links.endIndex());
    for (const Arc& arc : arcs) {
      if (arc.from == node) {
        graph.links.push_back({Position{arc.to}, arc.cost, TypeRank{arc.rank}});
      }
    }
  }
  graph.firstLink.push_back(graph.links.endIndex());
  graph.costsArePlain = std::ranges::all_of(arcs, [](const Arc& arc) { return arc.cost >= 0; });
  return graph;
}

// A graph with a state to search it.
struct Searched {
  explicit Searched(Graph of) : graph(std::move(of)), state(graph) {}
  Searched(std::size_t nodes, const std::vector<Arc>& arcs) : Searched(graphOf(nodes, arcs)) {}

  std::uint32_t search(std::uint32_t start, std::vector<std::uint32_t> goals,
                       std::uint32_t limit = 1) {
    state.clear();
    for (const std::uint32_t goal : goals) {
      if (goal != nowhere) state.markGoal(Position{goal});
    }
    return numberOf(searchGraph(graph, links, state, Position{start}, TypeRank{limit}));
  }
  const NodeState& node(std::uint32_t at) const { return state.nodes[Position{at}]; }
  std::vector<std::uint32_t> chain(std::uint32_t end) const {
    std::vector<std::uint32_t> chain;
    for (const Position at : state.chainTo(Position{end})) chain.push_back(numberOf(at));
    return chain;
  }

  Graph graph;
  SearchState state;
  Links links = graph.links;
};

TEST(GraphSearch, startThatIsAGoalIsFoundAtOnce) {
  Searched searched(2, {{0, 1, -1}});
  EXPECT_EQ(searched.search(0, {0}), 0U);
  EXPECT_EQ(searched.state.stage(Position{0}), NodeState::visitedGoal) << "it is not expanded";
  EXPECT_FALSE(searched.state.isVisited(Position{1}));
}

TEST(GraphSearch, givesNothingWhereNoGoalIsReached) {
  Searched searched(3, {{0, 1, 1}, {2, 0, 1}});
  EXPECT_EQ(searched.search(0, {2}), nowhere);
  EXPECT_EQ(searched.search(0, {}), nowhere);
  EXPECT_EQ(searched.state.openCount, 0U);
  EXPECT_EQ(searched.search(0, {1}), 1U) << "the next search is not disturbed";
}

TEST(GraphSearch, addsUpCosts) {
  Searched searched(4, {{0, 1, 1}, {1, 2, 2}, {0, 2, 5}, {2, 3, 0.5F}});
  ASSERT_EQ(searched.search(0, {3}), 3U);
  EXPECT_EQ(searched.node(3).score, 3.5F);
  EXPECT_THAT(searched.chain(3), ElementsAre(3, 2, 1, 0));
}

TEST(GraphSearch, findsTheNearestOfSeveralGoals) {
  Searched searched(4, {{0, 1, 3}, {0, 2, 2}, {0, 3, 4}});
  EXPECT_EQ(searched.search(0, {1, 2, 3}), 2U);
}

TEST(GraphSearch, takesOnlyLinksWhoseRanksLieBelowTheLimit) {
  Searched searched(3, {{0, 2, 1, 2}, {0, 1, 3, 0}, {1, 2, 3, 1}});
  EXPECT_EQ(searched.search(0, {2}, 1), nowhere);
  ASSERT_EQ(searched.search(0, {2}, 2), 2U);
  EXPECT_THAT(searched.chain(2), ElementsAre(2, 1, 0));
  ASSERT_EQ(searched.search(0, {2}, 3), 2U);
  EXPECT_THAT(searched.chain(2), ElementsAre(2, 0));
  EXPECT_EQ(searched.node(2).link, LinkIndex{0});
}

TEST(GraphSearch, linksToNowhereStayShut) {
  Searched searched(2, {{0, nowhere, 1, nowhere}});
  EXPECT_EQ(searched.search(0, {1}, std::numeric_limits<std::int32_t>::max()), nowhere);
}

TEST(GraphSearch, earlierParentStaysOnEqualCost) {
  Searched searched(4, {{0, 1, 1}, {0, 2, 1}, {1, 3, 1}, {2, 3, 1}});
  ASSERT_EQ(searched.search(0, {3}), 3U);
  EXPECT_THAT(searched.chain(3), ElementsAre(3, 1, 0));
}

TEST(GraphSearch, chainLeadsFromTheNodeToTheStart) {
  Searched searched(6, {{0, 4, 1}, {4, 5, 1}, {5, 1, 1}, {1, 3, 1}});
  ASSERT_EQ(searched.search(0, {3}), 3U);
  EXPECT_THAT(searched.chain(3), ElementsAre(3, 1, 5, 4, 0));
  EXPECT_THAT(searched.chain(0), ElementsAre(0));
  EXPECT_THAT(searched.chain(2), ElementsAre(2)) << "where no search came";
}

TEST(GraphSearch, closedNodesAreNotOpenedAgainByNegativeCosts) {
  Searched searched(4, {{0, 1, 1}, {0, 2, 2}, {2, 1, -5}, {1, 0, -9}, {1, 3, 4}});
  ASSERT_EQ(searched.search(0, {3}), 3U);
  EXPECT_EQ(searched.node(1).score, 1);
  EXPECT_EQ(searched.node(3).score, 5);
}

// When the score of 5 drops from 8 to 2, it lies two levels below the root of the open list. Moved
// up it would be closed before the goal is found; it stays where it is and is not.
TEST(GraphSearch, openListIsNotReorderedWhenAScoreDrops) {
  Searched searched(9, {{0, 1, 1},
                        {0, 2, 4},
                        {0, 3, 6},
                        {0, 4, 7},
                        {0, 5, 8},
                        {0, 7, 9},
                        {0, 8, 10},
                        {1, 5, 1},
                        {2, 6, 1}});
  ASSERT_EQ(searched.search(0, {6}), 6U);
  EXPECT_EQ(searched.node(6).score, 5);
  EXPECT_EQ(searched.node(5).score, 2);
  EXPECT_EQ(searched.state.stage(Position{5}), NodeState::visited);
}

// States of two searches of the same graph, as far as a reader sees them.
void expectSameStates(const SearchState& a, const SearchState& b, std::size_t count) {
  for (std::uint32_t i = 0; i < count; ++i) {
    const auto seen = [&](const SearchState& state) {
      const NodeState& node = state.nodes[Position{i}];
      const bool visited = state.isVisited(Position{i});
      return std::tuple(std::min(state.stage(Position{i}), NodeState::stageCount), visited,
                        visited ? std::bit_cast<std::uint32_t>(node.score) : 0,
                        visited ? numberOf(node.parent) : 0, visited ? numberOf(node.link) : 0);
    };
    RC_ASSERT(seen(a) == seen(b));
  }
}

constexpr std::uint32_t nodeCount = 24;

Graph randomGraph(int leastCost) {
  const auto arcs =
      *rc::gen::container<std::vector<Arc>>(
          rc::gen::apply(
              [](std::uint32_t from, std::uint32_t to, int cost, std::uint32_t rank) {
                const bool isShut = to == nodeCount;
                return Arc{from, isShut ? nowhere : to, static_cast<float>(cost) * 0.25F,
                           isShut ? nowhere : rank};
              },
              rc::gen::inRange<std::uint32_t>(0, nodeCount),
              rc::gen::inRange<std::uint32_t>(0, nodeCount + 1), rc::gen::inRange(leastCost, 12),
              rc::gen::inRange<std::uint32_t>(0, 3)));
  return graphOf(nodeCount, arcs);
}

std::uint32_t anyNode() { return *rc::gen::inRange<std::uint32_t>(0, nodeCount); }

// What a search fetches ahead in a large graph changes nothing.
RC_GTEST_PROP(GraphSearch, sizeOfTheGraphDoesNotChangeTheAnswer, ()) {
  Searched searched(randomGraph(-2));
  Graph enlarged = searched.graph;
  enlarged.firstLink.resize(200'000, enlarged.firstLink.back());
  Searched large(std::move(enlarged));
  for (int i = 0; i < 3; ++i) {
    const auto start = anyNode();
    const auto goal = anyNode();
    RC_ASSERT(searched.search(start, {goal}, 2) == large.search(start, {goal}, 2));
    expectSameStates(searched.state, large.state, nodeCount);
  }
}

RC_GTEST_PROP(GraphSearch, bothOrdersAgreeOnPlainCosts, ()) {
  Searched searched(randomGraph(0));
  Searched careful(searched.graph);
  careful.graph.costsArePlain = false;
  const auto start = anyNode();
  const auto goal = anyNode();
  RC_ASSERT(searched.search(start, {goal}, 2) == careful.search(start, {goal}, 2));
  expectSameStates(searched.state, careful.state, nodeCount);
}

RC_GTEST_PROP(GraphSearch, reusedStateAnswersAsAFreshOne, ()) {
  const Graph graph = randomGraph(-2);
  Searched reused(graph);
  reused.state.round = std::numeric_limits<std::uint32_t>::max() - 23;
  for (int i = 0; i < 6; ++i) {
    const auto start = anyNode();
    const auto goal = *rc::gen::element<std::uint32_t>(0, 1, 2, 3, nodeCount - 1, nowhere);
    Searched once(graph);
    RC_ASSERT(once.search(start, {goal}, 3) == reused.search(start, {goal}, 3));
    expectSameStates(once.state, reused.state, nodeCount);
  }
}

// A graph without the closed links answers the same.
RC_GTEST_PROP(GraphSearch, closedLinksAreAsIfTheyWereNotThere, ()) {
  Searched searched(randomGraph(-2));
  Searched cut(searched.graph);
  for (LinkIndex link{0}; link < searched.graph.links.endIndex(); ++link) {
    if (searched.links[link].target == noPosition || !*rc::gen::arbitrary<bool>()) continue;
    searched.links[link].setClosed(true);
    cut.links[link].rank = none<TypeRank>;
  }
  const auto start = anyNode();
  const auto goal = anyNode();
  RC_ASSERT(searched.search(start, {goal}, 3) == cut.search(start, {goal}, 3));
  expectSameStates(searched.state, cut.state, nodeCount);
}

}  // namespace
}  // namespace tern::detail
