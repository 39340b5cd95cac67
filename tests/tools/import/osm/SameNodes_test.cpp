#include "tools/import/osm/SameNodes.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tern::imports {
namespace {

using testing::ElementsAre;

TEST(SameNodes, nodesOfOneIdBecomeTheFirstOfThem) {
  Draft draft;
  for (const char* const id : {"a", "b", "a", "c"}) {
    draft.nodes.push_back({id, 0, {}, std::nullopt, false});
  }
  draft.nodes[2].isEntrance = true;
  draft.links.resize(2);
  draft.links[0].from = 2;
  draft.links[0].to = 3;
  draft.links[1].from = 0;
  draft.links[1].to = 2;
  draft.places.push_back({"p", 0, {}, 0, {}, {2, 1}});
  mergeSameNodes(draft, {{3, 1}});
  ASSERT_EQ(draft.nodes.size(), 2U);
  EXPECT_EQ(draft.nodes[0].id, "a");
  EXPECT_TRUE(draft.nodes[0].isEntrance);
  // The one from a node to itself is gone.
  ASSERT_EQ(draft.links.size(), 1U);
  EXPECT_EQ(draft.links[0].from, 0U);
  EXPECT_EQ(draft.links[0].to, 1U);
  EXPECT_THAT(draft.places[0].nodes, ElementsAre(0, 1));
}

}  // namespace
}  // namespace tern::imports
