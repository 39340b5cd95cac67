#include "tools/tern/picture/Symbols.hpp"

#include <gtest/gtest.h>

#include <functional>
#include <set>

#include "tests/support/ScannedMarkup.hpp"

namespace tern::picture {
namespace {

std::string drawn(const std::function<void(Markup&)>& draw) {
  Markup markup;
  markup.open("svg");
  draw(markup);
  return markup.take();
}

TEST(Symbols, eachIsWellFormedAndStandsAtItsPoint) {
  const Point at{12.5, 12.5};
  const std::string all[] = {drawn([&](Markup& out) { drawStart(out, at); }),
                             drawn([&](Markup& out) { drawGoal(out, at); }),
                             drawn([&](Markup& out) { drawArrival(out, at); }),
                             drawn([&](Markup& out) { drawChange(out, at, Heading::up); })};
  for (const std::string& markup : all) {
    EXPECT_EQ(test::scanMarkup(markup).problem, "");
    EXPECT_NE(markup.find("12.5"), std::string::npos);
  }
}

TEST(Symbols, arrowsDiffer) {
  std::set<std::string> arrows;
  for (Heading heading : {Heading::up, Heading::down, Heading::across}) {
    arrows.insert(drawn([&](Markup& out) { drawChange(out, {}, heading); }));
  }
  EXPECT_EQ(arrows.size(), 3U);
}

}  // namespace
}  // namespace tern::picture
