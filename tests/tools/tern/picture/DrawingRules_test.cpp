#include "tools/tern/picture/DrawingRules.hpp"

#include <gtest/gtest.h>

namespace tern::picture {
namespace {

TEST(DrawingRules, shapesTextsAndGroupsAreShown) {
  for (const char* element :
       {"g", "path", "rect", "circle", "ellipse", "line", "polyline", "polygon", "text", "tspan",
        "defs", "linearGradient", "stop", "use", "symbol"}) {
    EXPECT_EQ(allowedElement(element), element);
  }
}

TEST(DrawingRules, whatOnlyWrapsBecomesAGroup) {
  EXPECT_EQ(allowedElement("a"), "g");
  EXPECT_EQ(allowedElement("switch"), "g");
}

TEST(DrawingRules, whatRunsLoadsOrAnimatesIsDropped) {
  for (const char* element : {"script", "style", "foreignObject", "image", "iframe", "animate",
                              "set", "handler", "filter", "feImage", "mask", "pattern", "marker",
                              "title", "metadata", "svg:rect", "SCRIPT", "G", ""}) {
    EXPECT_EQ(allowedElement(element), "") << element;
  }
}

TEST(DrawingRules, handlersAndUnknownAttributesHaveNoRule) {
  for (const char* attribute :
       {"onload", "onclick", "src", "style", "class", "id", "xml:base", "xmlns", "filter", "mask",
        "begin", "from", "values", "cursor", ""}) {
    EXPECT_EQ(ruleFor(attribute), nullptr) << attribute;
  }
  ASSERT_NE(ruleFor("xlink:href"), nullptr);
  EXPECT_EQ(ruleFor("xlink:href"), ruleFor("href"));
}

bool isAllowed(const char* attribute, const char* value) {
  return isAllowedValue(ruleFor(attribute)->kind, value);
}

TEST(DrawingRules, usualValuesAreAllowed) {
  EXPECT_TRUE(isAllowed("d", "M0,0 L10.5-3e2 a1 1 0 0 1 2 2z"));
  EXPECT_TRUE(isAllowed("transform", "translate(1,2) rotate(-45) matrix(1 0 0 1 0 0)"));
  EXPECT_TRUE(isAllowed("fill", "#1a2b3c"));
  EXPECT_TRUE(isAllowed("fill", "rgba(1, 2, 3, .5)"));
  EXPECT_TRUE(isAllowed("fill", "currentColor"));
  EXPECT_TRUE(isAllowed("fill", "url(#a)"));
  EXPECT_TRUE(isAllowed("font-family", "'Open Sans', Arial"));
  EXPECT_TRUE(isAllowed("clip-path", "url(#a)"));
  EXPECT_TRUE(isAllowed("href", "#a"));
}

TEST(DrawingRules, valuesThatReachOutAreNot) {
  EXPECT_FALSE(isAllowed("href", "https://example.com/a.svg#a"));
  EXPECT_FALSE(isAllowed("href", "javascript:alert(1)"));
  EXPECT_FALSE(isAllowed("href", "data:image/svg+xml,x"));
  EXPECT_FALSE(isAllowed("href", "#"));
  EXPECT_FALSE(isAllowed("href", "url(#a)"));
  EXPECT_FALSE(isAllowed("fill", "url(http://example.com#a)"));
  EXPECT_FALSE(isAllowed("fill", "url()"));
  EXPECT_FALSE(isAllowed("fill", "expression(1)"));
  EXPECT_FALSE(isAllowed("fill", "var(--a)"));
  EXPECT_FALSE(isAllowed("fill", "#12\"3"));
  EXPECT_FALSE(isAllowed("clip-path", "#a"));
  EXPECT_FALSE(isAllowed("clip-path", "circle(5)"));
  EXPECT_FALSE(isAllowed("x", "1;2"));
  EXPECT_FALSE(isAllowed("x", ""));
  EXPECT_FALSE(isAllowed("font-family", "a;b"));
}

TEST(DrawingRules, referencesAreFoundInEitherForm) {
  EXPECT_EQ(referredId("url(#a)"), "a");
  EXPECT_EQ(referredId("url( '#a b' ) red"), "a b");
  EXPECT_EQ(referredId("url(\"#a\")"), "a");
  EXPECT_EQ(referredId("#a"), "a");
  EXPECT_EQ(referredId("url(a.svg#a)"), std::nullopt);
  EXPECT_EQ(referredId("url(#)"), std::nullopt);
  EXPECT_EQ(referredId("url("), std::nullopt);
  EXPECT_EQ(referredId("none"), std::nullopt);
  EXPECT_EQ(referredId(""), std::nullopt);
}

TEST(DrawingRules, laterDeclarationReplacesAnEarlierOne) {
  Declarations declarations;
  declare(declarations, ruleFor("fill"), " red ");
  declare(declarations, ruleFor("x"), "1");
  declare(declarations, ruleFor("fill"), "blue");
  declare(declarations, ruleFor("fill"), "url(//a)");
  declare(declarations, ruleFor("onload"), "1");
  ASSERT_EQ(declarations.size(), 2U);
  EXPECT_EQ(declarations[0].value, "blue");
  EXPECT_EQ(declarations[1].value, "1");
}

}  // namespace
}  // namespace tern::picture
