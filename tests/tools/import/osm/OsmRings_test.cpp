#include "tools/import/osm/OsmRings.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace tern::imports {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

OsmRings ringsOf(const std::vector<OsmRing>& ways) {
  std::vector<const std::vector<std::int64_t>*> list;
  for (const OsmRing& way : ways) list.push_back(&way);
  return osmRings(list);
}

TEST(OsmRings, closedWayIsARing) {
  const OsmRings made = ringsOf({{1, 2, 3, 1}});
  EXPECT_THAT(made.rings, ElementsAre(OsmRing{1, 2, 3}));
  EXPECT_EQ(made.loose, 0U);
}

TEST(OsmRings, waysAreJoinedInAnyDirection) {
  const OsmRings made = ringsOf({{1, 2, 3}, {5, 1}, {5, 4, 3}});
  EXPECT_THAT(made.rings, ElementsAre(OsmRing{1, 2, 3, 4, 5}));
}

TEST(OsmRings, severalRings) {
  EXPECT_EQ(ringsOf({{1, 2, 3, 1}, {4, 5}, {5, 6, 4}}).rings.size(), 2U);
}

TEST(OsmRings, whatDoesNotCloseIsCounted) {
  const OsmRings made = ringsOf({{1, 2, 3}, {3, 4}, {7, 8, 9, 7}});
  EXPECT_EQ(made.rings.size(), 1U);
  EXPECT_EQ(made.loose, 2U);
}

TEST(OsmRings, emptyAndShortWaysAreLoose) {
  const OsmRings made = ringsOf({{}, {1}, {1, 2}, {1, 1}});
  EXPECT_THAT(made.rings, IsEmpty());
  EXPECT_EQ(made.loose, 4U);
}

}  // namespace
}  // namespace tern::imports
