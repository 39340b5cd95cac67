#include "TernCoreKit/platform/Numbers.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>

namespace tern {
namespace {

constexpr auto smallest = std::numeric_limits<std::int64_t>::min();
constexpr auto largest = std::numeric_limits<std::int64_t>::max();

TEST(Numbers, aLeadingIntegerEndsAtTheFirstCharacterThatIsNoDigit) {
  EXPECT_EQ(leadingInteger("12:3456"), 12);
  EXPECT_EQ(leadingInteger("-7.9"), -7);
  EXPECT_EQ(leadingInteger("007"), 7);
  EXPECT_EQ(leadingInteger("5-6"), 5);
}

TEST(Numbers, aTextThatStartsWithoutADigitReadsAsZero) {
  for (const char* text : {"", "-", "--1", "+1", " 1", "a1", ":1"}) {
    EXPECT_EQ(leadingInteger(text), 0) << text;
  }
}

TEST(Numbers, aLeadingIntegerIsHeldWithin64Bits) {
  EXPECT_EQ(leadingInteger("9223372036854775807"), largest);
  EXPECT_EQ(leadingInteger("9223372036854775808:1"), largest);
  EXPECT_EQ(leadingInteger("-9223372036854775808"), smallest);
  EXPECT_EQ(leadingInteger("-9223372036854775809"), smallest);
  EXPECT_EQ(leadingInteger(std::string(400, '9')), largest);
}

TEST(Numbers, aDoubleWithoutAFractionIsAWholeNumber) {
  EXPECT_EQ(wholeNumber(0.0), 0);
  EXPECT_EQ(wholeNumber(-0.0), 0);
  EXPECT_EQ(wholeNumber(1e5), 100000);
  EXPECT_EQ(wholeNumber(-9007199254740993.0), -9007199254740992);
  EXPECT_EQ(wholeNumber(-9223372036854775808.0), smallest);
  EXPECT_EQ(wholeNumber(std::nextafter(9223372036854775808.0, 0)), largest - 1023);
}

TEST(Numbers, noOtherDoubleIs) {
  constexpr double infinity = std::numeric_limits<double>::infinity();
  for (const double number : {0.5, -2.5, 1e-300, 9223372036854775808.0, -9223372036854777856.0,
                              infinity, -infinity, std::numeric_limits<double>::quiet_NaN()}) {
    EXPECT_FALSE(wholeNumber(number)) << number;
  }
}

}  // namespace
}  // namespace tern
