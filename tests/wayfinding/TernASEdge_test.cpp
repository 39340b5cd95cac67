#include "TernCoreKit/wayfinding/TernASEdge.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tern {
namespace {

using testing::ElementsAre;

TEST(TernASEdge, holdsWhatItIsMadeOfAndIsOpen) {
  const TernASEdge edge = TernASEdge::initASEdge(17, {3, 4}, 2, 1.5, 100, 0.5, 1);
  EXPECT_EQ(edge.edgeId, Value(17));
  EXPECT_THAT(edge.nodes, ElementsAre(3, 4));
  EXPECT_EQ(edge.type, Value(2));
  EXPECT_EQ(edge.cost, Value(1.5));
  EXPECT_EQ(edge.acc, Value(100));
  EXPECT_EQ(edge.speed, Value(0.5));
  EXPECT_EQ(edge.direction, Value(1));
  EXPECT_FALSE(edge.blocked);
}

TEST(TernASEdge, copyIsIndependent) {
  const TernASEdge edge = TernASEdge::initASEdge(17, {3, 4}, 2, 1.5, 100, 0.5, 1);
  TernASEdge copy = edge;
  copy.nodes.push_back(5);
  copy.blocked = true;
  EXPECT_THAT(edge.nodes, ElementsAre(3, 4));
  EXPECT_FALSE(edge.blocked);
  EXPECT_EQ(copy.acc, edge.acc);
}

TEST(TernASEdge, joinsTheNodesThatItsPathNames) {
  const TernASEdge edge = TernASEdge::initASEdge(17, {3, 4, 3}, 2, 1.5, 100, 0.5, 1);
  EXPECT_TRUE(edge.joins(3));
  EXPECT_TRUE(edge.joins(4));
  EXPECT_FALSE(edge.joins(5));
  EXPECT_FALSE(TernASEdge().joins(0));
}

}  // namespace
}  // namespace tern
