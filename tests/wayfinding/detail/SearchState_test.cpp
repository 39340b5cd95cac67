#include "TernCoreKit/wayfinding/detail/SearchState.hpp"

#include <gtest/gtest.h>

#include "TernCoreKit/wayfinding/detail/GraphSearch.hpp"

namespace tern::detail {
namespace {

constexpr std::uint32_t oneRound = NodeState::stageCount;
constexpr std::uint32_t lastRound = 0U - oneRound;

// 0 - 1 - 2, open both ways, each link of cost 1.
Graph threeInARow() {
  constexpr TypeRank type{0};
  Graph graph;
  graph.links = {{Position{1}, 1, type},
                 {Position{0}, 1, type},
                 {Position{2}, 1, type},
                 {Position{1}, 1, type}};
  graph.firstLink = {LinkIndex{0}, LinkIndex{1}, LinkIndex{3}, LinkIndex{4}};
  return graph;
}

struct ThreeSearched {
  Graph graph = threeInARow();
  SearchState state{graph};

  std::uint32_t searchAnew(std::uint32_t start, std::uint32_t goal) {
    state.clear();
    state.markGoal(Position{goal});
    return numberOf(searchGraph(graph, graph.links, state, Position{start}, TypeRank{1}));
  }
  std::uint32_t stage(std::uint32_t at) const { return state.stage(Position{at}); }
  bool isVisited(std::uint32_t at) const { return state.isVisited(Position{at}); }
};

void expectCleared(const SearchState& state) {
  for (std::uint32_t i = 0; i < state.nodes.size(); ++i) {
    EXPECT_GE(state.stage(Position{i}), NodeState::stageCount);
    EXPECT_FALSE(state.isVisited(Position{i}));
  }
  EXPECT_TRUE(state.openEntries().empty());
}

TEST(SearchState, isClearedBeforeTheFirstSearch) { expectCleared(SearchState(3)); }

TEST(SearchState, clearingForgetsStagesAndTheOpenList) {
  ThreeSearched searched;
  SearchState& state = searched.state;
  ASSERT_EQ(searched.searchAnew(1, 2), 2U);
  EXPECT_EQ(searched.stage(1), NodeState::closed);
  EXPECT_EQ(searched.stage(0), NodeState::closed);
  EXPECT_EQ(searched.stage(2), NodeState::visitedGoal);
  state.clear();
  expectCleared(state);
}

TEST(SearchState, nothingLeadsToTheStart) {
  ThreeSearched searched;
  searched.searchAnew(1, 2);
  EXPECT_FALSE(searched.isVisited(1));
  EXPECT_TRUE(searched.isVisited(0));
  EXPECT_TRUE(searched.isVisited(2));
  searched.searchAnew(0, 2);
  EXPECT_FALSE(searched.isVisited(0)) << "whatever it was to the search before";
}

TEST(SearchState, goalThatIsOnlyWantedIsNotVisited) {
  ThreeSearched searched;
  SearchState& state = searched.state;
  state.clear();
  state.markGoal(Position{2});
  EXPECT_EQ(searched.stage(2), NodeState::wanted);
  EXPECT_FALSE(searched.isVisited(2));
}

TEST(SearchState, keepsWhatTheSearchLeftOnTheOpenList) {
  ThreeSearched searched;
  SearchState& state = searched.state;
  searched.searchAnew(1, 0);
  ASSERT_EQ(state.openEntries().size(), 1U);
  EXPECT_EQ(state.openEntries()[0].position(), Position{2});
}

// The numbers of searches run out after 2^30 of them; a mark of the first ones must not come alive
// again.
TEST(SearchState, numbersOfSearchesRunOutWithoutATrace) {
  ThreeSearched searched;
  SearchState& state = searched.state;
  searched.searchAnew(0, 2);
  const std::uint32_t early = state.round;
  state.round = lastRound - oneRound;
  for (int i = 0; i < 4; ++i) {
    EXPECT_EQ(searched.searchAnew(0, 2), 2U);
    EXPECT_EQ(state.nodes[Position{2}].score, 2);
    EXPECT_EQ(searched.stage(1), NodeState::closed);
    state.clear();
    expectCleared(state);
  }
  EXPECT_LE(state.round, early + 8 * oneRound) << "they have started over";
  EXPECT_NE(state.round, 0U);
}

TEST(SearchState, marksOfTheLastNumberAreClearedWhenNumbersStartOver) {
  ThreeSearched searched;
  SearchState& state = searched.state;
  state.round = lastRound - oneRound;
  searched.searchAnew(0, 2);
  ASSERT_EQ(state.round, lastRound);
  state.clear();
  EXPECT_EQ(state.round, oneRound);
  for (const NodeState& node : state.nodes) EXPECT_EQ(node.mark, 0U);
}

}  // namespace
}  // namespace tern::detail
