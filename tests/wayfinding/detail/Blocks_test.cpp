#include "TernCoreKit/wayfinding/detail/Blocks.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "TernCoreKit/model/records/TernPath.hpp"
#include "TernCoreKit/model/records/TernWaypoint.hpp"
#include "tests/support/VenueLists.hpp"

namespace tern::detail {
namespace {

using test::pathOver;
using test::rowOfWaypoints;
using test::VenueLists;
using testing::ElementsAre;

struct Blocked {
  explicit Blocked(const VenueLists& lists)
      : nodes(test::builtNodes(lists)), graph(nodes->graph), blocks(noBlocks(graph)) {}

  void block(std::int64_t from, std::optional<std::int64_t> joining, bool block) {
    Ways ways;
    addWaysFrom(graph, graph.find(from), joining, ways);
    blocks.mark(ways.edges, ways.links, block);
  }
  // The ids of a node's neighbours whose links no block keeps shut.
  std::vector<std::int64_t> openNeighbours(std::int64_t id) const {
    const Position node = graph.find(id);
    std::vector<std::int64_t> open;
    for (LinkIndex link = graph.graph.firstLink[node]; link < graph.graph.endOf(node); ++link) {
      if (blocks.links[link].isClosed()) continue;
      open.push_back(graph.nodeId(graph.graph.links[link].target));
    }
    return open;
  }

  const std::unique_ptr<GridNodes> nodes;
  const GridGraph& graph;
  Blocks blocks;
};

TEST(Blocks, marksAreHeldOneByOne) {
  Marks<LinkIndex> marks(130);
  marks.mark(LinkIndex{64}, true);
  marks.mark(LinkIndex{129}, true);
  marks.mark(LinkIndex{129}, false);
  for (LinkIndex link{0}; numberOf(link) < 130; ++link) {
    EXPECT_EQ(marks.has(link), numberOf(link) == 64);
  }
}

TEST(Blocks, blockShutsEveryLinkToTheOther) {
  VenueLists lists = rowOfWaypoints(3);
  lists.paths = {pathOver({1, 2}), pathOver({1, 3}), pathOver({2, 1})};
  Blocked blocked(lists);
  blocked.block(1, 2, true);
  EXPECT_THAT(blocked.openNeighbours(1), ElementsAre(3));
  EXPECT_THAT(blocked.openNeighbours(2), ElementsAre(1, 1));
  blocked.block(1, 2, false);
  EXPECT_THAT(blocked.openNeighbours(1), ElementsAre(2, 3, 2));
}

// The search asks the first edge that joins the neighbour, whichever edge a link belongs to.
TEST(Blocks, markOfTheFirstEdgeDecidesForAllLinks) {
  VenueLists lists = rowOfWaypoints(3);
  lists.paths = {pathOver({1, 2, 3}), pathOver({1, 2})};
  Blocked blocked(lists);
  blocked.block(1, 3, true);
  EXPECT_TRUE(blocked.blocks.edges.has(firstEdgeJoining(blocked.graph, Position{0}, 2)));
  EXPECT_THAT(marksOf(blocked.blocks.edges, blocked.graph.edgesOf(Position{0})),
              ElementsAre(true, false));
  EXPECT_THAT(blocked.openNeighbours(1), ElementsAre());
}

TEST(Blocks, marksOfANodeWithManyLinksFollowTheSameRule) {
  constexpr std::int64_t count = 40;
  VenueLists lists = rowOfWaypoints(count);
  lists.paths = {pathOver({1, 2, 3}), pathOver({2, 1})};
  for (std::int64_t id = 4; id <= count; ++id) lists.paths.push_back(pathOver({1, id}));
  Blocked blocked(lists);
  blocked.block(1, 3, true);
  blocked.block(1, 7, true);
  const auto open = blocked.openNeighbours(1);
  EXPECT_EQ(open.size(), static_cast<std::size_t>(count - 4));
  EXPECT_THAT(open, testing::Each(testing::AllOf(testing::Gt(3), testing::Ne(7))));
  blocked.block(1, std::nullopt, false);
  EXPECT_EQ(blocked.openNeighbours(1).size(), static_cast<std::size_t>(count));
}

// The path names it 5, its record says 0: no edge joins 0, so none can be blocked towards it.
TEST(Blocks, linkToAnIdThatNoEdgeJoinsStaysOpen) {
  for (const std::int64_t count : {8, 40}) {
    VenueLists lists = rowOfWaypoints(static_cast<std::size_t>(count));
    lists.waypoints[4]->id = 0;
    for (std::int64_t id = 2; id <= count; ++id) lists.paths.push_back(pathOver({1, id}));
    Blocked blocked(lists);
    blocked.block(1, std::nullopt, true);
    EXPECT_THAT(blocked.openNeighbours(1), ElementsAre(0));
  }
}

TEST(Blocks, waypointsOfOneIdHaveMarksOfTheirOwn) {
  VenueLists lists = rowOfWaypoints(2);
  lists.waypoints.push_back(lists.waypoints[0]);
  lists.paths = {pathOver({1, 2})};
  const auto nodes = test::builtNodes(lists);
  nodes->blockEdges(Position{2}, std::nullopt, true);
  EXPECT_FALSE(nodes->isEdgeBlocked(Position{0}, 2));
  EXPECT_TRUE(nodes->isEdgeBlocked(Position{2}, 2));
}

}  // namespace
}  // namespace tern::detail
