#include "tools/tern/picture/SvgStyle.hpp"

#include <gtest/gtest.h>

#include <string>

namespace tern::picture {
namespace {

SvgStyle styleIn(std::string_view tag, const SvgSheet& sheet = {}, const SvgStyle& outer = {}) {
  SvgTags tags(tag);
  EXPECT_TRUE(tags.next());
  return styleOf(tags, outer, sheet);
}

bool isPaint(const std::optional<Paint>& paint, std::string_view colour) {
  return paint && contrast(paint->colour, readPaint(colour)->colour) < 1.001;
}

TEST(SvgStyle, withoutAWordAShapeIsFilledBlack) {
  const SvgStyle style = styleIn("<rect/>");
  EXPECT_TRUE(isPaint(style.fill, "black"));
  EXPECT_FALSE(style.stroke);
}

TEST(SvgStyle, whatIsNotSaidIsThatOfAround) {
  const SvgStyle outer = styleIn("<g fill='none' stroke='#888' font-size='30px' opacity='.5'/>");
  const SvgStyle inner = styleIn("<rect stroke='inherit' opacity='50%'/>", {}, outer);
  EXPECT_FALSE(inner.fill);
  EXPECT_TRUE(isPaint(inner.stroke, "#888"));
  EXPECT_EQ(inner.fontSize, 30);
  EXPECT_DOUBLE_EQ(inner.opacity, 0.25);
}

TEST(SvgStyle, sheetOutranksAttributesAndTheStyleBoth) {
  SvgSheet sheet;
  sheet.add(
      "@import 'a.css'; /* walls */ .wall, .cls-1 { stroke: #333; fill: none }"
      "rect{fill:red!important}.wall{stroke:#777}");
  const SvgStyle style = styleIn("<rect class='other wall' fill='blue' stroke='blue'/>", sheet);
  EXPECT_FALSE(style.fill);
  EXPECT_TRUE(isPaint(style.stroke, "#777"));
  EXPECT_TRUE(isPaint(styleIn("<rect fill='blue'/>", sheet).fill, "red"));
  EXPECT_TRUE(isPaint(styleIn("<rect style=' fill : lime ; x'/>", sheet).fill, "lime"));
  EXPECT_TRUE(isPaint(styleIn("<path class='cls-1'/>", sheet).stroke, "#333"));
}

TEST(SvgStyle, hiddenIsHidden) {
  EXPECT_FALSE(styleIn("<g display='none'/>").isShown);
  EXPECT_FALSE(styleIn("<g style='visibility:hidden'/>").isShown);
  EXPECT_FALSE(styleIn("<g/>", {}, styleIn("<g display='none'/>")).isShown);
}

TEST(SvgStyle, textsAreAnchored) {
  EXPECT_EQ(styleIn("<text/>").anchor, -1);
  EXPECT_EQ(styleIn("<text text-anchor='middle'/>").anchor, 0);
  EXPECT_EQ(styleIn("<text text-anchor='end'/>").anchor, 1);
}

}  // namespace
}  // namespace tern::picture
