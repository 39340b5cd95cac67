#include "tools/tern/picture/Markup.hpp"

#include <gtest/gtest.h>

#include <limits>
#include <string>

#include "tests/support/ScannedMarkup.hpp"

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
  EXPECT_EQ(markup.take(), "<a b=\"&lt;&quot;&amp;&#39;&gt;\">&lt;&quot;&amp;&#39;&gt;</a>");
}

TEST(Markup, whatIsNotUtf8OrForbiddenBecomesAReplacement) {
  const std::string mark = "\xEF\xBF\xBD";
  EXPECT_EQ(escaped("a\x01z"), "a" + mark + "z");
  EXPECT_EQ(escaped(std::string_view("\0", 1)), mark);
  EXPECT_EQ(escaped("\xFF"), mark);
  EXPECT_EQ(escaped("\xC0\xAF"), mark + mark);             // an overlong slash
  EXPECT_EQ(escaped("\xED\xA0\x80"), mark + mark + mark);  // half a surrogate pair
  EXPECT_EQ(escaped("\xEF\xBF\xBF"), mark + mark + mark);  // no character
  EXPECT_EQ(escaped("\xF5\x80\x80\x80"), mark + mark + mark + mark);
  EXPECT_EQ(escaped("\xE2\x82"), mark + mark);  // cut short
  EXPECT_EQ(escaped("\xC3\xA9\xE2\x82\xAC\xF0\x9F\x9A\xAA\t\n"),
            "\xC3\xA9\xE2\x82\xAC\xF0\x9F\x9A\xAA\t\n");
}

TEST(Markup, escapedBytesOfAnyKindAreWellFormed) {
  for (int first = 0; first < 256; ++first) {
    for (int second = 0; second < 256; ++second) {
      const std::string text{static_cast<char>(first), static_cast<char>(second), 'z'};
      const std::string markup = "<a>" + escaped(text) + "</a>";
      ASSERT_EQ(test::scanMarkup(markup).problem, "") << first << " " << second;
    }
  }
}

TEST(Markup, appendUtf8RefusesWhatXmlDoes) {
  std::string out;
  for (std::uint32_t code : {0U, 0x1FU, 0xD800U, 0xDFFFU, 0xFFFEU, 0x110000U, 0xFFFFFFFFU}) {
    EXPECT_FALSE(appendUtf8(out, code)) << code;
  }
  EXPECT_EQ(out, "");
  EXPECT_TRUE(appendUtf8(out, 0x24));
  EXPECT_TRUE(appendUtf8(out, 0x20AC));
  EXPECT_EQ(out, "$\xE2\x82\xAC");
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
