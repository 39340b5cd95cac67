#include "tools/tern/picture/LabelPlacer.hpp"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>
#include <vector>

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
  placer.avoidLine({{100, 110}, {350, 110}}, 5);
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

TEST(LabelPlacer, nameGoesOnItsPointWhereThatIsFree) {
  LabelPlacer placer(window);
  const auto box = placer.fit({100, 100}, 4, {60, 14});
  ASSERT_TRUE(box);
  EXPECT_DOUBLE_EQ(box->centre().x, 100);
  EXPECT_DOUBLE_EQ(box->centre().y, 100);
  const auto below = placer.fit({100, 100}, 14, {60, 14});
  ASSERT_TRUE(below);
  EXPECT_GT(below->top, box->bottom);
}

TEST(LabelPlacer, nameWithoutRoomIsNotPlaced) {
  LabelPlacer placer(window);
  EXPECT_FALSE(placer.fit({2, 2}, 4, {60, 14}));
  placer.avoid({0, 0, window.width, window.height});
  EXPECT_FALSE(placer.fit({100, 100}, 4, {60, 14}));
}

TEST(LabelPlacer, whatCoversADrawnNameHidesAllOfItAndNothingElse) {
  LabelPlacer placer(window);
  const Box drawn{80, 96, 120, 102};
  placer.avoidLightly(drawn);
  EXPECT_FALSE(placer.cover(drawn, {30, 14}));
  EXPECT_FALSE(placer.cover({2, 96, 42, 102}, {60, 14}));
  const auto box = LabelPlacer(placer).cover(drawn, {60, 14});
  ASSERT_TRUE(box);
  EXPECT_DOUBLE_EQ(box->centre().x, 100);
  EXPECT_DOUBLE_EQ(box->centre().y, 99);
  EXPECT_DOUBLE_EQ(box->width(), 60);
  placer.avoidLightly({100, 105, 110, 111});
  EXPECT_FALSE(placer.cover(drawn, {60, 14}));
}

TEST(LabelPlacer, drawnNameIsCoveredOnce) {
  LabelPlacer placer(window);
  const Box drawn{80, 96, 120, 102};
  placer.avoidLightly(drawn);
  EXPECT_TRUE(placer.cover(drawn, {60, 14}));
  EXPECT_FALSE(placer.cover(drawn, {60, 14}));
}

RC_GTEST_PROP(LabelPlacer, namesAreWholeAndHideNothing, ()) {
  LabelPlacer placer(window);
  const auto anyPoint = [] {
    return Point{double(*rc::gen::inRange(-20, 380)), double(*rc::gen::inRange(-20, 240))};
  };
  const std::vector<Point> route{anyPoint(), anyPoint(), anyPoint()};
  placer.avoidLine(route, 5);
  std::vector<Box> taken;
  for (int i = *rc::gen::inRange(0, 4); i > 0; --i) {
    taken.push_back(placer.place(anyPoint(), 12, {double(*rc::gen::inRange(20, 240)), 22}));
  }
  for (int i = *rc::gen::inRange(1, 60); i > 0; --i) {
    const Size size{double(*rc::gen::inRange(10, 160)), 14};
    const auto box = placer.fit(anyPoint(), 6, size);
    if (!box) continue;
    RC_ASSERT(box->left >= 0 && box->top >= 0);
    RC_ASSERT(box->right <= window.width && box->bottom <= window.height);
    RC_ASSERT(std::abs(box->width() - size.width) < 1e-9 && std::abs(box->height() - 14) < 1e-9);
    for (const Box& other : taken) RC_ASSERT(!box->meets(other));
    for (std::size_t k = 0; k + 1 < route.size(); ++k) {
      for (int step = 0; step <= 200; ++step) {
        RC_ASSERT(!box->contains({route[k].x + (route[k + 1].x - route[k].x) * step / 200,
                                  route[k].y + (route[k + 1].y - route[k].y) * step / 200}));
      }
    }
    taken.push_back(*box);
  }
}

}  // namespace
}  // namespace tern::picture
