#include "tools/tern/picture/SvgShapes.hpp"

#include <gtest/gtest.h>

#include <string>

#include "tools/tern/picture/Markup.hpp"

namespace tern::picture {
namespace {

// "left top right bottom", or "none"
std::string boxIn(std::string_view tag, std::string_view transform = "") {
  SvgTags tags(tag);
  EXPECT_TRUE(tags.next());
  const auto box = boxOfShape(tags, readTransform(transform));
  if (!box) return "none";
  return decimal(box->left) + " " + decimal(box->top) + " " + decimal(box->right) + " " +
         decimal(box->bottom);
}

TEST(SvgShapes, everyShapeHasItsBox) {
  EXPECT_EQ(boxIn("<rect x='1' y='2' width='10' height='20'/>"), "1 2 11 22");
  EXPECT_EQ(boxIn("<circle cx='5' cy='5' r='2'/>"), "3 3 7 7");
  EXPECT_EQ(boxIn("<ellipse cx='5' cy='5' rx='1' ry='3'/>"), "4 2 6 8");
  EXPECT_EQ(boxIn("<line x1='9' y1='8' x2='7' y2='6'/>"), "7 6 9 8");
  EXPECT_EQ(boxIn("<polygon points='1,1 5,1 3-4'/>"), "1 -4 5 1");
  EXPECT_EQ(boxIn("<text x='1'/>"), "none");
  EXPECT_EQ(boxIn("<rect width='0' height='0'/>"), "none");
}

TEST(SvgShapes, pathsAreFollowed) {
  EXPECT_EQ(boxIn("<path d='M10 10h20v5H0z'/>"), "0 10 30 15");
  EXPECT_EQ(boxIn("<path d='m1,1 2,0 0,2zl-1-1'/>"), "0 0 3 3");
  EXPECT_EQ(boxIn("<path d='M0 0C1 9 2-9 3 0S4 5 6 0Q7 7 8 0T10 0'/>"), "0 -9 10 9");
  EXPECT_EQ(boxIn("<path d='M0 0a5 5 0 0110 4A1 1 0 1 0 12 1'/>"), "0 0 12 4");
}

TEST(SvgShapes, whatIsNotUnderstoodEndsAPath) {
  EXPECT_EQ(boxIn("<path d='M0 0L5 5L9'/>"), "0 0 5 5");
  EXPECT_EQ(boxIn("<path d='5 5'/>"), "none");
  EXPECT_EQ(boxIn("<path d='M1 1 2 2 x 9 9'/>"), "1 1 2 2");
}

TEST(SvgShapes, transformsAreTakenFromTheInside) {
  const char* const rect = "<rect width='2' height='1'/>";
  EXPECT_EQ(boxIn(rect, "translate(10 20)scale(2)"), "10 20 14 22");
  EXPECT_EQ(boxIn(rect, "scale(2, 3) translate(1)"), "2 0 6 3");
  EXPECT_EQ(boxIn(rect, "rotate(90)"), "-1 0 0 2");
  EXPECT_EQ(boxIn(rect, "rotate(180 1 1)"), "0 1 2 2");
  EXPECT_EQ(boxIn(rect, "matrix(1 0 0 -1 5 5)"), "5 4 7 5");
  EXPECT_EQ(boxIn(rect, "skewX(45)"), "0 0 3 1");
  EXPECT_EQ(boxIn(rect, "nonsense"), "0 0 2 1");
}

TEST(SvgShapes, scaleIsTheRootOfWhatAreasGrowBy) {
  EXPECT_DOUBLE_EQ(readTransform("scale(2 8) rotate(30)").scale(), 4);
}

}  // namespace
}  // namespace tern::picture
