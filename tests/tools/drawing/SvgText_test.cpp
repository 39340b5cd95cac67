#include "tools/drawing/SvgText.hpp"

#include <gtest/gtest.h>

namespace tern::drawing {
namespace {

TEST(SvgText, viewBoxHasFourNumbersBetweenSingleSpaces) {
  EXPECT_EQ(SvgText(1200, 800).finished(),
            "<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 1200 800\"></svg>");
}

TEST(SvgText, shapesStandInTheOrderOfTheCalls) {
  SvgText svg(10, 10);
  svg.openGroup("fill=\"#fff\"");
  svg.rect({1, 2, 4, 6});
  svg.circle({5, 6}, 2, "stroke=\"#000\"");
  svg.shape({1, 1}, "h3");
  svg.closeGroup();
  EXPECT_EQ(svg.finished(),
            "<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 10 10\"><g fill=\"#fff\">"
            "<rect x=\"1\" y=\"2\" width=\"3\" height=\"4\"/>"
            "<circle cx=\"5\" cy=\"6\" r=\"2\" stroke=\"#000\"/><path d=\"M1 1h3\"/></g></svg>");
}

TEST(SvgText, markupInWordsIsEscaped) {
  SvgText svg(10, 10);
  svg.text({1, 2}, 12, "Juniper & <Alder>");
  EXPECT_NE(svg.finished().find("<text x=\"1\" y=\"2\" font-size=\"12\">Juniper &amp; &lt;Alder&gt;"
                                "</text>"),
            std::string::npos);
}

}  // namespace
}  // namespace tern::drawing
