#include "tools/drawing/XmlText.hpp"

#include <gtest/gtest.h>

#include <string>

#include "tests/support/ScannedMarkup.hpp"

namespace tern::drawing {
namespace {

TEST(XmlText, markupIsEscaped) { EXPECT_EQ(escaped("<\"&'>"), "&lt;&quot;&amp;'&gt;"); }

TEST(XmlText, whatIsNotUtf8OrForbiddenBecomesAReplacement) {
  const std::string mark = "\xEF\xBF\xBD";
  EXPECT_EQ(escaped("a\x01z"), "a" + mark + "z");
  EXPECT_EQ(escaped(std::string_view("\0", 1)), mark);
  EXPECT_EQ(escaped("\xFF"), mark);
  EXPECT_EQ(escaped("\xC0\xAF"), mark + mark);             // an overlong slash
  EXPECT_EQ(escaped("\xED\xA0\x80"), mark + mark + mark);  // half a surrogate pair
  EXPECT_EQ(escaped("\xEF\xBF\xBF"), mark);                // no character
  EXPECT_EQ(escaped("\xF5\x80\x80\x80"), mark + mark + mark + mark);
  EXPECT_EQ(escaped("\xE2\x82"), mark + mark);  // cut short
  EXPECT_EQ(escaped("\xC3\xA9\xE2\x82\xAC\xF0\x9F\x9A\xAA\t\n"),
            "\xC3\xA9\xE2\x82\xAC\xF0\x9F\x9A\xAA\t\n");
}

TEST(XmlText, escapedBytesOfAnyKindAreWellFormed) {
  for (int first = 0; first < 256; ++first) {
    for (int second = 0; second < 256; ++second) {
      const std::string text{static_cast<char>(first), static_cast<char>(second), 'z'};
      const std::string markup = "<a>" + escaped(text) + "</a>";
      ASSERT_EQ(test::scanMarkup(markup).problem, "") << first << " " << second;
    }
  }
}

}  // namespace
}  // namespace tern::drawing
