#include "tools/import/osm/PlacedRecords.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tern::imports {
namespace {

using testing::ElementsAre;
using testing::SizeIs;

TEST(PlacedRecords, aNodeThatIsThereKeepsItsTags) {
  OsmData data;
  data.nodes = {{1, {2, 3}, OsmTags(std::vector<OsmTags::Tag>{{"door", "yes"}})}};
  data.placed.nodes = {{1, {2, 3}, {}}, {4, {5, 6}, {}}, {4, {5, 6}, {}}};
  addPlacedRecords(data);
  ASSERT_THAT(data.nodes, SizeIs(2));
  EXPECT_TRUE(data.nodes[0].tags.has("door"));
  EXPECT_EQ(data.nodes[1].id, 4);
}

TEST(PlacedRecords, cornersOfAPlacedWayAreTheNodesThatLieThere) {
  OsmData data;
  data.nodes = {{1, {0, 0}, {}}, {2, {1, 0}, {}}};
  data.placed.ways = {{9, {{0, 0}, {1, 0}, {1, 1}, {0, 0}}}};
  addPlacedRecords(data);
  ASSERT_THAT(data.ways, SizeIs(1));
  ASSERT_THAT(data.nodes, SizeIs(3));
  EXPECT_THAT(data.ways[0].refs, ElementsAre(1, 2, data.nodes[2].id, 1));
}

TEST(PlacedRecords, waysThatShareACornerShareItsNode) {
  OsmData data;
  data.placed.ways = {{8, {{0, 0}, {1, 0}}}, {9, {{1, 0}, {2, 0}}}};
  addPlacedRecords(data);
  ASSERT_THAT(data.ways, SizeIs(2));
  EXPECT_EQ(data.ways[0].refs.back(), data.ways[1].refs.front());
}

TEST(PlacedRecords, aWayThatIsThereKeepsItsNodes) {
  OsmData data;
  data.ways = {{9, {1, 2}, {}}};
  data.placed.ways = {{9, {{0, 0}, {1, 0}}}};
  addPlacedRecords(data);
  ASSERT_THAT(data.ways, SizeIs(1));
  EXPECT_THAT(data.ways[0].refs, ElementsAre(1, 2));
}

}  // namespace
}  // namespace tern::imports
