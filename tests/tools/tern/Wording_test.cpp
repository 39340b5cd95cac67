#include "tools/tern/Wording.hpp"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <string>

namespace tern::command {
namespace {

TEST(Wording, controlCharactersBecomeSpaces) {
  EXPECT_EQ(onOneLine("a\nb\r\tc\x1B\x7F"), "a b  c  ");
  EXPECT_EQ(onOneLine("caf\xC3\xA9"), "caf\xC3\xA9");
}

TEST(Wording, lateControlCharactersBecomeSpacesToo) {
  EXPECT_EQ(onItsLines("a\xC2\x9B"
                       "2J\nb"),
            "a  2J\nb");
  EXPECT_EQ(onItsLines("\xC2\xA0\xC3\x89"), "\xC2\xA0\xC3\x89");
  EXPECT_EQ(onItsLines("x\xC2"), "x\xC2");
}

TEST(Wording, wholeNumberIsNothingElse) {
  EXPECT_EQ(parseWhole("12"), 12);
  EXPECT_EQ(parseWhole("-3"), -3);
  EXPECT_EQ(parseWhole("9223372036854775807"), INT64_MAX);
  for (const auto* text :
       {"", " 1", "1 ", "1.0", "1e3", "0x1", "+1", "9223372036854775808", "one"}) {
    EXPECT_FALSE(parseWhole(text)) << text;
  }
}

TEST(Wording, pointIsTwoFiniteNumbers) {
  EXPECT_EQ(parsePoint("10,20"), (TernCoordinate{10, 20}));
  EXPECT_EQ(parsePoint("-12.5,3e2"), (TernCoordinate{-12.5, 300}));
  EXPECT_EQ(parsePoint("-.5,.5"), (TernCoordinate{-0.5, 0.5}));
  for (const auto* text :
       {"", "1", "1,", ",1", "1,2,3", "1, 2", "1;2", "nan,1", "1,inf", "1e999,0", "a,b"}) {
    EXPECT_FALSE(parsePoint(text)) << text;
  }
}

TEST(Wording, zeroHasNoSign) { EXPECT_EQ(numberText(-0.0), "0"); }

RC_GTEST_PROP(Wording, numberTextReadsBackAsTheSame, (double x, double y)) {
  RC_ASSERT(parsePoint(numberText(x) + "," + numberText(y)) == (TernCoordinate{x, y}));
}

}  // namespace
}  // namespace tern::command
