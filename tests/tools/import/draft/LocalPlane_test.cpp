#include "tools/import/draft/LocalPlane.hpp"

#include <gtest/gtest.h>

#include <cmath>

namespace tern::imports {
namespace {

TEST(LocalPlane, originIsTheOrigin) {
  const Point at = LocalPlane({139.5, 35.5}).at({139.5, 35.5});
  EXPECT_DOUBLE_EQ(at.x, 0);
  EXPECT_DOUBLE_EQ(at.y, 0);
}

// The lengths of a second of arc on WGS 84 at 35.5 degrees: 25.2026 m along the parallel and
// 30.8194 m along the meridian.
TEST(LocalPlane, metresAreTrueInBothDirections) {
  const LocalPlane plane({139.5, 35.5});
  EXPECT_NEAR(plane.at({139.5 + 1.0 / 3600, 35.5}).x, 25.2026, 1e-3);
  EXPECT_NEAR(plane.at({139.5, 35.5 - 1.0 / 3600}).y, 30.8194, 1e-3);
}

TEST(LocalPlane, yPointsSouth) {
  EXPECT_LT(LocalPlane({0, 50}).at({0, 50.001}).y, 0);
  EXPECT_GT(LocalPlane({0, 50}).at({0.001, 50}).x, 0);
}

TEST(LocalPlane, leadsBackToWebMercator) {
  const LocalPlane plane({-71.06, 42.36});
  const LonLat place{-71.05, 42.35};
  const Point back = plane.mercatorAt(plane.at(place));
  EXPECT_NEAR(back.x, mercatorOf(place).x, 1e-6);
  EXPECT_NEAR(back.y, mercatorOf(place).y, 1e-6);
}

}  // namespace
}  // namespace tern::imports
