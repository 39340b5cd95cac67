#include "TernCoreKit/wayfinding/detail/NodeCopies.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "TernCoreKit/wayfinding/detail/StandaloneNodes.hpp"

namespace tern::detail {
namespace {

using testing::ElementsAre;

constexpr Position only{0};
constexpr Position onlyOne[] = {only};

// A node with edges to 2, to 3, and to both.
std::shared_ptr<StandaloneNodes> original() {
  StandaloneNode node;
  node.facts.nodeId = 1;
  node.progress.visited = true;
  node.distance = 7;
  node.progress.score = 5;
  for (std::vector<std::int64_t> nodes :
       {std::vector<std::int64_t>{1, 2}, std::vector<std::int64_t>{3, 1},
        std::vector<std::int64_t>{1, 2, 3}}) {
    node.edges.push_back(TernASEdge::initASEdge(1, std::move(nodes), 1, 1, 0, 0, 0));
  }
  return std::make_shared<StandaloneNodes>(Indexed<Position, StandaloneNode>{node});
}

std::vector<bool> marks(const NodeSource& nodes) {
  std::vector<bool> marks;
  for (const TernASEdge& edge : nodes.edges(only)) marks.push_back(edge.blocked);
  return marks;
}

TEST(NodeCopies, blocksOfTheOriginalDoNotReachThem) {
  const auto source = original();
  source->blockEdges(only, 3, true);
  NodeCopies copies;
  copies.add(source, onlyOne);
  source->blockEdges(only, std::nullopt, false);
  EXPECT_THAT(marks(copies), ElementsAre(false, true, true));
  EXPECT_TRUE(copies.isEdgeBlocked(only, 3));
  EXPECT_FALSE(copies.isEdgeBlocked(only, 2));
}

TEST(NodeCopies, theirOwnBlocksDoNotReachTheOriginal) {
  const auto source = original();
  NodeCopies copies;
  copies.add(source, onlyOne);
  copies.blockEdges(only, 2, true);
  EXPECT_THAT(marks(copies), ElementsAre(true, false, true));
  EXPECT_THAT(marks(*source), ElementsAre(false, false, false));
}

TEST(NodeCopies, clearedOriginalsLeaveThemAsTheyWere) {
  const auto source = original();
  NodeCopies copies;
  copies.add(source, onlyOne);
  copies.add(source, onlyOne);
  copies.setParent(only, Position{1});
  source->clearProgress(only);
  EXPECT_EQ(copies.progress(only).score, 5);
  EXPECT_EQ(copies.distances(onlyOne).front(), 7);
  EXPECT_THAT(copies.chainTo(only), ElementsAre(only, Position{1}));
  EXPECT_THAT(copies.chainTo(Position{1}), ElementsAre(Position{1}));
}

TEST(NodeCopies, copyOfACopyIsLikeIt) {
  const auto copies = std::make_shared<NodeCopies>();
  copies->add(original(), onlyOne);
  copies->blockEdges(only, 2, true);
  NodeCopies again;
  again.add(copies, onlyOne);
  EXPECT_THAT(marks(again), ElementsAre(true, false, true));
  EXPECT_EQ(again.facts(only).nodeId, 1);
}

TEST(NodeCopies, copyOfACopyIsOfTheSameOriginalWhereverTheCopyStands) {
  const auto copies = std::make_shared<NodeCopies>();
  const auto source = original();
  copies->add(source, onlyOne);
  copies->add(source, onlyOne);
  const Position second[] = {Position{1}};
  NodeCopies again;
  again.add(copies, second);
  EXPECT_EQ(again.facts(only).nodeId, 1);
}

}  // namespace
}  // namespace tern::detail
