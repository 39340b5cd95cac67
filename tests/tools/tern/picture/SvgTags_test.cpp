#include "tools/tern/picture/SvgTags.hpp"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <string>

namespace tern::picture {
namespace {

// "<g><rect x=1/>text</g>" for what is read of a drawing.
std::string piecesOf(std::string_view svg) {
  std::string out;
  SvgTags tags(svg);
  while (tags.next()) {
    if (tags.kind() == SvgTags::Kind::text) {
      out += tags.text();
      continue;
    }
    const bool isOpening = tags.kind() == SvgTags::Kind::opening;
    out += (isOpening ? "<" : "</") + std::string(tags.name());
    const std::string x(tags.valueOf("x"));
    if (isOpening && !x.empty()) out += " x=" + x;
    out += tags.isEmpty() ? "/>" : ">";
  }
  return out;
}

TEST(SvgTags, tagsAndTextsComeInTheirOrder) {
  EXPECT_EQ(piecesOf("<?xml version='1.0'?><!DOCTYPE svg [<!ENTITY a \">\">]><svg:g\n x = '1'>"
                     "<!-- <b> --><rect x=\"2\" y=''/>A &amp; B<![CDATA[<c>]]></svg:g >"),
            "<g x=1><rect x=2/>A &amp; B<c></g>");
}

TEST(SvgTags, whatIsNotWellFormedEndsTheReading) {
  EXPECT_EQ(piecesOf("<g><rect x=2/><b>"), "<g>");
  EXPECT_EQ(piecesOf("<g><!-- "), "<g>");
  EXPECT_EQ(piecesOf("<g>a<"), "<g>a");
  EXPECT_EQ(piecesOf("<g x='1"), "");
}

RC_GTEST_PROP(SvgTags, anyTextIsReadToAnEnd, ()) {
  const auto pieces = *rc::gen::container<std::vector<std::string>>(
      rc::gen::element<std::string>("<", ">", "/", "\"", "'", "=", "x", " ", "<!--", "-->",
                                    "<![CDATA[", "]]>", "<?", "<!DOCTYPE", "[", "svg"));
  std::string svg;
  for (const std::string& piece : pieces) svg += piece;
  std::size_t steps = 0;
  SvgTags tags(svg);
  while (tags.next()) ++steps;
  RC_ASSERT(steps <= svg.size());
}

}  // namespace
}  // namespace tern::picture
