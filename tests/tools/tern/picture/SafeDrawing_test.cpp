#include "tools/tern/picture/SafeDrawing.hpp"

#include <gtest/gtest.h>

#include <random>
#include <string>

#include "tests/support/ScannedMarkup.hpp"

namespace tern::picture {
namespace {

std::string markupOf(std::string_view svg, std::string_view prefix = "p-") {
  const ReadDrawing read = SafeDrawing::read(svg);
  EXPECT_EQ(read.problem, "");
  const std::string markup = read.drawing.markup(prefix, 1);
  const test::ScannedMarkup scanned = test::scanMarkup(markup);
  EXPECT_EQ(scanned.problem, "");
  EXPECT_EQ(test::reachOf(scanned), "");
  return markup;
}

std::string insideOf(const std::string& contents) {
  const std::string markup = markupOf("<svg viewBox='0 0 9 9'>" + contents + "</svg>");
  if (markup == "<g/>") return "";
  return markup.substr(3, markup.size() - 7);
}

TEST(SafeDrawing, plainDrawingStaysAsItIs) {
  EXPECT_EQ(
      insideOf("<g fill=\"#fff\"><path d=\"M0 0h3\"/></g><text x=\"1\">Hall &amp; "
               "<tspan>B</tspan></text>"),
      "<g fill=\"#fff\"><path d=\"M0 0h3\"/></g><text x=\"1\">Hall &amp; <tspan>B</tspan></text>");
}

TEST(SafeDrawing, outermostElementKeepsItsStyleOnly) {
  EXPECT_EQ(
      markupOf("<svg xmlns='http://www.w3.org/2000/svg' width='9' viewBox='0 0 9 9' fill='none' "
               "onload='x()' transform='scale(2)'><path d='M0'/></svg>"),
      "<g fill=\"none\"><path d=\"M0\"/></g>");
}

TEST(SafeDrawing, frameIsTheViewBoxElseTheSize) {
  const auto frameOf = [](const char* attributes) {
    const auto read = SafeDrawing::read("<svg " + std::string(attributes) + "/>");
    EXPECT_EQ(read.problem, "");
    return read.drawing.frame();
  };
  const auto box = frameOf("viewBox='10,20 300 200'");
  ASSERT_TRUE(box);
  EXPECT_EQ(box->left, 10);
  EXPECT_EQ(box->bottom, 220);
  ASSERT_TRUE(frameOf("width='30px' height='20'"));
  EXPECT_EQ(frameOf("width='30px' height='20'")->right, 30);
  for (const char* none : {"", "width='100'", "viewBox='0 0 0 5'", "viewBox='0 0 -1 5'",
                           "viewBox='0 0 nan 5'", "viewBox='0 0 inf 5'", "viewBox='0 0 1e308 5'"}) {
    EXPECT_FALSE(frameOf(none)) << none;
  }
}

TEST(SafeDrawing, scriptsHandlersAndForeignContentGo) {
  EXPECT_EQ(
      insideOf("<script>alert(1)</script><g onclick='x()'/><foreignObject><p>a</p></foreignObject>"
               "<image href='http://example.com/a.png'/><style>*{fill:red}</style>"
               "<animate attributeName='href' to='javascript:x()'/>"
               "<iframe src='x'/><set/><title>t</title><rect width='1'/>"),
      "<g/><rect width=\"1\"/>");
}

TEST(SafeDrawing, whatADroppedElementHoldsGoesWithIt) {
  EXPECT_EQ(insideOf("<mask><g><rect/></g>a</mask><rect/>"), "<rect/>");
}

TEST(SafeDrawing, linksAndSwitchesBecomeGroups) {
  EXPECT_EQ(insideOf("<a href='http://example.com' target='_top'><rect/></a>"
                     "<switch><foreignObject/><g><rect/></g></switch>"),
            "<g><rect/></g><g><g><rect/></g></g>");
}

TEST(SafeDrawing, textOutsideTextElementsGoes) {
  EXPECT_EQ(insideOf("a<g>b<rect>c</rect></g>"), "<g><rect/></g>");
}

TEST(SafeDrawing, idsAreReplacedAndOnlyThoseReferredToStay) {
  EXPECT_EQ(insideOf("<defs><linearGradient id='sun'/></defs><rect id='r' fill='url(#sun)'/>"),
            "<defs><linearGradient id=\"p-2\"/></defs><rect fill=\"url(#p-2)\"/>");
}

TEST(SafeDrawing, drawingsWithDifferentPrefixesShareNoIds) {
  const std::string svg =
      "<svg viewBox='0 0 1 1'><linearGradient id='a'/><rect fill='url(#a)'/></svg>";
  const std::string both = "<g>" + markupOf(svg, "one-") + markupOf(svg, "two-") + "</g>";
  EXPECT_EQ(test::reachOf(test::scanMarkup(both)), "");
}

TEST(SafeDrawing, referencesOutOfTheDrawingGo) {
  EXPECT_EQ(
      insideOf("<use href='http://example.com/a.svg#b'/><use xlink:href='#none'/>"
               "<rect fill='url(#none)' clip-path='url(#none)' stroke='url(//example.com#a)'/>"),
      "<rect fill=\"none\"/>");
}

TEST(SafeDrawing, useShowsWhatItNames) {
  EXPECT_EQ(insideOf("<use xlink:href='#s' x='4'/><symbol id='s'><path d='M0'/></symbol>"),
            "<use href=\"#p-2\" x=\"4\"/><symbol id=\"p-2\"><path d=\"M0\"/></symbol>");
}

TEST(SafeDrawing, useOfAUseIsLeftOut) {
  EXPECT_EQ(
      insideOf(
          "<g id='a'><rect/></g><g id='b'><use href='#a'/><use href='#a'/></g>"
          "<g id='c'><use href='#b'/></g><use href='#d' id='d'/><g id='e'><use href='#e'/></g>"),
      "<g id=\"p-1\"><rect/></g><g><use href=\"#p-1\"/><use href=\"#p-1\"/></g><g></g><g></g>");
}

TEST(SafeDrawing, allUsesTogetherAreBounded) {
  std::string svg = "<svg><g id='a'>";
  for (int i = 0; i < 1000; ++i) svg += "<rect/>";
  svg += "</g>";
  for (int i = 0; i < 1000; ++i) svg += "<use href='#a'/>";
  const auto scanned = test::scanMarkup(markupOf(svg + "</svg>"));
  EXPECT_EQ(scanned.valuesOf("href").size(), 199U);
}

TEST(SafeDrawing, clipPathsDoNotNest) {
  EXPECT_EQ(insideOf("<clipPath id='a'><rect clip-path='url(#b)'/></clipPath>"
                     "<clipPath id='b' clip-path='url(#a)'><use href='#r'/></clipPath>"
                     "<rect id='r' clip-path='url(#a)'/>"),
            "<clipPath id=\"p-1\"><rect/></clipPath><clipPath></clipPath>"
            "<rect clip-path=\"url(#p-1)\"/>");
}

TEST(SafeDrawing, styleSheetsBecomeAttributes) {
  EXPECT_EQ(insideOf("<style>.st0{fill:#fff;}.st1{stroke:red;filter:url(#f)}</style>"
                     "<rect class='st0 st1' fill='#000'/><rect style='opacity:.5;width:9'/>"),
            "<rect fill=\"#fff\" stroke=\"red\"/><rect opacity=\".5\"/>");
}

TEST(SafeDrawing, styleSheetBehindItsUseCounts) {
  EXPECT_EQ(insideOf("<rect class='a'/><defs><style><![CDATA[.a{fill:red}]]></style></defs>"),
            "<rect fill=\"red\"/><defs/>");
}

TEST(SafeDrawing, textsTooSmallToReadAreLeftOut) {
  const auto drawing = SafeDrawing::read(
                           "<svg><g transform='scale(2)'><text font-size='10'>a</text></g>"
                           "<text font-size='10px'>b<tspan font-size='50'>c</tspan></text></svg>")
                           .drawing;
  EXPECT_EQ(test::scanMarkup(drawing.markup("p", 1)).text, "abc");
  EXPECT_EQ(test::scanMarkup(drawing.markup("p", 0.5)).text, "ac");
  EXPECT_EQ(test::scanMarkup(drawing.markup("p", 0.2)).text, "c");
  EXPECT_EQ(test::scanMarkup(drawing.markup("p", 0.1)).text, "");
}

TEST(SafeDrawing, whatIsNoDrawingIsReported) {
  EXPECT_EQ(SafeDrawing::read("").problem, "no element on line 1");
  EXPECT_EQ(SafeDrawing::read("<html/>").problem, "it is not an SVG");
  EXPECT_EQ(SafeDrawing::read("<svg><g></svg>").problem, "an end without a start on line 1");
  EXPECT_EQ(SafeDrawing::read("<!DOCTYPE svg [<!ENTITY a 'b'>]><svg>&a;</svg>").problem,
            "a declaration that is not read here on line 1");
  EXPECT_EQ(SafeDrawing::read(std::string(SafeDrawing::mostBytes + 1, ' ')).problem,
            "it is too large");
  EXPECT_EQ(SafeDrawing().markup("p", 1), "");
}

TEST(SafeDrawing, elementsAreBounded) {
  std::string svg = "<svg>";
  for (std::size_t i = 0; i < SafeDrawing::mostElements; ++i) svg += "<g/>";
  EXPECT_EQ(SafeDrawing::read(svg + "</svg>").problem, "it has too many elements");
}

TEST(SafeDrawing, longValuesFromAStyleSheetAreBounded) {
  std::string svg = "<svg><style>.a{stroke-dasharray:" + std::string(100'000, '1') + "}</style>";
  for (int i = 0; i < 5000; ++i) svg += "<g class='a'/>";
  EXPECT_EQ(SafeDrawing::read(svg + "</svg>").problem, "it has too many styles");
}

constexpr std::string_view rich =
    "<?xml version=\"1.0\"?><!DOCTYPE svg><svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"0 0 "
    "90 60\">"
    "<style>.a{fill:url(#g)} rect.b,#c{stroke:#123;font-family:'A B'}</style><!-- c -->"
    "<defs><linearGradient id=\"g\"><stop offset=\"50%\" "
    "stop-color=\"rgb(1,2,3)\"/></linearGradient>"
    "<radialGradient id=\"h\" xlink:href=\"#g\"/><clipPath id=\"k\"><circle r=\"3\"/></clipPath>"
    "<symbol id=\"s\" viewBox=\"0 0 1 1\"><path d=\"M0 0L9,9z\"/></symbol></defs>"
    "<a xlink:href=\"http://example.com\"><rect class=\"a b\" id=\"c\" onclick=\"x()\"/></a>"
    "<use href=\"#s\"/><g clip-path='url(\"#k\")' style=\"fill:url(#h);opacity:.3\">"
    "<text font-size=\"12\">A &amp; B &#8364;<tspan>c</tspan><![CDATA[<script>]]></text></g>"
    "<script>alert('x')</script><foreignObject><p>&lt;</p></foreignObject></svg>";

std::string mutated(std::string text, std::mt19937& random) {
  const auto below = [&](std::size_t bound) { return random() % bound; };
  for (std::size_t times = 1 + below(6); times > 0; --times) {
    constexpr std::string_view pieces[] = {
        "<",        ">",   "\"",  "&",     "'",    "/",         "<g>",  "</g>",
        "<script>", "]]>", "#",   "url(",  "href", "&#0;",      "\xFF", "\xED\xA0",
        "{",        "}",   "id=", "<use ", "<!--", "<![CDATA[", ";",    "onload="};
    const std::size_t at = below(text.size() + 1);
    switch (below(4)) {
      case 0:
        text.insert(at, pieces[below(std::size(pieces))]);
        break;
      case 1:
        text.erase(at, below(12));
        break;
      case 2:
        text.insert(at, text.substr(below(text.size() + 1), below(60)));
        break;
      default:
        text.insert(at, 1, static_cast<char>(below(256)));
    }
  }
  return text;
}

TEST(SafeDrawing, damagedDrawingsAreShownSafelyOrNotAtAll) {
  std::mt19937 random(20240611);
  int shown = 0;
  for (int i = 0; i < 20'000; ++i) {
    const std::string svg = mutated(std::string(rich), random);
    const ReadDrawing read = SafeDrawing::read(svg);
    if (!read.problem.empty()) continue;
    ++shown;
    const auto scanned = test::scanMarkup(read.drawing.markup("p-", 1));
    ASSERT_EQ(scanned.problem, "") << svg;
    ASSERT_EQ(test::reachOf(scanned), "") << svg;
  }
  EXPECT_GT(shown, 1000);
}

}  // namespace
}  // namespace tern::picture
