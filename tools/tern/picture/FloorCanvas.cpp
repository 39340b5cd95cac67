#include "tools/tern/picture/FloorCanvas.hpp"

#include <algorithm>
#include <cmath>
#include <optional>

#include "tools/drawing/TextWidth.hpp"
#include "tools/tern/picture/Palette.hpp"
#include "tools/tern/picture/Symbols.hpp"

namespace tern::picture {

namespace {

constexpr double cornerPx = 12;
constexpr double smallFontPx = 12;
constexpr double labelFontPx = 13;
constexpr double labelHeightPx = 22;
constexpr double labelPaddingPx = 9;
constexpr double widestLabelPx = 240;
// Closer together than this, points of a line are one.
constexpr double finestPx = 0.3;
constexpr double widestScaleBarPx = 64;
constexpr double ghostOpacity = 0.35;
constexpr double nameFontPx = 12;
constexpr double nameLinePx = 14;
constexpr std::size_t mostNameBytes = 80;
constexpr double nameClearancePx = 5;
// A name that is wider is broken into two lines where it has a blank.
constexpr double widestNameLinePx = 84;
// What the drawing says so near to a point is said of it.
constexpr double sameNamePx = 60;
// What is a sign in a drawing: neither a dot nor a room.
constexpr double leastSignPx = 12;
constexpr double mostSignPx = 36;
constexpr double leastSpanMetres = 45;
constexpr double leastSpanOfFloor = 1.0 / 6;

double leastSpanOf(const TernMap* map, const std::optional<Box>& frame) {
  const double mmPerUnit = map != nullptr ? map->mmPerPixel.number() : 0;
  if (mmPerUnit > 0 && std::isfinite(mmPerUnit)) return leastSpanMetres * 1000 / mmPerUnit;
  return frame ? std::max(frame->width(), frame->height()) * leastSpanOfFloor : 0;
}

std::string pathOf(const std::vector<Point>& line) {
  std::string path;
  for (Point point : line) {
    path += path.empty() ? "M" : "L";
    path += decimal(point.x) + " " + decimal(point.y);
  }
  return path;
}

// The name in one line, or in two that are as alike in width as they can be.
std::vector<std::string> linesOf(std::string_view name, double fontSize) {
  const double whole = drawing::textWidth(name, fontSize);
  std::size_t best = std::string_view::npos;
  double least = whole;
  for (std::size_t at = name.find(' '); at != std::string_view::npos; at = name.find(' ', at + 1)) {
    const double wider = std::max(drawing::textWidth(name.substr(0, at), fontSize),
                                  drawing::textWidth(name.substr(at + 1), fontSize));
    if (wider >= least) continue;
    best = at;
    least = wider;
  }
  if (whole <= widestNameLinePx || best == std::string_view::npos) return {std::string(name)};
  return {std::string(name.substr(0, best)), std::string(name.substr(best + 1))};
}

bool isSign(const Box& box) {
  const auto [less, more] = std::minmax({box.width(), box.height()});
  return less >= leastSignPx && more <= mostSignPx && more < 1.6 * less;
}

}  // namespace

MapWindow windowOf(const CanvasRequest& request) {
  const std::optional<Box>& frame = request.drawing->frame;
  return MapWindow({request.points, frame, leastSpanOf(request.map, frame)});
}

FloorCanvas::FloorCanvas(const CanvasRequest& request)
    : map_(request.map),
      floor_(*request.drawing),
      window_(windowOf(request)),
      drawn_(floor_.marks, window_),
      placer_(window_.size()) {
  begin(request);
  avoidWhatIsDrawn();
}

void FloorCanvas::begin(const CanvasRequest& request) {
  const auto [width, height] = window_.size();
  const std::string clip = request.idPrefix + "window";
  out_.open("clipPath", {{"id", clip}})
      .leaf("rect", {{"width", width}, {"height", height}, {"rx", cornerPx}})
      .close();
  out_.open("g", {{"clip-path", "url(#" + clip + ")"}, {"font-family", palette::fonts}});
  out_.leaf("rect", {{"width", width}, {"height", height}, {"fill", floor_.tone.card}}).line();
  if (!floor_.id.empty()) drawFloor(floor_);
  if (request.ghost == nullptr || request.ghost->id.empty()) return;
  // Above the floor's own drawing, of which a ground that covers all may be all there is.
  out_.open("g", {{"opacity", ghostOpacity}});
  drawFloor(*request.ghost);
  out_.close().line();
}

std::vector<Point> FloorCanvas::inPicture(const std::vector<Point>& points) const {
  std::vector<Point> line;
  for (Point point : points) {
    const Point at = window_.toPicture(point);
    const bool isNew =
        line.empty() || std::hypot(at.x - line.back().x, at.y - line.back().y) >= finestPx;
    if (isNew) line.push_back(at);
  }
  return line;
}

void FloorCanvas::drawFloor(const FloorDrawing& floor) {
  const Point origin = window_.toPicture({0, 0});
  const std::string placing = "translate(" + significant(origin.x) + " " + significant(origin.y) +
                              ") scale(" + significant(window_.scale()) + ")";
  const std::string filter = floor.tone.light ? "url(#" + floor.id + "-light)" : "none";
  out_.open("g", {{"class", floor.id}, {"filter", filter}, {"opacity", floor.tone.opacity}});
  out_.leaf("use", {{"href", "#" + floor.id}, {"transform", placing}}).close().line();
}

// What can be read or known in the drawing is not to be written over.
void FloorCanvas::avoidWhatIsDrawn() {
  for (const Box& text : drawn_.boxes()) placer_.avoidLightly(text);
  for (const Box& shape : floor_.marks.shapes) {
    const Point from = window_.toPicture({shape.left, shape.top});
    const Point to = window_.toPicture({shape.right, shape.bottom});
    const Box box{from.x, from.y, to.x, to.y};
    if (isSign(box)) placer_.avoidLightly(box);
  }
}

void FloorCanvas::stroke(const std::vector<Point>& line, std::string_view colour, double width) {
  strokes({line}, colour, width);
}

void FloorCanvas::strokes(const std::vector<std::vector<Point>>& lines, std::string_view colour,
                          double width) {
  std::string path;
  for (const std::vector<Point>& line : lines) path += pathOf(line);
  if (path.empty()) return;
  out_.leaf("path", {{"d", path},
                     {"fill", "none"},
                     {"stroke", colour},
                     {"stroke-width", width},
                     {"stroke-linecap", "round"},
                     {"stroke-linejoin", "round"}});
  out_.line();
}

void FloorCanvas::dashes(const std::vector<Point>& line, std::string_view colour, double width) {
  stroke(line, palette::casing, width + 3);
  out_.leaf("path", {{"d", pathOf(line)},
                     {"fill", "none"},
                     {"stroke", colour},
                     {"stroke-width", width},
                     {"stroke-dasharray", "5 4"}});
  out_.line();
}

void FloorCanvas::scaleBar(const std::vector<Point>& points) {
  const double mmPerUnit = map_ != nullptr ? map_->mmPerPixel.number() : 0;
  if (!(mmPerUnit > 0 && std::isfinite(mmPerUnit))) return;
  const double metrePx = window_.scale() * 1000 / mmPerUnit;
  for (int metres : {1000, 500, 200, 100, 50, 20, 10, 5, 2, 1}) {
    const double length = metres * metrePx;
    if (length > widestScaleBarPx || length < 12) continue;
    const std::string label = std::to_string(metres) + " m";
    const auto [width, height] = window_.size();
    const double whole = length + 6 + drawing::textWidth(label, smallFontPx);
    Box box{10, height - 24, 10 + whole, height - 8};
    const bool isInTheWay = std::ranges::any_of(
        points, [&](Point point) { return box.grownBy(changeRadiusPx).contains(point); });
    if (isInTheWay) box = {width - 10 - whole, box.top, width - 10, box.bottom};
    drawBar(box, length, label);
    return;
  }
}

void FloorCanvas::drawBar(const Box& box, double length, const std::string& label) {
  placer_.avoid(box);
  const double y = box.bottom - 4;
  out_.leaf("rect", {{"x", box.left - 4},
                     {"y", box.top},
                     {"width", box.width() + 8},
                     {"height", box.height() + 1},
                     {"rx", 5},
                     {"fill", palette::casing},
                     {"fill-opacity", 0.8}});
  const std::string bar =
      "M" + decimal(box.left) + " " + decimal(y - 4) + "v4h" + decimal(length) + "v-4";
  out_.leaf("path",
            {{"d", bar}, {"fill", "none"}, {"stroke", palette::quiet}, {"stroke-width", 1.5}});
  out_.leaf("text",
            {{"x", box.left + length + 6},
             {"y", y},
             {"font-size", smallFontPx},
             {"fill", palette::quiet}},
            label);
  out_.line();
}

void FloorCanvas::label(Point at, double clearance, std::string_view name, Weight weight) {
  const bool isStrong = weight == Weight::strong;
  const double boldness = isStrong ? 1.12 : 1;
  const std::string text = drawing::fittedText(name, labelFontPx, widestLabelPx / boldness);
  const Size size{drawing::textWidth(text, labelFontPx) * boldness + 2 * labelPaddingPx,
                  labelHeightPx};
  const std::optional<Box> over = overDrawn({at}, name, size);
  const Box box = over ? *over : placer_.place(at, clearance, size);
  out_.leaf("rect", {{"x", box.left},
                     {"y", box.top},
                     {"width", size.width},
                     {"height", size.height},
                     {"rx", labelHeightPx / 2},
                     {"fill", palette::casing},
                     {"fill-opacity", 0.95},
                     {"stroke", palette::frame}});
  out_.leaf("text",
            {{"x", box.centre().x},
             {"y", box.top + 15.5},
             {"text-anchor", "middle"},
             {"font-size", labelFontPx},
             {"font-weight", isStrong ? 600 : 400},
             {"fill", palette::ink}},
            text);
  out_.line();
}

void FloorCanvas::name(const std::vector<Point>& places, std::string_view text, Weight weight) {
  if (text.size() > mostNameBytes) return;
  if (drawn_.isReadable(text)) return;
  const std::vector<std::string> lines = linesOf(text, nameFontPx);
  double width = 0;
  for (const std::string& line : lines)
    width = std::max(width, drawing::textWidth(line, nameFontPx));
  const double boldness = weight == Weight::strong ? 1.12 : 1;
  const Size size{width * boldness, nameLinePx * static_cast<double>(lines.size())};
  if (const auto box = overDrawn(places, text, size)) {
    drawPlate(*box);
    return drawName(*box, lines, weight);
  }
  for (const Point at : places) {
    const auto box = placer_.fit(at, nameClearancePx, size);
    if (box) return drawName(*box, lines, weight);
  }
}

std::optional<Box> FloorCanvas::overDrawn(const std::vector<Point>& places, std::string_view name,
                                          Size size) {
  for (const Point at : places) {
    const auto drawn = drawn_.nearest(name, at, sameNamePx);
    const auto box = drawn ? placer_.cover(*drawn, size) : std::nullopt;
    if (box) return box;
  }
  return std::nullopt;
}

void FloorCanvas::drawPlate(const Box& box) {
  const Box plate = box.grownBy(1);
  out_.leaf("rect", {{"x", plate.left},
                     {"y", plate.top},
                     {"width", plate.width()},
                     {"height", plate.height()},
                     {"rx", 3},
                     {"fill", palette::casing},
                     {"fill-opacity", 0.85}});
}

void FloorCanvas::drawName(const Box& box, const std::vector<std::string>& lines, Weight weight) {
  double baseline = box.top + nameLinePx - 3.5;
  for (const std::string& line : lines) {
    out_.leaf("text",
              {{"x", box.centre().x},
               {"y", baseline},
               {"text-anchor", "middle"},
               {"font-size", nameFontPx},
               {"font-weight", weight == Weight::strong ? 600 : 400},
               {"fill", palette::ink},
               {"stroke", palette::casing},
               {"stroke-width", 3},
               {"stroke-opacity", 0.85},
               {"stroke-linejoin", "round"},
               {"paint-order", "stroke"}},
              line);
    baseline += nameLinePx;
  }
  out_.line();
}

void FloorCanvas::drawBorder() {
  const auto [width, height] = window_.size();
  out_.leaf("rect", {{"x", 0.5},
                     {"y", 0.5},
                     {"width", width - 1},
                     {"height", height - 1},
                     {"rx", cornerPx - 0.5},
                     {"fill", "none"},
                     {"stroke", palette::frame}});
  out_.line();
}

PanelDrawing FloorCanvas::finish() {
  out_.close();
  drawBorder();
  return {out_.take(), window_.size(), floor_.note};
}

}  // namespace tern::picture
