#include "tools/drawing/Geometry.hpp"

#include <gtest/gtest.h>

namespace tern::drawing {
namespace {

using Box = BoxOf<int>;

TEST(Geometry, boxesThatOnlyTouchDoNotMeet) {
  const Box box{0, 0, 10, 10};
  EXPECT_TRUE(box.meets({9, 9, 20, 20}));
  EXPECT_FALSE(box.meets({10, 0, 20, 10}));
  EXPECT_FALSE(box.meets({0, 10, 10, 20}));
}

TEST(Geometry, overlapIsTheAreaThatBothCover) {
  const Box box{0, 0, 10, 10};
  EXPECT_EQ(box.overlap({8, 7, 20, 20}), 6);
  EXPECT_EQ(box.overlap({10, 0, 20, 10}), 0);
  EXPECT_EQ(box.overlap({20, 20, 30, 30}), 0);
}

TEST(Geometry, edgesBelongToTheBox) {
  EXPECT_TRUE((Box{0, 0, 4, 4}).contains({4, 0}));
  EXPECT_FALSE((Box{0, 0, 4, 4}).contains({5, 0}));
}

TEST(Geometry, twoBoxesLieInOne) {
  const Box both = Box{0, 5, 4, 9}.with({2, 1, 8, 6});
  EXPECT_EQ(both.left, 0);
  EXPECT_EQ(both.top, 1);
  EXPECT_EQ(both.right, 8);
  EXPECT_EQ(both.bottom, 9);
}

}  // namespace
}  // namespace tern::drawing
