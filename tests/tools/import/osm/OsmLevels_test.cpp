#include "tools/import/osm/OsmLevels.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cmath>

namespace tern::imports {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(OsmLevels, singleLevels) {
  EXPECT_THAT(osmLevels("0").levels, ElementsAre(0));
  EXPECT_THAT(osmLevels("-2").levels, ElementsAre(-2));
  EXPECT_THAT(osmLevels("0.5").levels, ElementsAre(0.5));
  EXPECT_THAT(osmLevels("+1").levels, ElementsAre(1));
}

TEST(OsmLevels, minusZeroIsZero) { EXPECT_FALSE(std::signbit(osmLevels("-0").levels.front())); }

TEST(OsmLevels, listsInAnyOrderWithSpaces) {
  EXPECT_THAT(osmLevels("1; -1;0;1").levels, ElementsAre(-1, 0, 1));
  EXPECT_THAT(osmLevels("0,1").levels, ElementsAre(0, 1));
}

TEST(OsmLevels, ranges) {
  EXPECT_THAT(osmLevels("0-2").levels, ElementsAre(0, 1, 2));
  EXPECT_THAT(osmLevels("-2--1").levels, ElementsAre(-2, -1));
  EXPECT_THAT(osmLevels("-1-1").levels, ElementsAre(-1, 0, 1));
  EXPECT_THAT(osmLevels("0;2-3").levels, ElementsAre(0, 2, 3));
  EXPECT_THAT(osmLevels("0.5-2.5").levels, ElementsAre(0.5, 1.5, 2.5));
}

TEST(OsmLevels, repeatOnAdds) {
  const OsmTags tags(std::vector<OsmTags::Tag>{{"level", "0"}, {"repeat_on", "2-3"}});
  EXPECT_THAT(osmLevels(tags).levels, ElementsAre(0, 2, 3));
}

TEST(OsmLevels, whatIsNoLevelIsSaid) {
  for (const char* const text :
       {"ground", "1e2", "0x1", "1.2.3", "--1", "2-1", "inf", "nan", "-"}) {
    EXPECT_THAT(osmLevels(text).levels, IsEmpty()) << text;
    EXPECT_EQ(osmLevels(text).unread, text);
  }
  EXPECT_THAT(osmLevels("0;roof").levels, ElementsAre(0));
  EXPECT_EQ(osmLevels("0;roof").unread, "roof");
}

TEST(OsmLevels, nothingIsNoLevel) {
  EXPECT_THAT(osmLevels("").levels, IsEmpty());
  EXPECT_EQ(osmLevels("").unread, "");
}

TEST(OsmLevels, noBuildingIsThatHigh) {
  EXPECT_EQ(osmLevels("0-1000000").unread, "0-1000000");
  EXPECT_EQ(osmLevels("99999999999999999999").unread, "99999999999999999999");
  const OsmLevels many = osmLevels("-300-300");
  EXPECT_EQ(many.levels.size(), mostLevelsOfOne);
  EXPECT_NE(many.unread, "");
}

TEST(OsmLevels, longListsEnd) {
  std::string text;
  for (int i = 0; i < 5'000; ++i) text += "-300-300;";
  EXPECT_EQ(osmLevels(text).levels.size(), mostLevelsOfOne);
}

}  // namespace
}  // namespace tern::imports
