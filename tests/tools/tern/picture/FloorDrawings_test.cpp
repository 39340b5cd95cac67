#include "tools/tern/picture/FloorDrawings.hpp"

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "TernCoreKit/model/records/TernMap.hpp"
#include "tests/support/ScannedMarkup.hpp"
#include "tests/tools/tern/picture/PictureVenue.hpp"
#include "tools/tern/picture/DrawingImage.hpp"

namespace tern::picture {
namespace {

std::shared_ptr<TernMap> mapWith(Value svg, Value width = {}) {
  return TernMap::initWithDictionary(
      Value::map({{"id", 1}, {"svg", std::move(svg)}, {"width", width}, {"height", width}}));
}

TEST(FloorDrawings, everyMapIsHeldOnce) {
  const auto one = mapWith("<svg viewBox='1 2 30 40'/>");
  const auto two = mapWith("<svg viewBox='0 0 9 9'/>");
  FloorDrawings drawings;
  const FloorDrawing& first = drawings.of(one.get());
  EXPECT_EQ(drawings.of(two.get()).id, "drawing-2");
  EXPECT_EQ(&drawings.of(one.get()), &first);
  EXPECT_EQ(first.id, "drawing-1");
  EXPECT_EQ(first.note, "");
  const auto markup = test::scanMarkup("<defs>" + drawings.takeMarkup() + "</defs>");
  EXPECT_EQ(markup.problem, "");
  EXPECT_EQ(test::reachOf(markup), "");
  // Each with its filter, which is as large as a window.
  EXPECT_EQ(markup.valuesOf("x"), (std::vector<std::string>{"1", "0", "0", "0"}));
  EXPECT_EQ(markup.valuesOf("y"), (std::vector<std::string>{"2", "0", "0", "0"}));
  EXPECT_EQ(markup.valuesOf("width"), (std::vector<std::string>{"30", "358", "9", "358"}));
  EXPECT_EQ(markup.valuesOf("height"), (std::vector<std::string>{"40", "420", "9", "420"}));
  EXPECT_EQ(markup.valuesOf("preserveAspectRatio"), (std::vector<std::string>{"none", "none"}));
}

TEST(FloorDrawings, paleDrawingHasAFilterForTheLightToo) {
  const auto fine = mapWith("<svg viewBox='0 0 9 9'><path d='M0 0h9v9' stroke='#000'/></svg>");
  const auto pale =
      mapWith("<svg viewBox='0 0 9 9'><path d='M0 0h9v9' fill='#fff' stroke='#ddd'/></svg>");
  FloorDrawings drawings;
  EXPECT_FALSE(drawings.of(fine.get()).tone.light);
  EXPECT_TRUE(drawings.of(pale.get()).tone.light);
  EXPECT_EQ(test::scanMarkup("<defs>" + drawings.takeMarkup() + "</defs>").valuesOf("id"),
            (std::vector<std::string>{"drawing-1", "drawing-1-dark", "drawing-2", "drawing-2-light",
                                      "drawing-2-dark"}));
  EXPECT_EQ(drawings.darkRules(),
            ".drawing-1 { filter: url(#drawing-1-dark); opacity: 1; }\n"
            ".drawing-2 { filter: url(#drawing-2-dark); opacity: 1; }\n");
}

TEST(FloorDrawings, whatCannotBeShownIsSaid) {
  const auto noteOf = [](const TernMap* map) {
    FloorDrawings drawings;
    const FloorDrawing& drawing = drawings.of(map);
    EXPECT_EQ(drawing.id, "");
    EXPECT_EQ(drawings.takeMarkup(), "");
    return drawing.note;
  };
  EXPECT_EQ(noteOf(nullptr), "The venue has no map of this floor.");
  EXPECT_EQ(noteOf(mapWith(nullptr).get()), "This floor has no drawing.");
  EXPECT_EQ(noteOf(mapWith(7).get()), "This floor has no drawing.");
  EXPECT_EQ(noteOf(mapWith("").get()), "The floor's drawing is left out: it is not an SVG.");
  EXPECT_EQ(noteOf(mapWith("<svg/>").get()), "The floor's drawing is left out: it says no size.");
  EXPECT_EQ(noteOf(mapWith("<svg/>", 1e8).get()),
            "The floor's drawing is left out: it says no size.");
}

TEST(FloorDrawings, sizeOfTheMapStandsInForTheDrawings) {
  const auto drawn = mapWith("<svg/>", 50);
  const auto bare = mapWith(nullptr, 50);
  FloorDrawings drawings;
  EXPECT_EQ(drawings.of(drawn.get()).frame->width(), 50);
  EXPECT_EQ(drawings.of(drawn.get()).id, "drawing-1");
  EXPECT_EQ(drawings.of(bare.get()).frame->height(), 50);
}

TEST(FloorDrawings, allTogetherAreBounded) {
  const std::string svg =
      "<svg viewBox='0 0 4 3'>" + std::string(mostDrawingBytes - 100, ' ') + "</svg>";
  FloorDrawings drawings;
  std::vector<std::shared_ptr<TernMap>> maps;
  for (int i = 0; i < 5; ++i) {
    maps.push_back(mapWith(std::string_view(svg)));
    EXPECT_EQ(drawings.of(maps.back().get()).note, "");
  }
  maps.push_back(mapWith(std::string_view(svg)));
  const FloorDrawing& last = drawings.of(maps.back().get());
  EXPECT_EQ(last.note, "The floor's drawing is left out: the picture is too large.");
  EXPECT_EQ(last.frame->width(), 4);
}

}  // namespace
}  // namespace tern::picture
