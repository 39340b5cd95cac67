#include "tools/tern/picture/FloorCanvas.hpp"

#include <algorithm>
#include <cmath>
#include <optional>

#include "tools/tern/picture/Palette.hpp"
#include "tools/tern/picture/Symbols.hpp"
#include "tools/tern/picture/TextWidth.hpp"

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

}  // namespace

FloorCanvas::FloorCanvas(const CanvasRequest& request)
    : map_(request.map),
      floor_(*request.drawing),
      window_({request.points, floor_.frame, leastSpanOf(map_, floor_.frame)}),
      placer_(window_.size()) {
  begin(request.idPrefix);
}

void FloorCanvas::begin(const std::string& idPrefix) {
  const auto [width, height] = window_.size();
  const std::string clip = idPrefix + "window";
  out_.open("clipPath", {{"id", clip}})
      .leaf("rect", {{"width", width}, {"height", height}, {"rx", cornerPx}})
      .close();
  out_.open("g", {{"clip-path", "url(#" + clip + ")"}, {"font-family", palette::fonts}});
  out_.leaf("rect", {{"width", width}, {"height", height}, {"fill", floor_.tone.card}}).line();
  drawFloor();
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

void FloorCanvas::drawFloor() {
  if (floor_.id.empty()) return;
  const Point origin = window_.toPicture({0, 0});
  const std::string placing = "translate(" + significant(origin.x) + " " + significant(origin.y) +
                              ") scale(" + significant(window_.scale()) + ")";
  const std::string filter = floor_.tone.light ? "url(#" + floor_.id + "-light)" : "none";
  out_.open("g", {{"class", floor_.id}, {"filter", filter}, {"opacity", floor_.tone.opacity}});
  out_.leaf("use", {{"href", "#" + floor_.id}, {"transform", placing}}).close().line();
}

void FloorCanvas::stroke(const std::vector<Point>& line, std::string_view colour, double width) {
  out_.leaf("path", {{"d", pathOf(line)},
                     {"fill", "none"},
                     {"stroke", colour},
                     {"stroke-width", width},
                     {"stroke-linecap", "round"},
                     {"stroke-linejoin", "round"}});
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
    const double whole = length + 6 + textWidth(label, smallFontPx);
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
  const std::string text = fittedText(name, labelFontPx, widestLabelPx / boldness);
  const Size size{textWidth(text, labelFontPx) * boldness + 2 * labelPaddingPx, labelHeightPx};
  const Box box = placer_.place(at, clearance, size);
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
