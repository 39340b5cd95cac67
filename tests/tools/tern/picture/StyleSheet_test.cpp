#include "tools/tern/picture/StyleSheet.hpp"

#include <gtest/gtest.h>

#include <string>

namespace tern::picture {
namespace {

std::string written(const Declarations& declarations) {
  std::string text;
  for (const Declaration& declaration : declarations) {
    text += std::string(declaration.rule->name) + ":" + declaration.value + ";";
  }
  return text;
}

std::string appliedTo(std::string_view css, std::string_view element, std::string_view id,
                      std::string_view classes) {
  StyleSheet sheet;
  sheet.add(css);
  Declarations declarations;
  sheet.applyTo(declarations, element, id, classes);
  return written(declarations);
}

TEST(StyleSheet, rulesApplyByElementClassAndId) {
  constexpr std::string_view css = "rect{fill:red} .a , .b{fill:green;stroke:none}\n#c{fill:blue}";
  EXPECT_EQ(appliedTo(css, "rect", "", ""), "fill:red;");
  EXPECT_EQ(appliedTo(css, "rect", "", "b"), "fill:green;stroke:none;");
  EXPECT_EQ(appliedTo(css, "rect", "c", "a"), "fill:blue;stroke:none;");
  EXPECT_EQ(appliedTo(css, "path", "d", "e"), "");
}

TEST(StyleSheet, orderOfTheSheetDecidesBetweenClasses) {
  EXPECT_EQ(appliedTo(".a{fill:red}.b{fill:blue}", "g", "", "b a"), "fill:blue;");
  EXPECT_EQ(appliedTo(".a{fill:red}.b{fill:blue}.a{x:1;fill:green}", "g", "", "b a"),
            "fill:green;");
}

TEST(StyleSheet, classOfAnElementApplies) {
  EXPECT_EQ(appliedTo("rect.a{fill:red}", "rect", "", "a"), "fill:red;");
  EXPECT_EQ(appliedTo("rect.a{fill:red}", "path", "", "a"), "");
}

TEST(StyleSheet, classesOfOneElementAreBounded) {
  std::string classes;
  for (int i = 0; i < 16; ++i) classes += "b ";
  EXPECT_EQ(appliedTo(".a{fill:red}", "g", "", classes + "a"), "");
}

TEST(StyleSheet, commentsAtRulesAndOtherSelectorsMeanNothing) {
  constexpr std::string_view css =
      "/* .a{fill:red} */ @import url(http://example.com/a.css); @media print{.a{fill:red}}"
      "@font-face{src:url(//b)} g .a{fill:red} .a:hover{fill:red} *{fill:red} .a{fill:blue "
      "!important}";
  EXPECT_EQ(appliedTo(css, "g", "", "a"), "fill:blue;");
}

TEST(StyleSheet, onlyListedPropertiesAndSafeValuesAreTaken) {
  EXPECT_EQ(appliedTo(".a{behavior:url(x);background:red;fill:url(http://x#y);x:3;opacity:.5}", "g",
                      "", "a"),
            "opacity:.5;");
}

TEST(StyleSheet, brokenSheetsEnd) {
  for (const char* css : {"{", "}", ".a{", ".a{fill", ".a{fill:", "/*", "@media{", "{{{}", ";",
                          ".a", ",{fill:red}", ".a{;;:;fill:}"}) {
    EXPECT_EQ(appliedTo(css, "g", "", "a"), "") << css;
  }
  EXPECT_EQ(appliedTo("}.a{fill:red}", "g", "", "a"), "");
}

TEST(StyleSheet, styleAttributeDeclaresTheSame) {
  Declarations declarations;
  StyleSheet::declareAll(declarations, "fill : red; stroke:blue;fill:none");
  EXPECT_EQ(written(declarations), "fill:none;stroke:blue;");
}

}  // namespace
}  // namespace tern::picture
