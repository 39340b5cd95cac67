#include "tools/tern/picture/DrawingMarks.hpp"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <string>
#include <vector>

namespace tern::picture {
namespace {

constexpr Box frame{0, 0, 400, 300};

DrawingMarks marksIn(const std::string& contents) {
  return marksOf("<svg viewBox='0 0 400 300'>" + contents + "</svg>", frame);
}

bool isColour(const std::optional<Colour>& colour, std::string_view name) {
  return colour && contrast(*colour, readPaint(name)->colour) < 1.01;
}

TEST(DrawingMarks, floorIsWhatMostOfItIsFilledWithAboveTheGround) {
  const DrawingMarks marks = marksIn(
      "<rect width='400' height='300' fill='#8a8'/><rect width='200' height='200' fill='#fff'/>"
      "<g fill='#fcc'><rect width='90' height='90'/><rect width='90' height='90'/></g>");
  EXPECT_TRUE(isColour(marks.floor, "#fff"));
  EXPECT_TRUE(isColour(marks.areas, "#fcc"));
}

TEST(DrawingMarks, groundIsTheFloorWhereThereIsNoOther) {
  EXPECT_TRUE(isColour(marksIn("<rect width='400' height='300' fill='#8a8'/>").floor, "#8a8"));
  EXPECT_FALSE(marksIn("<path d='M0 0h9' fill='none' stroke='red'/>").floor);
}

TEST(DrawingMarks, wallsAreMostOfTheLinesThatCanBeSeen) {
  const DrawingMarks marks = marksIn(
      "<rect width='200' height='200' fill='#fff' stroke='#fefefe' stroke-width='90'/>"
      "<path d='M0 0h90' stroke='#333' fill='none'/>"
      "<path d='M0 0h70v70' stroke='#999' fill='none'/>");
  EXPECT_TRUE(isColour(marks.lines, "#999"));
}

TEST(DrawingMarks, whatIsHalfSeenIsHalfAsDark) {
  const DrawingMarks marks = marksIn(
      "<rect width='200' height='200' fill='#fff'/>"
      "<g opacity='.5'><path d='M0 0h90' stroke='#000' stroke-opacity='50%' fill='none'/></g>");
  EXPECT_TRUE(isColour(marks.lines, "#bfbfbf"));
}

TEST(DrawingMarks, whatIsOnlyDefinedOrHiddenIsNotThere) {
  const DrawingMarks marks = marksIn(
      "<defs><rect width='9' height='9'/></defs><g display='none'><rect width='9' "
      "height='9'/><text>A</text></g><rect x='900' width='9' height='9'/>");
  EXPECT_TRUE(marks.shapes.empty());
  EXPECT_TRUE(marks.texts.empty());
}

TEST(DrawingMarks, textsAreReadWhereTheyStand) {
  const DrawingMarks marks = marksIn(
      "<g text-anchor='middle' font-size='20' transform='translate(100 0)'><text x='50' y='80'>"
      "Bread &amp;\n  Butter<tspan x='60' y='90'>Ltd</tspan></text></g>");
  ASSERT_EQ(marks.texts.size(), 2U);
  EXPECT_EQ(marks.texts[0].text, "Bread & Butter");
  EXPECT_EQ(marks.texts[0].fontSize, 20);
  EXPECT_DOUBLE_EQ(marks.texts[0].box.centre().x, 150);
  EXPECT_TRUE(marks.texts[0].box.contains({150, 75}));
  EXPECT_EQ(marks.texts[1].text, "Ltd");
  EXPECT_DOUBLE_EQ(marks.texts[1].box.centre().x, 160);
}

TEST(DrawingMarks, blankIsWhereNextToNothingIsDrawn) {
  std::string rooms = "<rect width='400' height='300'/>";
  for (int i = 0; i < 5; ++i)
    rooms += "<rect x='" + std::to_string(10 * i) + "' width='9' height='9'/>";
  const DrawingMarks marks = marksIn(rooms);
  EXPECT_FALSE(marks.isBlankIn({0, 0, 60, 60}));
  EXPECT_TRUE(marks.isBlankIn({100, 100, 160, 160}));
  EXPECT_TRUE(marksIn("").isBlankIn(frame));
  EXPECT_FALSE(marksIn("<image href='a'/>").isBlankIn(frame));
}

TEST(DrawingMarks, deepDrawingsAreReadWithoutDepth) {
  std::string deep;
  for (int i = 0; i < 100'000; ++i) deep += "<g>";
  EXPECT_TRUE(marksIn(deep + "<rect width='9' height='9'/>").shapes.empty());
}

RC_GTEST_PROP(DrawingMarks, anyDrawingHasPlacesThatAreNumbers, ()) {
  const auto pieces = *rc::gen::container<std::vector<std::string>>(rc::gen::element<std::string>(
      "<g ", "<rect ", "<path ", "<text ", ">", "/>", "</g>", "x='1e7' ", "width='9' height='9' ",
      "d='M0 0L9e6 9e6a1 1 0 11 2 2' ", "transform='scale(1e7)' ",
      "transform='rotate(9)skewX(90)' ", "font-size='1e7' ", "font-size='-1' ",
      "style='fill:#123;opacity:9' ", "words", "&amp;", "<"));
  std::string svg = "<svg>";
  for (const std::string& piece : pieces) svg += piece;
  const DrawingMarks marks = marksOf(svg, frame);
  for (const Box& box : marks.shapes) {
    RC_ASSERT(box.left <= box.right && box.top <= box.bottom);
  }
  for (const DrawnText& text : marks.texts) RC_ASSERT(text.box.width() >= 0);
}

}  // namespace
}  // namespace tern::picture
