#include "tools/tern/picture/XmlReader.hpp"

#include <gtest/gtest.h>

#include <string>

namespace tern::picture {
namespace {

// Every token on its own: "<g a=1" "text" ">g" and "." at the end or "!" for an error.
std::string tokensOf(std::string_view text) {
  XmlReader reader(text);
  std::string tokens;
  while (true) {
    switch (reader.next()) {
      case XmlReader::Token::startElement:
        tokens += "<" + std::string(reader.name());
        for (const XmlAttribute& attribute : reader.attributes()) {
          tokens += " " + std::string(attribute.name) + "=" + attribute.value;
        }
        break;
      case XmlReader::Token::endElement:
        tokens += ">" + std::string(reader.name());
        break;
      case XmlReader::Token::text:
        tokens += "'" + reader.text() + "'";
        break;
      case XmlReader::Token::end:
        return tokens + ".";
      case XmlReader::Token::error:
        return tokens + "!";
    }
  }
}

TEST(XmlReader, elementsAttributesAndTextsComeInOrder) {
  EXPECT_EQ(tokensOf("<a x='1' y = \"2\"><b/>t</a >"), "<a x=1 y=2<b>b't'>a.");
}

TEST(XmlReader, prologueCommentsAndInstructionsArePassedOver) {
  EXPECT_EQ(
      tokensOf("\xEF\xBB\xBF<?xml version='1.0'?>\n<!DOCTYPE svg PUBLIC \"x\" \"y\">\n<!-- < & -->"
               "<a><?p?><!---->t</a>\n<!-- end -->"),
      "<a't'>a.");
}

TEST(XmlReader, referencesAndCDataBecomeText) {
  EXPECT_EQ(tokensOf("<a b='&lt;&#65;&#x42;'>&amp;&quot;&apos;&gt;<![CDATA[<&]]></a>"),
            "<a b=<AB'&\"'>''<&'>a.");
}

TEST(XmlReader, documentTypeWithOwnEntitiesIsRefused) {
  EXPECT_EQ(tokensOf("<!DOCTYPE a [<!ENTITY b 'c'>]><a>&b;</a>"), "!");
}

TEST(XmlReader, whatIsNotWellFormedIsAnError) {
  for (const char* text : {"",
                           "  ",
                           "<",
                           "<a",
                           "<a>",
                           "<a></b>",
                           "</a>",
                           "<a/><b/>",
                           "<a/>t",
                           "t<a/>",
                           "<a b></a>",
                           "<a b=c/>",
                           "<a b='c/>",
                           "<a b='<'/>",
                           "<a b='1' b='2'/>",
                           "<a>&</a>",
                           "<a>&b;</a>",
                           "<a>&#0;</a>",
                           "<a>&#xD800;</a>",
                           "<a>&#x110000;</a>",
                           "<a>&#;</a>",
                           "<a>&#x;</a>",
                           "<a>&#99999999999;</a>",
                           "<a><!--",
                           "<a><![CDATA[",
                           "<a><?",
                           "<![CDATA[]]><a/>",
                           "<!b><a/>",
                           "<a/><!DOCTYPE a>",
                           "<1/>",
                           "<a/ >"}) {
    EXPECT_EQ(tokensOf(text).back(), '!') << text;
  }
}

TEST(XmlReader, errorStays) {
  XmlReader reader("<a></b></a>");
  EXPECT_EQ(reader.next(), XmlReader::Token::startElement);
  EXPECT_EQ(reader.next(), XmlReader::Token::error);
  EXPECT_EQ(reader.next(), XmlReader::Token::error);
}

TEST(XmlReader, problemNamesTheLine) {
  XmlReader reader("<a>\n\n&b;</a>");
  EXPECT_EQ(reader.next(), XmlReader::Token::startElement);
  EXPECT_EQ(reader.next(), XmlReader::Token::error);
  EXPECT_EQ(reader.problem(), "an unknown reference on line 3");
}

std::string nested(std::size_t depth) {
  std::string text;
  for (std::size_t i = 0; i < depth; ++i) text += "<a>";
  for (std::size_t i = 0; i < depth; ++i) text += "</a>";
  return text;
}

TEST(XmlReader, depthIsBounded) {
  EXPECT_EQ(tokensOf(nested(XmlReader::deepest)).back(), '.');
  EXPECT_EQ(tokensOf(nested(XmlReader::deepest + 1)).back(), '!');
}

TEST(XmlReader, attributesOfAnElementAreBounded) {
  std::string text = "<a";
  for (std::size_t i = 0; i < XmlReader::mostAttributes; ++i)
    text += " b" + std::to_string(i) + "=''";
  EXPECT_EQ(tokensOf(text + "/>").back(), '.');
  EXPECT_EQ(tokensOf(text + " c=''/>").back(), '!');
}

TEST(XmlReader, longPrologueTakesNoStack) {
  std::string text;
  for (int i = 0; i < 500'000; ++i) text += " <!---->";
  EXPECT_EQ(tokensOf(text + "<a/>"), "<a>a.");
}

TEST(XmlReader, everyBeginningOfADocumentIsAnErrorAndEnds) {
  const std::string text =
      "<?xml version='1.0'?><!DOCTYPE a><a b='&#65;'><!-- c --><d/>t&amp;<![CDATA[x]]></a>";
  for (std::size_t size = 0; size < text.size(); ++size) {
    EXPECT_EQ(tokensOf(text.substr(0, size)).back(), '!') << size;
  }
  EXPECT_EQ(tokensOf(text).back(), '.');
}

}  // namespace
}  // namespace tern::picture
