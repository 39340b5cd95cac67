#include "TernCoreKit/platform/detail/common/ArcTangent.hpp"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <limits>
#include <random>

namespace tern::detail {
namespace {

constexpr float endless = std::numeric_limits<float>::infinity();
constexpr float undefined = std::numeric_limits<float>::quiet_NaN();

// How many floats the answer is away from the one nearest to the truth.
std::int64_t floatsOff(float y, float x) {
  const auto order = [](float number) { return std::bit_cast<std::int32_t>(std::fabs(number)); };
  const auto truth = static_cast<float>(std::atan2(static_cast<double>(y), static_cast<double>(x)));
  const float answer = arcTangent(y, x);
  EXPECT_EQ(std::signbit(answer), std::signbit(truth)) << y << ' ' << x;
  return std::abs(std::int64_t{order(answer)} - order(truth));
}

TEST(ArcTangent, isOneFloatOffAtMost) {
  std::mt19937 random(7);
  const auto coordinate = [&] {
    return (static_cast<float>(random() % 200'001) - 100'000) /
           static_cast<float>(1 << random() % 8);
  };
  for (int i = 0; i < 200'000; ++i) {
    const float y = coordinate();
    const float x = coordinate();
    ASSERT_LE(floatsOff(y, x), 1) << y << ' ' << x;
  }
}

TEST(ArcTangent, isOneFloatOffAtMostHoweverFarTheNumbersLieApart) {
  std::mt19937 random(8);
  for (int i = 0; i < 200'000; ++i) {
    const auto y = std::bit_cast<float>(static_cast<std::uint32_t>(random()));
    const auto x = std::bit_cast<float>(static_cast<std::uint32_t>(random()));
    if (std::isnan(y) || std::isnan(x) || std::fabs(y / x) < 0x1p-100F) continue;
    ASSERT_LE(floatsOff(y, x), 1) << y << ' ' << x;
  }
}

// The last bits, which are the same on every machine.
TEST(ArcTangent, hasTheseBits) {
  EXPECT_EQ(arcTangent(1, 1), 0x1.921fb6p-1F);
  EXPECT_EQ(arcTangent(1, -1), 0x1.2d97c8p+1F);
  EXPECT_EQ(arcTangent(1, 2), 0x1.dac67p-2F);
  EXPECT_EQ(arcTangent(-3, 4), -0x1.4978fap-1F);
  EXPECT_EQ(arcTangent(5, -12), 0x1.5f9732p+1F);
  EXPECT_EQ(arcTangent(0.1F, 0.3F), 0x1.4978fap-2F);
}

// On either side of where another polynomial takes over; the wrong one is a bit off at each of
// these.
TEST(ArcTangent, hasTheseBitsWhereItsPartsMeet) {
  EXPECT_EQ(arcTangent(0x1.bfffe2p-2F, 1), 0x1.a64ed2p-2F);
  EXPECT_EQ(arcTangent(0x1.c00052p-2F, 1), 0x1.a64f3p-2F);
  EXPECT_EQ(arcTangent(0x1.5ffff6p-1F, 1), 0x1.345efap-1F);
  EXPECT_EQ(arcTangent(0x1.60002ep-1F, 1), 0x1.345f22p-1F);
  EXPECT_EQ(arcTangent(0x1.2fffe8p+0F, 1), 0x1.bde6fap-1F);
  EXPECT_EQ(arcTangent(0x1.3p+0F, 1), 0x1.bde70ep-1F);
  EXPECT_EQ(arcTangent(0x1.37fffcp+1F, 1), 0x1.2e7572p+0F);
  EXPECT_EQ(arcTangent(0x1.38000ep+1F, 1), 0x1.2e7578p+0F);
}

TEST(ArcTangent, knowsTheAxesAndTheSignsOfZero) {
  constexpr float half = 0x1.921fb6p+0F;
  EXPECT_EQ(arcTangent(2, 0), half);
  EXPECT_EQ(arcTangent(-2, -0.0F), -half);
  EXPECT_EQ(arcTangent(0, -1), 2 * half);
  EXPECT_EQ(arcTangent(-0.0F, -0.0F), -2 * half);
  EXPECT_FALSE(std::signbit(arcTangent(0, 1)));
  EXPECT_TRUE(std::signbit(arcTangent(-0.0F, 0)));
}

TEST(ArcTangent, takesWhatIsNotFinite) {
  for (const float y : {0.0F, 1.0F, -1.0F, endless, -endless}) {
    for (const float x : {-0.0F, 1.0F, -1.0F, endless, -endless}) {
      EXPECT_EQ(arcTangent(y, x), static_cast<float>(std::atan2(double{y}, double{x})));
    }
    EXPECT_TRUE(std::isnan(arcTangent(y, undefined)));
    EXPECT_TRUE(std::isnan(arcTangent(undefined, y)));
  }
}

}  // namespace
}  // namespace tern::detail
