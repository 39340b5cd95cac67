#include "tools/tern/picture/DrawingImage.hpp"

#include <gtest/gtest.h>

#include <string>

#include "tests/tools/tern/picture/PictureVenue.hpp"

namespace tern::picture {
namespace {

const std::string names =
    " xmlns=\"http://www.w3.org/2000/svg\" xmlns:xlink=\"http://www.w3.org/1999/xlink\"";
const std::string placing = " viewBox=\"0 0 9 5\" preserveAspectRatio=\"none\"";

std::string shown(std::string_view svg) {
  const DrawingImage image = imageOf(svg, {});
  EXPECT_EQ(image.problem, "") << svg;
  return drawingIn(image.uri);
}

std::optional<Box> frameOf(const std::string& attributes, const std::optional<Box>& stated = {}) {
  const DrawingImage image = imageOf("<svg " + attributes + "/>", stated);
  return image.problem.empty() ? std::optional(image.frame) : std::nullopt;
}

TEST(DrawingImage, firstTagStatesOurPlacingAndTheRestStays) {
  EXPECT_EQ(shown("<svg viewBox='0,0 9 5' width=\"3in\" height='2' preserveAspectRatio='xMinYMin' "
                  "x='4' y='5' fill=\"none\"\n class = 'a>b'><svg viewBox='1'>&</svg> "),
            "<svg fill=\"none\" class = 'a>b'" + names + placing + "><svg viewBox='1'>&</svg> ");
}

TEST(DrawingImage, namesThatADrawingHasAreKept) {
  const std::string own =
      " xmlns='http://www.w3.org/2000/svg' xmlns:xlink='http://www.w3.org/1999/xlink'";
  EXPECT_EQ(shown("<svg" + own + " viewBox='0 0 9 5'/>"), "<svg" + own + placing + "/>");
}

TEST(DrawingImage, whatStandsInFrontGoesExceptForADocumentType) {
  const std::string tag = "<svg" + names + placing + "/>";
  EXPECT_EQ(shown("\xEF\xBB\xBF \n<?xml version='1.0' encoding='UTF-16'?><!-- <svg x='> -->"
                  "<?xml-stylesheet href='a.css'?><svg viewBox='0 0 9 5'/>"),
            tag);
  for (const std::string type :
       {"<!DOCTYPE svg>", "<!DOCTYPE svg PUBLIC \"-//W3C//DTD SVG 1.1//EN\" \"http://a/b.dtd\">",
        "<!DOCTYPE svg [<!ENTITY a 'b>'> ] >"}) {
    EXPECT_EQ(shown("<!-- --> " + type + "\n<svg viewBox='0 0 9 5'/>"), type + tag);
  }
}

TEST(DrawingImage, frameIsTheViewBox) {
  const auto box = frameOf("viewBox='10,20 +300 200' width='5' height='5'");
  ASSERT_TRUE(box);
  EXPECT_EQ(box->left, 10);
  EXPECT_EQ(box->top, 20);
  EXPECT_EQ(box->right, 310);
  EXPECT_EQ(box->bottom, 220);
}

TEST(DrawingImage, withoutAViewBoxTheSizeIsTheFrame) {
  EXPECT_EQ(frameOf("width='30px' height=' 20 '")->width(), 30);
  EXPECT_EQ(frameOf("width='30px' height=' 20 '")->height(), 20);
  EXPECT_NEAR(frameOf("width='210mm' height='29.7cm'")->width(), 793.7, 0.01);
  EXPECT_NEAR(frameOf("width='210mm' height='29.7cm'")->height(), 1122.52, 0.01);
  EXPECT_DOUBLE_EQ(frameOf("width='72pt' height='1pc'")->width(), 96);
  EXPECT_EQ(frameOf("width='1in' height='1pc'")->height(), 16);
  EXPECT_EQ(frameOf("viewBox='0 0 9' width='30' height='20'")->width(), 30);
}

TEST(DrawingImage, withoutASizeTheMapsSizeIsTheFrame) {
  for (const char* none :
       {"", "width='100'", "width='100%' height='100%'", "width='5em' height='5'",
        "viewBox='0 0 0 5'", "viewBox='0 0 -1 5'", "viewBox='0 0 nan 5'", "viewBox='0 0 inf 5'",
        "viewBox='0 0 1e308 5'", "viewBox='&zero;'"}) {
    EXPECT_FALSE(frameOf(none)) << none;
    EXPECT_EQ(frameOf(none, Box{0, 0, 7, 3})->width(), 7) << none;
  }
  EXPECT_EQ(imageOf("<svg/>", {}).problem, "it says no size");
}

TEST(DrawingImage, whatDoesNotBeginAsAnSvgIsReported) {
  for (const char* text : {"",
                           " ",
                           "Hall",
                           "<",
                           "<html/>",
                           "<svgs/>",
                           "<s:svg/>",
                           "<svg",
                           "<svg ",
                           "<svg a",
                           "<svg a>",
                           "<svg a=",
                           "<svg a=b>",
                           "<svg a='b",
                           "<svg a='b'",
                           "<svg a='b'c='d'>",
                           "<svg /",
                           "<svg ='a'>",
                           "<!--",
                           "<!-- <svg/>",
                           "<?xml",
                           "<!DOCTYPE",
                           "<!DOCTYPE svg [",
                           "<!DOCTYPE svg []",
                           "<!ELEMENT svg><svg/>",
                           "<![CDATA[a]]><svg/>"}) {
    EXPECT_EQ(imageOf(text, Box{0, 0, 9, 9}).problem, "it is not an SVG") << text;
  }
}

TEST(DrawingImage, largestDrawingStillIsAValueThatXmlReadersTake) {
  std::string svg = "<svg viewBox='0 0 9 5'>";
  svg.append(mostDrawingBytes - svg.size(), ' ');
  EXPECT_LT(imageOf(svg, {}).uri.size(), 10'000'000U);
  EXPECT_EQ(imageOf(svg + " ", {}).problem, "it is too large");
}

TEST(DrawingImage, everyByteArrivesInLettersThatEndNothing) {
  std::string bytes;
  for (int byte = 0; byte < 256; ++byte) {
    bytes += static_cast<char>(byte);
    const DrawingImage image = imageOf("<svg viewBox='0 0 9 5'>" + bytes, {});
    EXPECT_EQ(image.uri.find_first_of("<>\"'& \n"), std::string::npos);
    ASSERT_EQ(drawingIn(image.uri), "<svg" + names + placing + ">" + bytes);
  }
}

}  // namespace
}  // namespace tern::picture
