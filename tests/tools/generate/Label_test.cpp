#include "tools/generate/Label.hpp"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

namespace tern::generate {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(Label, shortWordsStandOnOneLineAtTheLargestSize) {
  const Label label = fitLabel("Wren Tea", 400, 100, 10, 30);
  EXPECT_THAT(label.lines, ElementsAre("Wren Tea"));
  EXPECT_EQ(label.size, 30);
}

TEST(Label, longWordsAreBrokenAtSpaces) {
  EXPECT_THAT(fitLabel("Inkwell Department Store", 200, 200, 10, 30).lines,
              ElementsAre("Inkwell", "Department", "Store"));
}

TEST(Label, ampersandGoesWithTheWordBehindIt) {
  EXPECT_THAT(fitLabel("Sparrow & Bramble Clothing", 220, 200, 10, 30).lines,
              ElementsAre("Sparrow", "& Bramble", "Clothing"));
}

TEST(Label, whatDoesNotFitIsLeftOut) {
  EXPECT_THAT(fitLabel("Department", 20, 200, 10, 30).lines, IsEmpty());
  EXPECT_THAT(fitLabel("A B C", 15, 20, 10, 30).lines, IsEmpty());
}

TEST(Label, lettersOfSeveralBytesCountOnce) {
  EXPECT_EQ(textWidthPx("Café", 100), textWidthPx("Cafe", 100));
}

RC_GTEST_PROP(Label, linesFitTheRoom, ()) {
  const int width = *rc::gen::inRange(10, 500);
  const int height = *rc::gen::inRange(10, 300);
  const Label label = fitLabel("North Star & Sparrow Dry Cleaning", width, height, 10, 40);
  RC_ASSERT(static_cast<int>(label.lines.size()) * labelLinePx(label.size) <= height);
  for (const std::string& line : label.lines) RC_ASSERT(textWidthPx(line, label.size) <= width);
}

}  // namespace
}  // namespace tern::generate
