#include "tools/tern/picture/FloorTone.hpp"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cstdio>
#include <string>

#include "tools/tern/picture/Palette.hpp"

namespace tern::picture {
namespace {

Colour colour(std::string_view name) { return readPaint(name)->colour; }

DrawingMarks drawing(std::string_view floor, std::string_view lines) {
  DrawingMarks marks;
  marks.floor = colour(floor);
  marks.lines = colour(lines);
  return marks;
}

// What a viewer makes of a colour by the matrix as it is written.
Colour shownBy(const std::string& matrix, const Colour& in) {
  double m[20]{};
  const char* at = matrix.c_str();
  for (double& number : m) {
    int size = 0;
    EXPECT_EQ(std::sscanf(at, "%lf%n", &number, &size), 1);
    at += size;
  }
  const auto part = [&](int row) {
    const double* r = m + 5 * row;
    return std::clamp(r[0] * in.red + r[1] * in.green + r[2] * in.blue + r[3] + r[4], 0.0, 1.0);
  };
  return {part(0), part(1), part(2)};
}

TEST(FloorTone, drawingThatIsFineIsOnlyMuted) {
  const FloorTone tone = toneOf(drawing("#ffffff", "#333333"));
  EXPECT_FALSE(tone.light);
  EXPECT_EQ(tone.opacity, 0.75);
}

TEST(FloorTone, drawingThatWouldBeTooPaleMutedIsLeftAsItIs) {
  const FloorTone tone = toneOf(drawing("#ffffff", "#8c8c8c"));
  EXPECT_FALSE(tone.light);
  EXPECT_EQ(tone.opacity, 1);
}

TEST(FloorTone, paleWallsAreGivenTheContrastThatTheyNeedAndNoMore) {
  const DrawingMarks marks = drawing("#fdfcfa", "#b4bcc4");
  EXPECT_LT(contrast(*marks.lines, *marks.floor), 2);
  const FloorTone tone = toneOf(marks);
  ASSERT_TRUE(tone.light);
  const double seen = contrast((*tone.light)(*marks.lines), (*tone.light)(*marks.floor));
  EXPECT_GE(seen, 3);
  EXPECT_LE(seen, 3.5);
  EXPECT_NEAR(luma((*tone.light)(*marks.floor)), luma(*marks.floor), 1e-9);
}

TEST(FloorTone, areasWithoutLinesAreTold) {
  DrawingMarks marks;
  marks.floor = colour("#ffffff");
  marks.areas = colour("#f6f6f6");
  const FloorTone tone = toneOf(marks);
  ASSERT_TRUE(tone.light);
  EXPECT_GE(contrast((*tone.light)(*marks.areas), (*tone.light)(*marks.floor)), areaContrast);
}

TEST(FloorTone, darkScreenTurnsALightFloorDarkAndKeepsADarkOne) {
  const FloorTone light = toneOf(drawing("#ffffff", "#333333"));
  EXPECT_LT(luminance(light.dark(colour("#ffffff"))), 0.03);
  EXPECT_GT(luminance(light.dark(colour("#333333"))), luminance(light.dark(colour("#ffffff"))));
  const FloorTone dark = toneOf(drawing("#101010", "#a0a0a0"));
  EXPECT_NEAR(luma(dark.dark(colour("#101010"))), luma(colour("#101010")), 1e-9);
}

TEST(FloorTone, huesStay) {
  const Colour pink = toneOf(drawing("#ffffff", "#333333")).dark(colour("#f4d9dc"));
  EXPECT_GT(pink.red, pink.blue);
  EXPECT_GT(pink.blue, pink.green);
}

TEST(FloorTone, drawingThatSaysNothingIsMuted) {
  const FloorTone tone = toneOf({});
  EXPECT_FALSE(tone.light);
  EXPECT_EQ(tone.opacity, 0.75);
}

Colour anyColour() {
  const auto part = [] { return *rc::gen::inRange(0, 256) / 255.0; };
  return {part(), part(), part()};
}

RC_GTEST_PROP(FloorTone, anyWallsThatCanBeSeenAreSeenWellAndTheFloorOnItsCard, ()) {
  DrawingMarks marks;
  marks.floor = anyColour();
  marks.lines = anyColour();
  RC_PRE(contrast(*marks.floor, *marks.lines) >= 1.1 &&
         std::abs(luma(*marks.floor) - luma(*marks.lines)) > 0.02);
  const FloorTone tone = toneOf(marks);
  const Colour card = colour(tone.card);
  const auto shown = [&](const Colour& each) {
    return mixed(card, tone.light ? (*tone.light)(each) : each, tone.opacity);
  };
  RC_ASSERT(contrast(shown(*marks.lines), shown(*marks.floor)) >= wallContrast - 0.12);
  RC_ASSERT(contrast(tone.dark(*marks.lines), tone.dark(*marks.floor)) >= wallContrast);
  RC_ASSERT(contrast(shown(*marks.floor), card) >= 1.08);
}

RC_GTEST_PROP(FloorTone, matrixSaysWhatTheToneDoes, ()) {
  const Tone tone{*rc::gen::inRange(-300, 300) / 100.0, *rc::gen::inRange(0, 100) / 100.0,
                  *rc::gen::inRange(0, 100) / 100.0};
  const Colour any = anyColour();
  const Colour shown = shownBy(tone.matrix(), any);
  RC_ASSERT(std::abs(shown.red - tone(any).red) < 1e-6);
  RC_ASSERT(std::abs(shown.green - tone(any).green) < 1e-6);
  RC_ASSERT(std::abs(shown.blue - tone(any).blue) < 1e-6);
}

TEST(Palette, textsAndRoutesAreSeenOnEveryGroundInBothLights) {
  using namespace palette;
  const auto ratio = [](std::string_view a, std::string_view b, bool isDark) {
    return contrast(colour(isDark ? darkTwin(a) : a), colour(isDark ? darkTwin(b) : b));
  };
  for (const bool isDark : {false, true}) {
    for (const std::string_view ground : {page, paper, deepPaper, casing}) {
      EXPECT_GE(ratio(ink, ground, isDark), 4.5) << ground;
      EXPECT_GE(ratio(quiet, ground, isDark), 4.5) << ground;
      for (const std::string_view sign : {route, start, goal}) {
        EXPECT_GE(ratio(sign, ground, isDark), 3) << sign << " on " << ground;
      }
    }
  }
}

}  // namespace
}  // namespace tern::picture
