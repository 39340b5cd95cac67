#include "tools/tern/picture/MapWindow.hpp"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>

namespace tern::picture {
namespace {

const Box hugeFloor{0, 0, 10000, 6000};

TEST(MapWindow, shortRouteShowsItsSurroundings) {
  const MapWindow window({{{5000, 3000}, {5200, 3100}}, hugeFloor, 0});
  EXPECT_LT(window.shown().width(), 400);
  EXPECT_TRUE(window.shown().contains({5000, 3000}));
}

TEST(MapWindow, leastSpanBoundsTheEnlargement) {
  const MapWindow window({{{5000, 3000}}, hugeFloor, 900});
  EXPECT_DOUBLE_EQ(window.shown().width(), 900);
}

TEST(MapWindow, routeOverTheWholeFloorShowsTheFloor) {
  const MapWindow window({{{10, 10}, {9990, 5990}}, hugeFloor, 0});
  EXPECT_NEAR(window.shown().left, 0, 1);
  EXPECT_NEAR(window.shown().right, 10000, 1);
  EXPECT_NEAR(window.size().height, 358 * 0.6, 6);
}

TEST(MapWindow, windowStaysOnTheFloorWhereItCan) {
  const MapWindow window({{{20, 20}, {60, 20}}, hugeFloor, 900});
  EXPECT_DOUBLE_EQ(window.shown().left, 0);
  EXPECT_DOUBLE_EQ(window.shown().top, 0);
}

TEST(MapWindow, withoutAFloorTheRouteIsShown) {
  const MapWindow window({{{-50, 7}, {50, 7}}, {}, 0});
  EXPECT_TRUE(window.shown().contains({-50, 7}));
  EXPECT_TRUE(window.shown().contains({50, 7}));
}

TEST(MapWindow, withoutARouteTheFloorIsShown) {
  const MapWindow window({{}, hugeFloor, 900});
  EXPECT_NEAR(window.shown().width(), 10000, 1);
  EXPECT_GT(MapWindow({{}, {}, 0}).scale(), 0);
}

TEST(MapWindow, onePointWithoutAFloorHasAScale) {
  const MapWindow window({{{3, 4}}, {}, 0});
  EXPECT_EQ(window.scale(), 1);
  EXPECT_EQ(window.toPicture({3, 4}).x, MapWindow::width / 2);
}

RC_GTEST_PROP(MapWindow, everyPointLiesInTheWindow, ()) {
  const auto coordinate =
      rc::gen::map(rc::gen::inRange(-20000, 30000), [](int n) { return n / 2.0; });
  std::vector<Point> points;
  for (int i = *rc::gen::inRange(1, 6); i > 0; --i) points.push_back({*coordinate, *coordinate});
  const bool hasFloor = *rc::gen::arbitrary<bool>();
  const double leastSpan = *rc::gen::inRange(0, 3000);
  const MapWindow window({points, hasFloor ? std::optional(hugeFloor) : std::nullopt, leastSpan});
  const auto [width, height] = window.size();
  RC_ASSERT(std::isfinite(window.scale()) && window.scale() > 0);
  RC_ASSERT(height > 0 && height <= MapWindow::mostHeight);
  for (Point point : points) {
    const Point at = window.toPicture(point);
    RC_ASSERT(at.x > -1e-6 && at.x < width + 1e-6);
    RC_ASSERT(at.y > -1e-6 && at.y < height + 1e-6);
  }
}

}  // namespace
}  // namespace tern::picture
