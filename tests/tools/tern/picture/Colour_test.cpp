#include "tools/tern/picture/Colour.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <string>

namespace tern::picture {
namespace {

// "255 0 0 1", or "none"
std::string told(std::string_view text) {
  const auto paint = readPaint(text);
  if (!paint) return "none";
  std::string out;
  const Colour& colour = paint->colour;
  for (const double part : {colour.red, colour.green, colour.blue}) {
    out += std::to_string(std::lround(part * 255)) + " ";
  }
  return out + std::to_string(paint->opacity).substr(0, 4);
}

TEST(Colour, everyWayToWriteOneIsRead) {
  EXPECT_EQ(told("#f80"), "255 136 0 1.00");
  EXPECT_EQ(told("#FF8800"), "255 136 0 1.00");
  EXPECT_EQ(told("#ff880080"), "255 136 0 0.50");
  EXPECT_EQ(told("rgb(255, 136, 0)"), "255 136 0 1.00");
  EXPECT_EQ(told("rgba(100%,50%,0%,.25)"), "255 128 0 0.25");
  EXPECT_EQ(told("rgb(255 136 0 / 50%)"), "255 136 0 0.50");
  EXPECT_EQ(told(" LightGoldenRodYellow\n"), "250 250 210 1.00");
  EXPECT_EQ(told("currentColor"), "0 0 0 1.00");
  EXPECT_EQ(told("aliceblue"), "240 248 255 1.00");
  EXPECT_EQ(told("yellowgreen"), "154 205 50 1.00");
}

TEST(Colour, whatIsNoColourIsNone) {
  for (const char* text : {"", "none", "url(#a)", "#12", "#12345g", "rgb(1,2)", "transparently"}) {
    EXPECT_EQ(told(text), "none") << text;
  }
}

TEST(Colour, contrastIsThatOfTheGuidelines) {
  const Colour black;
  const Colour white{1, 1, 1};
  EXPECT_DOUBLE_EQ(contrast(black, white), 21);
  EXPECT_DOUBLE_EQ(contrast(white, white), 1);
  EXPECT_NEAR(contrast(readPaint("#777777")->colour, white), 4.48, 0.005);
  EXPECT_NEAR(contrast(readPaint("#8793a0")->colour, readPaint("#fdfcfa")->colour), 3.05, 0.05);
}

TEST(Colour, mixtureLiesBetweenBoth) {
  const Colour half = mixed({0, 0.2, 1}, {1, 0.2, 0}, 0.5);
  EXPECT_DOUBLE_EQ(half.red, 0.5);
  EXPECT_DOUBLE_EQ(half.green, 0.2);
  EXPECT_DOUBLE_EQ(half.blue, 0.5);
}

}  // namespace
}  // namespace tern::picture
