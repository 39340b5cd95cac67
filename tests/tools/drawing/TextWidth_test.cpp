#include "tools/drawing/TextWidth.hpp"

#include <gtest/gtest.h>

#include <string>

namespace tern::drawing {
namespace {

const std::string ellipsis = "\xE2\x80\xA6";

TEST(TextWidth, widthGrowsWithLettersAndSize) {
  EXPECT_EQ(textWidth("", 10), 0);
  EXPECT_LT(textWidth("ii", 10), textWidth("mm", 10));
  EXPECT_DOUBLE_EQ(textWidth("Lift", 20), 2 * textWidth("Lift", 10));
  EXPECT_DOUBLE_EQ(textWidth("e\xCC\x81", 10), textWidth("e", 10));  // a mark above takes no room
  EXPECT_GT(textWidth("\xE5\x87\xBA\xE5\x8F\xA3", 10), 20);          // two Chinese characters
}

TEST(TextWidth, shortTextStaysWhole) { EXPECT_EQ(fittedText("Lift", 10, 100), "Lift"); }

TEST(TextWidth, longTextEndsInAnEllipsisAndFits) {
  const std::string text = "Department of Remarkably Long Names";
  for (double width = 10; width < 300; width += 7) {
    const std::string fitted = fittedText(text, 12, width);
    EXPECT_LE(textWidth(fitted, 12), width);
    EXPECT_TRUE(fitted == text || fitted.ends_with(ellipsis)) << fitted;
  }
}

TEST(TextWidth, charactersAreNotCutInPieces) {
  EXPECT_EQ(fittedText("\xE5\x87\xBA\xE5\x8F\xA3\xE5\x87\xBA", 10, 20), "\xE5\x87\xBA" + ellipsis);
}

TEST(TextWidth, linesBreakAtBlanks) {
  const auto lines = wrappedText("North exit to the old harbour", 10, 70, 3);
  ASSERT_EQ(lines.size(), 3U);
  EXPECT_EQ(lines[0] + " " + lines[1] + " " + lines[2], "North exit to the old harbour");
  for (const std::string& line : lines) EXPECT_LE(textWidth(line, 10), 70);
}

TEST(TextWidth, lastLineTakesTheEllipsis) {
  const auto lines = wrappedText("North exit to the old harbour and the sea", 10, 60, 2);
  ASSERT_EQ(lines.size(), 2U);
  EXPECT_TRUE(lines[1].ends_with(ellipsis));
}

TEST(TextWidth, wordsWiderThanALineBreakAnywhere) {
  const auto lines = wrappedText(std::string(30, 'w'), 10, 50, 9);
  ASSERT_GT(lines.size(), 2U);
  std::string joined;
  for (const std::string& line : lines) joined += line;
  EXPECT_EQ(joined, std::string(30, 'w'));
}

TEST(TextWidth, emptyTextIsOneEmptyLine) {
  EXPECT_EQ(wrappedText("", 10, 50, 2), std::vector<std::string>{""});
}

TEST(TextWidth, noRoomAtAllStillEnds) {
  EXPECT_EQ(wrappedText("ab cd", 10, 0, 3).size(), 3U);
  EXPECT_EQ(fittedText("ab", 10, -5), ellipsis);
}

}  // namespace
}  // namespace tern::drawing
