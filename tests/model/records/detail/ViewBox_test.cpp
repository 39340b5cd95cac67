#include "TernCoreKit/model/records/detail/ViewBox.hpp"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <string_view>

#include "tests/support/MadeRecords.hpp"

namespace tern::test {
namespace {

using detail::leadingNumber;
using detail::sizeOfViewBox;

void expectSize(std::string_view box, const Value& width, const Value& height) {
  const auto size = sizeOfViewBox("<svg viewBox=\"" + std::string(box) + "\"><g/></svg>");
  ASSERT_TRUE(size) << box;
  EXPECT_EQ(size->width, width) << box;
  EXPECT_EQ(size->height, height) << box;
}

TEST(ViewBox, sizeIsTheThirdAndFourthPart) {
  expectSize("0 0 1200 800", 1200, 800);
  expectSize("-10 5.5 0.25 1e3", 0.25, 1000);
}

TEST(ViewBox, anyOtherNumberOfPartsGivesNone) {
  for (const char* box : {"", " ", "0 0 1200", "0 0 1200 800 1", "0,0,1200,800", "0 0  1200 800",
                          "0\t0\t1200\t800", " 0 0 1200 800", "0 0 1200 800 "}) {
    EXPECT_FALSE(sizeOfViewBox("<svg viewBox=\"" + std::string(box) + "\">")) << box;
  }
}

TEST(ViewBox, onlyThePlainMarkerCounts) {
  EXPECT_FALSE(sizeOfViewBox(""));
  EXPECT_FALSE(sizeOfViewBox("<svg width='3'></svg>"));
  EXPECT_FALSE(sizeOfViewBox("<svg viewBox='0 0 1 2'>"));
  EXPECT_FALSE(sizeOfViewBox("<svg viewbox=\"0 0 1 2\">"));
  EXPECT_FALSE(sizeOfViewBox("<svg viewBox = \"0 0 1 2\">"));
}

TEST(ViewBox, theFirstOneCounts) {
  const auto size = sizeOfViewBox("<svg viewBox=\"0 0 1 2\"><svg viewBox=\"0 0 3 4\">");
  ASSERT_TRUE(size);
  EXPECT_EQ(size->width, Value(1));
  EXPECT_FALSE(sizeOfViewBox("<svg viewBox=\"none\"><svg viewBox=\"0 0 3 4\">"));
}

TEST(ViewBox, anUnclosedOneGoesToTheEndOfTheDocument) {
  const auto size = sizeOfViewBox("<svg viewBox=\"0 0 1 2.5");
  ASSERT_TRUE(size);
  EXPECT_EQ(size->height, Value(2.5));
  EXPECT_FALSE(sizeOfViewBox("<svg viewBox=\""));
}

TEST(ViewBox, emptyPartsAreZero) {
  expectSize("   ", 0, 0);
  expectSize("0 0  7", 0, 7);
}

TEST(ViewBox, isFoundBehindMegabytes) {
  const std::string svg = std::string(3000000, ' ') + "viewBox=\"0 0 8 9\"" + std::string(100, ' ');
  ASSERT_TRUE(sizeOfViewBox(svg));
  EXPECT_EQ(sizeOfViewBox(svg)->width, Value(8));
}

TEST(ViewBox, aWholeIntegerTextIsAnInteger) {
  EXPECT_TRUE(leadingNumber("1200").isInteger());
  EXPECT_TRUE(leadingNumber("-3").isInteger());
  EXPECT_EQ(leadingNumber("+3"), Value(3));
  EXPECT_FALSE(leadingNumber("1200.0").isInteger());
  EXPECT_EQ(leadingNumber("9223372036854775808"), Value(9223372036854775808.0));
}

TEST(ViewBox, theLeadingPrefixIsTheNumber) {
  EXPECT_EQ(leadingNumber("12px"), Value(12.0));
  EXPECT_EQ(leadingNumber("1.5e2%"), Value(150.0));
  EXPECT_EQ(leadingNumber("1e"), Value(1.0));
  EXPECT_EQ(leadingNumber(".5"), Value(0.5));
  EXPECT_EQ(leadingNumber("-.5x"), Value(-0.5));
  EXPECT_EQ(leadingNumber("0x10"), Value(0.0));
}

TEST(ViewBox, withoutANumberItIsZero) {
  for (const char* text : {"", "px", "-", "+", "--3", "+-3", ".", "-.", "inf", "-inf", "nan", "NaN",
                           "1e999", "-1e999", "\n5"}) {
    EXPECT_EQ(leadingNumber(text), Value(0)) << text;
  }
}

}  // namespace
}  // namespace tern::test
