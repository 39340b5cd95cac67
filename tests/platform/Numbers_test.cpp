#include "TernCoreKit/platform/Numbers.hpp"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>

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

// What is read of a text: the number, and the text behind it.
std::pair<double, std::string> readOf(std::string_view text) {
  double number = 7;
  const auto [end, error] = readDouble(text.data(), text.data() + text.size(), number);
  EXPECT_EQ(error, std::errc()) << text;
  return {number, std::string(end, text.data() + text.size())};
}

std::errc readingError(std::string_view text) {
  double number = 7;
  const auto [end, error] = readDouble(text.data(), text.data() + text.size(), number);
  EXPECT_EQ(number, 7) << text << " is left alone";
  return error;
}

TEST(Numbers, theDoubleNearestToItsTextIsRead) {
  EXPECT_EQ(readOf("0.1"), std::pair(0.1, std::string()));
  EXPECT_EQ(readOf("-12.5e-1 m"), std::pair(-1.25, std::string(" m")));
  EXPECT_EQ(readOf(".5."), std::pair(0.5, std::string(".")));
  EXPECT_EQ(readOf("9007199254740993").first, 9007199254740992.0);
  EXPECT_EQ(readOf("9007199254740993.00000000000000000001").first, 9007199254740994.0);
  EXPECT_EQ(readOf("1.7976931348623157e308").first, std::numeric_limits<double>::max());
  EXPECT_EQ(readOf("5e-324").first, std::numeric_limits<double>::denorm_min());
  EXPECT_EQ(readOf("0e9999").first, 0);
  EXPECT_TRUE(std::signbit(readOf("-0.0e-9999").first));
  EXPECT_EQ(readOf("-inf").first, -std::numeric_limits<double>::infinity());
}

TEST(Numbers, aTextThatIsNoDoubleLeavesTheNumberAlone) {
  for (const char* text : {"", "+1", " 1", "-", ".", "e5", "x"}) {
    EXPECT_EQ(readingError(text), std::errc::invalid_argument) << text;
  }
  for (const char* text : {"1e309", "-1.7976931348623159e308", "2e-324", "-0.00001e-999"}) {
    EXPECT_EQ(readingError(text), std::errc::result_out_of_range) << text;
  }
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
