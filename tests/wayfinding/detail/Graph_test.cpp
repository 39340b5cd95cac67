#include "TernCoreKit/wayfinding/detail/Graph.hpp"

#include <gtest/gtest.h>

#include "TernCoreKit/wayfinding/detail/GraphSearch.hpp"

namespace tern::detail {
namespace {

constexpr std::uint32_t oneRound = NodeState::stageCount;
constexpr std::uint32_t lastRound = 0U - oneRound;

// 0 - 1 - 2, open both ways, each link of cost 1.
Graph threeInARow() {
  Graph graph;
  graph.links = {{1, 1, 1, 0}, {0, 1, 1, 0}, {2, 1, 1, 0}, {1, 1, 1, 0}};
  graph.states.resize(3);
  graph.states[0].endLink = 1;
  graph.states[1].firstLink = 1;
  graph.states[1].endLink = 3;
  graph.states[2].firstLink = 3;
  graph.states[2].endLink = 4;
  return graph;
}

Position searchAnew(Graph& graph, Position start, Position goal) {
  graph.clearSearch();
  markGoal(graph, goal);
  return searchGraph(graph, start, 1);
}

void expectCleared(const Graph& graph) {
  for (const NodeState& state : graph.states) {
    EXPECT_GE(graph.stage(state), NodeState::stageCount);
    EXPECT_FALSE(graph.isVisited(state));
  }
  EXPECT_TRUE(graph.openEntries().empty());
}

TEST(Graph, isClearedBeforeTheFirstSearch) { expectCleared(threeInARow()); }

TEST(Graph, clearingForgetsStagesAndTheOpenList) {
  Graph graph = threeInARow();
  ASSERT_EQ(searchAnew(graph, 1, 2), 2U);
  EXPECT_EQ(graph.stage(graph.states[1]), NodeState::closed);
  EXPECT_EQ(graph.stage(graph.states[0]), NodeState::closed);
  EXPECT_EQ(graph.stage(graph.states[2]), NodeState::visitedGoal);
  graph.clearSearch();
  expectCleared(graph);
}

TEST(Graph, nothingLeadsToTheStart) {
  Graph graph = threeInARow();
  searchAnew(graph, 1, 2);
  EXPECT_FALSE(graph.isVisited(graph.states[1]));
  EXPECT_TRUE(graph.isVisited(graph.states[0]));
  EXPECT_TRUE(graph.isVisited(graph.states[2]));
  searchAnew(graph, 0, 2);
  EXPECT_FALSE(graph.isVisited(graph.states[0])) << "whatever it was to the search before";
}

TEST(Graph, goalThatIsOnlyWantedIsNotVisited) {
  Graph graph = threeInARow();
  graph.clearSearch();
  markGoal(graph, 2);
  EXPECT_EQ(graph.stage(graph.states[2]), NodeState::wanted);
  EXPECT_FALSE(graph.isVisited(graph.states[2]));
}

TEST(Graph, keepsWhatTheSearchLeftOnTheOpenList) {
  Graph graph = threeInARow();
  searchAnew(graph, 1, 0);
  ASSERT_EQ(graph.openEntries().size(), 1U);
  EXPECT_EQ(graph.openEntries()[0].position(), 2U);
}

// The numbers of searches run out after 2^30 of them; a mark of the first ones must not come alive
// again.
TEST(Graph, numbersOfSearchesRunOutWithoutATrace) {
  Graph graph = threeInARow();
  searchAnew(graph, 0, 2);
  const std::uint32_t early = graph.round;
  graph.round = lastRound - oneRound;
  for (int i = 0; i < 4; ++i) {
    EXPECT_EQ(searchAnew(graph, 0, 2), 2U);
    EXPECT_EQ(graph.states[2].score, 2);
    EXPECT_EQ(graph.stage(graph.states[1]), NodeState::closed);
    graph.clearSearch();
    expectCleared(graph);
  }
  EXPECT_LE(graph.round, early + 8 * oneRound) << "they have started over";
  EXPECT_NE(graph.round, 0U);
}

TEST(Graph, marksOfTheLastNumberAreClearedWhenNumbersStartOver) {
  Graph graph = threeInARow();
  graph.round = lastRound - oneRound;
  searchAnew(graph, 0, 2);
  ASSERT_EQ(graph.round, lastRound);
  graph.clearSearch();
  EXPECT_EQ(graph.round, oneRound);
  for (const NodeState& state : graph.states) EXPECT_EQ(state.mark, 0U);
}

TEST(Graph, linkToNowhereNeverOpens) {
  const Link link{noPosition, 1, 1, Link::shut};
  EXPECT_GE(link.gate, std::uint32_t{1} << 31U);
  EXPECT_EQ((Link{0, 1, 1, 5U | Link::blockedBit}).kindRank(), 5U);
}

}  // namespace
}  // namespace tern::detail
