#include "tools/tern/picture/MetreRamp.hpp"

#include <gtest/gtest.h>

#include <limits>

#include "tests/support/ScannedMarkup.hpp"
#include "tools/tern/picture/Colour.hpp"
#include "tools/tern/picture/Palette.hpp"

namespace tern::picture {
namespace {

TEST(MetreRamp, stepsAreWholeMetresThatHoldAll) {
  EXPECT_EQ(MetreRamp(40).step(), 8);
  EXPECT_EQ(MetreRamp(41).step(), 10);
  EXPECT_EQ(MetreRamp(3).step(), 1);
  EXPECT_EQ(MetreRamp(0).step(), 1);
  EXPECT_EQ(MetreRamp(1234).step(), 300);
  EXPECT_GT(MetreRamp(1e300).step(), 0);
  EXPECT_EQ(MetreRamp(std::numeric_limits<double>::quiet_NaN()).step(), 1);
}

TEST(MetreRamp, everyLengthHasAStep) {
  const MetreRamp ramp(40);
  EXPECT_EQ(ramp.stepOf(-1), 0U);
  EXPECT_EQ(ramp.stepOf(7.9), 0U);
  EXPECT_EQ(ramp.stepOf(8), 1U);
  EXPECT_EQ(ramp.stepOf(40), 4U);
  EXPECT_EQ(ramp.stepOf(1e300), 4U);
}

TEST(MetreRamp, coloursAreToldApartByLightnessAloneAndSeenOnTheirGround) {
  const auto colour = [](std::string_view name, bool isDark) {
    return readPaint(isDark ? palette::darkTwin(name) : name)->colour;
  };
  for (const bool isDark : {false, true}) {
    const Colour paper = colour(palette::paper, isDark);
    for (std::size_t i = 0; i < MetreRamp::steps; ++i) {
      EXPECT_GE(contrast(colour(MetreRamp::colourOf(i), isDark), paper), 3) << i;
      if (i == 0) continue;
      const double before = luminance(colour(MetreRamp::colourOf(i - 1), isDark));
      const double here = luminance(colour(MetreRamp::colourOf(i), isDark));
      EXPECT_TRUE(isDark ? here < before : here > before) << i;
      EXPECT_GE((std::max(here, before) + 0.05) / (std::min(here, before) + 0.05), 1.3) << i;
    }
  }
}

TEST(MetreRamp, legendNamesEveryBorder) {
  const auto markup = test::scanMarkup("<svg>" + MetreRamp(40).legend().markup + "</svg>");
  EXPECT_EQ(markup.problem, "");
  EXPECT_EQ(markup.text, "08 m16 m24 m32 m40 m");
  EXPECT_EQ(MetreRamp(40).words(), "Colours from near to far, each for 8 m.");
}

}  // namespace
}  // namespace tern::picture
