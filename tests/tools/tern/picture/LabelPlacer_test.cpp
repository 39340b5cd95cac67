#include "tools/tern/picture/LabelPlacer.hpp"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

namespace tern::picture {
namespace {

constexpr Size window{358, 220};

TEST(LabelPlacer, freePointHasItsLabelOnTheRight) {
  LabelPlacer placer(window);
  const Box box = placer.place({100, 100}, 10, {80, 22});
  EXPECT_DOUBLE_EQ(box.left, 110);
  EXPECT_DOUBLE_EQ(box.centre().y, 100);
}

TEST(LabelPlacer, labelsOfOnePointLieApart) {
  LabelPlacer placer(window);
  const Box first = placer.place({180, 110}, 10, {80, 22});
  const Box second = placer.place({180, 110}, 10, {80, 22});
  const Box third = placer.place({180, 110}, 10, {80, 22});
  EXPECT_EQ(first.overlap(second), 0);
  EXPECT_EQ(first.overlap(third), 0);
  EXPECT_EQ(second.overlap(third), 0);
}

TEST(LabelPlacer, lineIsLeftVisible) {
  LabelPlacer placer(window);
  placer.avoidLine({{100, 110}, {350, 110}});
  const Box box = placer.place({100, 110}, 10, {80, 22});
  EXPECT_LT(box.right, 100);
}

TEST(LabelPlacer, labelAtTheEdgeStaysInside) {
  LabelPlacer placer(window);
  const Box box = placer.place({357, 1}, 10, {120, 22});
  EXPECT_GE(box.left, 0);
  EXPECT_LE(box.right, window.width);
  EXPECT_GE(box.top, 0);
}

TEST(LabelPlacer, withoutRoomALabelIsStillPlaced) {
  LabelPlacer placer(window);
  placer.avoid({0, 0, window.width, window.height});
  const Box box = placer.place({100, 100}, 10, {80, 22});
  EXPECT_DOUBLE_EQ(box.width(), 80);
}

RC_GTEST_PROP(LabelPlacer, everyLabelStaysInsideAndNearItsPoint, ()) {
  LabelPlacer placer(window);
  for (int i = *rc::gen::inRange(1, 8); i > 0; --i) {
    const Point at{double(*rc::gen::inRange(0, 358)), double(*rc::gen::inRange(0, 220))};
    const Size size{double(*rc::gen::inRange(20, 240)), 22};
    const Box box = placer.place(at, 12, size);
    RC_ASSERT(box.left >= 0 && box.top >= 0);
    RC_ASSERT(box.right <= window.width && box.bottom <= window.height);
    RC_ASSERT(box.grownBy(60).contains(at));
  }
}

}  // namespace
}  // namespace tern::picture
