#include "tools/tern/picture/FloorCanvas.hpp"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cmath>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "tests/support/ScannedMarkup.hpp"
#include "tests/tools/tern/picture/PictureVenue.hpp"
#include "tools/drawing/TextWidth.hpp"

namespace tern::picture {
namespace {

using Weight = FloorCanvas::Weight;

// A map of 400 by 300 metres, all of which is seen, with these contents.
class CanvasOf {
 public:
  explicit CanvasOf(const std::string& contents = "")
      : venue_{{.id = 1,
                .svg = std::string_view("<svg viewBox='0 0 400 300'>" + contents + "</svg>")}},
        drawing_(drawings_.of(venue_.maps->findById(1))),
        canvas({venue_.maps->findById(1), &drawing_, "p-", {{0, 0}, {400, 300}}}) {}

 private:
  PictureVenue venue_;
  FloorDrawings drawings_;
  const FloorDrawing& drawing_;

 public:
  FloorCanvas canvas;
};

bool says(const std::string& text, std::string_view part) {
  return text.find(part) != std::string::npos;
}

TEST(FloorCanvas, nameIsWrittenWholeInOneLineOrTwo) {
  CanvasOf of;
  of.canvas.name({{100, 60}}, "Toys", Weight::normal);
  of.canvas.name({{200, 160}}, "Juniper Bakery and Café", Weight::strong);
  const std::string markup = of.canvas.finish().markup;
  EXPECT_TRUE(says(markup, ">Toys</text>"));
  EXPECT_TRUE(says(markup, ">Juniper Bakery</text>") && says(markup, ">and Café</text>"));
}

TEST(FloorCanvas, nameWithoutRoomGoesToItsNextPlaceOrNowhere) {
  CanvasOf of;
  of.canvas.name({{1, 1}, {200, 100}}, "Toys", Weight::normal);
  of.canvas.name({{1, 1}, {399, 299}}, "Books", Weight::normal);
  const std::string markup = of.canvas.finish().markup;
  EXPECT_TRUE(says(markup, "Toys"));
  EXPECT_FALSE(says(markup, "Books"));
}

TEST(FloorCanvas, whatTheDrawingSaysReadablyIsNotSaidTwice) {
  CanvasOf of(
      "<text x='20' y='40' font-size='30'>Coral</text><text x='20' y='70' "
      "font-size='30'>Books</text><text x='20' y='90' font-size='2'>Toys</text>");
  of.canvas.name({{200, 100}}, "Coral Books", Weight::normal);
  of.canvas.name({{200, 150}}, "Coral", Weight::normal);
  of.canvas.name({{200, 200}}, "Toys", Weight::normal);
  const std::string markup = of.canvas.finish().markup;
  EXPECT_FALSE(says(markup, "Coral"));
  EXPECT_TRUE(says(markup, "Toys"));
}

// Where the text stands, in the middle; nothing when it does not.
std::optional<Point> placeOf(const std::string& markup, const std::string& text) {
  const std::size_t end = markup.find(">" + text + "<");
  if (end == std::string::npos) return std::nullopt;
  const std::size_t from = markup.rfind("<text", end);
  const auto numberOf = [&](std::string_view name) {
    return std::stod(markup.substr(markup.find(name, from) + name.size()));
  };
  return Point{numberOf(" x=\""), numberOf(" y=\"") - 4};
}

// The middle of a text of the drawing that is about so wide.
Point middleOf(const FloorCanvas& canvas, Point start, double width, double size) {
  return canvas.toPicture({start.x + width / 2, start.y - size * 0.3});
}

TEST(FloorCanvas, nameIsWrittenOverTheLettersThatAreTooSmallToBeRead) {
  CanvasOf of("<text x='100' y='100' font-size='6'>Coral Books</text>");
  of.canvas.name({of.canvas.toPicture({100, 80})}, "Coral Books", Weight::normal);
  const Point drawn = middleOf(of.canvas, {100, 100}, 35, 6);
  const auto written = placeOf(of.canvas.finish().markup, "Coral Books");
  ASSERT_TRUE(written);
  EXPECT_LT(std::hypot(written->x - drawn.x, written->y - drawn.y), 5);
}

TEST(FloorCanvas, labelLiesOverItsNameInTheDrawingNearBy) {
  const std::string drawing =
      "<text x='100' y='100' font-size='10'>Coral</text>"
      "<text x='100' y='110' font-size='10'>Books</text>";
  CanvasOf near(drawing);
  near.canvas.label(near.canvas.toPicture({100, 80}), 12, "Coral Books", Weight::strong);
  const Point drawn = middleOf(near.canvas, {100, 105}, 28, 10);
  const auto written = placeOf(near.canvas.finish().markup, "Coral Books");
  ASSERT_TRUE(written);
  EXPECT_LT(std::hypot(written->x - drawn.x, written->y - drawn.y), 6);

  CanvasOf far(drawing);
  far.canvas.label(far.canvas.toPicture({300, 200}), 12, "Coral Books", Weight::strong);
  EXPECT_GT(placeOf(far.canvas.finish().markup, "Coral Books")->x, 200);
}

TEST(FloorCanvas, namesKeepOffWhatIsWrittenInTheDrawingAndItsSigns) {
  CanvasOf of(
      "<text x='50' y='100' font-size='30'>LIFT</text>"
      "<rect x='240' y='180' width='30' height='30'/>");
  const Point text = of.canvas.toPicture({90, 90});
  const Point sign = of.canvas.toPicture({255, 195});
  EXPECT_FALSE(of.canvas.placer().fit(text, 0, {20, 14}));
  EXPECT_FALSE(of.canvas.placer().fit(sign, 0, {20, 14}));
  EXPECT_TRUE(of.canvas.placer().fit(of.canvas.toPicture({90, 195}), 0, {20, 14}));
}

// Each text with the box that it certainly stays in.
struct Written {
  std::string text;
  Box box;
};

std::vector<Written> namesIn(const std::string& markup) {
  std::vector<Written> all;
  const auto numberOf = [&](std::size_t from, const char* name) {
    return std::stod(markup.substr(markup.find(name, from) + std::string_view(name).size()));
  };
  for (std::size_t at = markup.find("<text"); at != std::string::npos;
       at = markup.find("<text", at + 1)) {
    const std::size_t end = markup.find('>', at);
    const std::string text = markup.substr(end + 1, markup.find('<', end) - end - 1);
    const double size = numberOf(at, "font-size=\"");
    const double x = numberOf(at, " x=\"");
    const double y = numberOf(at, " y=\"");
    const double half = drawing::textWidth(text, size) / 2;
    all.push_back({text, {x - half, y - 0.8 * size, x + half, y + 0.2 * size}});
    EXPECT_GE(size, 11);
  }
  return all;
}

RC_GTEST_PROP(FloorCanvas, namesHideNeitherLabelsNorLinesNorOneAnother, ()) {
  CanvasOf of;
  FloorCanvas& canvas = of.canvas;
  const auto anyPoint = [] {
    return Point{double(*rc::gen::inRange(0, 358)), double(*rc::gen::inRange(0, 260))};
  };
  const std::vector<Point> route{anyPoint(), anyPoint()};
  canvas.placer().avoidLine(route, 5);
  canvas.label(anyPoint(), 12, "Pill", Weight::strong);
  std::vector<std::string> asked{"Pill"};
  for (int i = *rc::gen::inRange(1, 50); i > 0; --i) {
    asked.push_back("Shop " + std::to_string(i));
    canvas.name({anyPoint(), anyPoint()}, asked.back(), Weight::normal);
  }
  const PanelDrawing drawing = canvas.finish();
  const std::vector<Written> written = namesIn(drawing.markup);
  for (std::size_t i = 0; i < written.size(); ++i) {
    const Box& box = written[i].box;
    RC_ASSERT(std::ranges::count(asked, written[i].text) == 1);
    RC_ASSERT(box.left >= 0 && box.top >= 0);
    RC_ASSERT(box.right <= drawing.size.width && box.bottom <= drawing.size.height);
    for (std::size_t k = 0; k < i; ++k) RC_ASSERT(!box.meets(written[k].box));
    for (int step = 0; i > 0 && step <= 200; ++step) {
      RC_ASSERT(!box.contains({route[0].x + (route[1].x - route[0].x) * step / 200,
                               route[0].y + (route[1].y - route[0].y) * step / 200}));
    }
  }
}

TEST(FloorCanvas, thousandsOfNamesAreTriedInNoTime) {
  CanvasOf of;
  for (int i = 0; i < 20'000; ++i) {
    of.canvas.name({{double(i % 358), double(i % 260)}}, "Shop " + std::to_string(i),
                   Weight::normal);
  }
  EXPECT_LT(namesIn(of.canvas.finish().markup).size(), 200U);
}

}  // namespace
}  // namespace tern::picture
