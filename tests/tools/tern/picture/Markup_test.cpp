#include "tools/tern/picture/Markup.hpp"

#include <gtest/gtest.h>

#include <limits>
#include <string>

namespace tern::picture {
namespace {

TEST(Markup, elementsCloseInTheOrderTheyOpened) {
  Markup markup;
  markup.open("g", {{"id", "a"}})
      .leaf("circle", {{"r", 2.5}})
      .leaf("text", {{"x", 1}}, "b")
      .open("g");
  EXPECT_EQ(markup.take(), "<g id=\"a\"><circle r=\"2.5\"/><text x=\"1\">b</text><g></g></g>");
  EXPECT_EQ(markup.take(), "");
}

TEST(Markup, textsAndValuesAreEscaped) {
  Markup markup;
  markup.open("a", {{"b", "<\"&'>"}}).text("<\"&'>");
  EXPECT_EQ(markup.take(), "<a b=\"&lt;&quot;&amp;'&gt;\">&lt;&quot;&amp;'&gt;</a>");
}

TEST(Markup, decimalsAreShortAndPlain) {
  EXPECT_EQ(decimal(0), "0");
  EXPECT_EQ(decimal(-0.001), "0");
  EXPECT_EQ(decimal(12), "12");
  EXPECT_EQ(decimal(-2.5), "-2.5");
  EXPECT_EQ(decimal(1.006), "1.01");
  EXPECT_EQ(decimal(100), "100");
}

TEST(Markup, absurdNumbersAreHeldOrDropped) {
  EXPECT_EQ(decimal(1e308), "10000000");
  EXPECT_EQ(decimal(-1e308), "-10000000");
  EXPECT_EQ(decimal(std::numeric_limits<double>::infinity()), "0");
  EXPECT_EQ(decimal(std::numeric_limits<double>::quiet_NaN()), "0");
  EXPECT_EQ(significant(std::numeric_limits<double>::quiet_NaN()), "0");
}

TEST(Markup, significantDigitsKeepSmallNumbers) {
  EXPECT_EQ(significant(0.000123456789), "0.000123456789");
  EXPECT_EQ(significant(1200), "1200");
}

}  // namespace
}  // namespace tern::picture
