#include "TernCoreKit/wayfinding/detail/GridNodes.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <optional>
#include <thread>

#include "TernCoreKit/model/records/TernPath.hpp"
#include "tests/support/VenueLists.hpp"

namespace tern::detail {
namespace {

using test::builtNodes;
using test::corridor;
using testing::UnorderedElementsAre;

Position search(SearchTurn& turn, std::int64_t start, std::int64_t goal) {
  const std::int64_t goals[] = {goal};
  return turn.search({start, goals, 0}, turn.links());
}

float scoreIn(const SearchTurn& turn, std::uint32_t node) {
  return turn.state().nodes[Position{node}].score;
}

void expectNoProgress(const NodeProgress& progress) {
  EXPECT_FALSE(progress.visited);
  EXPECT_FALSE(progress.closed);
  EXPECT_EQ(progress.score, 0);
  EXPECT_EQ(progress.parent, noPosition);
  EXPECT_EQ(progress.usedEdgeTypeId, -1);
}

TEST(GridNodes, untouchedNodeHasNoProgress) {
  expectNoProgress(builtNodes(corridor(2))->progress(Position{0}));
}

TEST(GridNodes, showWhatTheLastSearchLeftWhenItIsOver) {
  const auto nodes = builtNodes(corridor(3));
  {
    SearchTurn turn(*nodes);
    ASSERT_EQ(search(turn, 1, 3), Position{2});
    EXPECT_EQ(scoreIn(turn, 2), 2);
    expectNoProgress(nodes->progress(Position{2}));
  }
  EXPECT_EQ(nodes->progress(Position{2}).score, 2);
  EXPECT_EQ(nodes->chainTo(Position{2}).size(), 3U);
}

TEST(GridNodes, searchesOneBehindTheOtherShareOneState) {
  const auto nodes = builtNodes(corridor(3));
  const SearchState* first = nullptr;
  {
    SearchTurn turn(*nodes);
    first = &turn.state();
  }
  EXPECT_EQ(&SearchTurn(*nodes).state(), first);
}

TEST(GridNodes, aThreadGetsTheStateThatItUsedBefore) {
  const auto nodes = builtNodes(corridor(3));
  const SearchState* own = nullptr;
  std::optional<SearchTurn> others;
  {
    const SearchTurn turn(*nodes);
    own = &turn.state();
    std::thread([&] { others.emplace(*nodes); }).join();
  }
  const SearchState* const second = &others->state();
  others.reset();
  EXPECT_EQ(&SearchTurn(*nodes).state(), own) << "though the other was given back last";
  std::thread([&] {
    const SearchTurn first(*nodes);
    const SearchTurn next(*nodes);
    EXPECT_THAT((std::array{&first.state(), &next.state()}), UnorderedElementsAre(own, second))
        << "no new one is made while there are others";
  }).join();
}

TEST(GridNodes, searchesSideBySideDoNotDisturbEachOther) {
  const auto nodes = builtNodes(corridor(4));
  {
    SearchTurn first(*nodes);
    SearchTurn second(*nodes);
    SearchTurn third(*nodes);
    ASSERT_EQ(search(first, 1, 4), Position{3});
    ASSERT_EQ(search(second, 2, 4), Position{3});
    ASSERT_EQ(search(third, 3, 4), Position{3});
    EXPECT_EQ(scoreIn(first, 3), 3);
    EXPECT_EQ(scoreIn(second, 3), 2);
  }
  EXPECT_EQ(nodes->progress(Position{3}).score, 3) << "the first was given back last";
}

TEST(GridNodes, searchSeesTheBlocksOfTheMomentWhenItBegan) {
  const auto nodes = builtNodes(corridor(3));
  nodes->blockEdges(Position{0}, 2, true);
  SearchTurn turn(*nodes);
  nodes->blockEdges(Position{0}, 2, false);
  nodes->blockEdges(Position{1}, 3, true);
  EXPECT_EQ(search(turn, 1, 2), noPosition);
  EXPECT_EQ(search(turn, 2, 3), Position{2});
  SearchTurn later(*nodes);
  EXPECT_EQ(search(later, 1, 2), Position{1});
  EXPECT_EQ(search(later, 2, 3), noPosition);
}

}  // namespace
}  // namespace tern::detail
