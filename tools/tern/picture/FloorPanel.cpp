#include "tools/tern/picture/FloorPanel.hpp"

#include <algorithm>
#include <cmath>
#include <optional>
#include <string_view>

#include "TernCoreKit/model/records/TernMap.hpp"
#include "tools/tern/picture/LabelPlacer.hpp"
#include "tools/tern/picture/MapWindow.hpp"
#include "tools/tern/picture/Markup.hpp"
#include "tools/tern/picture/Palette.hpp"
#include "tools/tern/picture/Symbols.hpp"
#include "tools/tern/picture/TextWidth.hpp"

namespace tern::picture {

namespace {

constexpr double routeWidthPx = 6;
constexpr double casingWidthPx = 10;
constexpr double otherWidthPx = 4;
constexpr double cornerPx = 12;
constexpr double smallFontPx = 12;
constexpr double labelFontPx = 13;
constexpr double labelHeightPx = 22;
constexpr double labelPaddingPx = 9;
constexpr double widestLabelPx = 240;
constexpr double chevronEveryPx = 54;
constexpr int mostChevrons = 200;
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

// A change of building is named by the building: there is no room for more on the map.
std::string otherEnd(const FloorName& there, const FloorName& here) {
  return there.building == here.building ? there.floor : there.building;
}

std::string departureLabel(const FloorChange& change) {
  return (change.by.empty() ? "" : change.by + " ") + "to " + otherEnd(change.to, change.from);
}

std::string arrivalLabel(const FloorChange& change) {
  return "From " + otherEnd(change.from, change.to);
}

class PanelPainter {
 public:
  explicit PanelPainter(const FloorPanel& panel)
      : panel_(panel),
        visit_(*panel.visit),
        floor_(*panel.drawing),
        window_({visit_.points, floor_.frame, leastSpanOf(visit_.map, floor_.frame)}),
        placer_(window_.size()),
        line_(inPicture(visit_.points)) {}

  PanelDrawing paint() {
    const auto [width, height] = window_.size();
    const std::string clip = panel_.idPrefix + "window";
    out_.open("clipPath", {{"id", clip}})
        .leaf("rect", {{"width", width}, {"height", height}, {"rx", cornerPx}})
        .close();
    out_.open("g", {{"clip-path", "url(#" + clip + ")"}, {"font-family", palette::fonts}});
    out_.leaf("rect", {{"width", width}, {"height", height}, {"fill", floor_.tone.card}}).line();
    paintFloor();
    for (const FloorVisit* other : panel_.others) paintOther(inPicture(other->points));
    paintRoute();
    paintScaleBar();
    paintSymbols();
    paintLabels();
    out_.close();
    paintBorder();
    return {out_.take(), window_.size(), note()};
  }

 private:
  // The line in pixels, without points that lie on one another.
  std::vector<Point> inPicture(const std::vector<Point>& points) const {
    std::vector<Point> line;
    for (Point point : points) {
      const Point at = window_.toPicture(point);
      const bool isNew =
          line.empty() || std::hypot(at.x - line.back().x, at.y - line.back().y) >= finestPx;
      if (isNew) line.push_back(at);
    }
    return line;
  }

  void paintFloor() {
    if (floor_.id.empty()) return;
    const Point origin = window_.toPicture({0, 0});
    const std::string placing = "translate(" + significant(origin.x) + " " + significant(origin.y) +
                                ") scale(" + significant(window_.scale()) + ")";
    const std::string filter = floor_.tone.light ? "url(#" + floor_.id + "-light)" : "none";
    out_.open("g", {{"class", floor_.id}, {"filter", filter}, {"opacity", floor_.tone.opacity}});
    out_.leaf("use", {{"href", "#" + floor_.id}, {"transform", placing}}).close().line();
  }

  void paintStroke(const std::vector<Point>& line, std::string_view colour, double width) {
    out_.leaf("path", {{"d", pathOf(line)},
                       {"fill", "none"},
                       {"stroke", colour},
                       {"stroke-width", width},
                       {"stroke-linecap", "round"},
                       {"stroke-linejoin", "round"}});
    out_.line();
  }

  void paintOther(const std::vector<Point>& line) {
    if (line.size() < 2) return;
    paintStroke(line, palette::casing, otherWidthPx + 3);
    paintStroke(line, palette::otherRoute, otherWidthPx);
  }

  void paintRoute() {
    if (line_.size() < 2) return;
    placer_.avoidLine(line_);
    paintStroke(line_, palette::casing, casingWidthPx);
    paintStroke(line_, palette::route, routeWidthPx);
    paintChevrons();
  }

  // Small arrows along the line that say which way it goes.
  void paintChevrons() {
    std::string path;
    int left = mostChevrons;
    double since = chevronEveryPx / 2;
    for (std::size_t i = 0; i + 1 < line_.size(); ++i) {
      const Point way{line_[i + 1].x - line_[i].x, line_[i + 1].y - line_[i].y};
      const double length = std::hypot(way.x, way.y);
      // Evenly within the stretch, so that none comes to lie on a corner.
      const int count = static_cast<int>(std::min((since + length) / chevronEveryPx, 100.0));
      since += length - count * chevronEveryPx;
      for (int k = 0; k < count && left > 0; ++k, --left) {
        const double part = (k + 0.5) / count;
        path += chevron({line_[i].x + way.x * part, line_[i].y + way.y * part},
                        {way.x / length, way.y / length});
      }
    }
    if (path.empty()) return;
    out_.leaf("path", {{"d", path},
                       {"fill", "none"},
                       {"stroke", palette::casing},
                       {"stroke-width", 1.5},
                       {"stroke-linecap", "round"},
                       {"stroke-linejoin", "round"}});
  }

  // `way` has length 1.
  static std::string chevron(Point at, Point way) {
    const auto corner = [&](double along, double across) {
      return decimal(at.x + way.x * along - way.y * across) + " " +
             decimal(at.y + way.y * along + way.x * across);
    };
    return "M" + corner(-1.2, -1.9) + "L" + corner(0.9, 0) + "L" + corner(-1.2, 1.9);
  }

  void paintScaleBar() {
    const double mmPerUnit = visit_.map != nullptr ? visit_.map->mmPerPixel.number() : 0;
    if (!(mmPerUnit > 0 && std::isfinite(mmPerUnit))) return;
    const double metrePx = window_.scale() * 1000 / mmPerUnit;
    for (int metres : {1000, 500, 200, 100, 50, 20, 10, 5, 2, 1}) {
      const double length = metres * metrePx;
      if (length > widestScaleBarPx || length < 12) continue;
      paintBar(length, std::to_string(metres) + " m");
      return;
    }
  }

  void paintBar(double length, const std::string& label) {
    const auto [width, height] = window_.size();
    const double whole = length + 6 + textWidth(label, smallFontPx);
    Box box{10, height - 24, 10 + whole, height - 8};
    const bool isInTheWay = std::any_of(line_.begin(), line_.end(), [&](Point point) {
      return box.grownBy(changeRadiusPx).contains(point);
    });
    if (isInTheWay) box = {width - 10 - whole, box.top, width - 10, box.bottom};
    placer_.avoid(box);
    const double y = box.bottom - 4;
    out_.leaf("rect", {{"x", box.left - 4},
                       {"y", box.top},
                       {"width", whole + 8},
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

  void avoidAround(Point at, double radius) {
    placer_.avoid({at.x - radius, at.y - radius, at.x + radius, at.y + radius});
  }

  void paintSymbols() {
    if (line_.empty()) return;
    if (visit_.arrival) {
      drawArrival(out_, line_.front());
      avoidAround(line_.front(), arrivalRadiusPx);
    }
    if (!panel_.start.empty()) {
      drawStart(out_, line_.front());
      avoidAround(line_.front(), startRadiusPx);
    }
    if (visit_.departure) {
      drawChange(out_, line_.back(), visit_.departure->heading);
      avoidAround(line_.back(), changeRadiusPx);
    }
    if (!panel_.goal.empty()) {
      drawGoal(out_, line_.back());
      placer_.avoid({line_.back().x - goalWidthPx / 2, line_.back().y - goalHeightPx,
                     line_.back().x + goalWidthPx / 2, line_.back().y + 2});
    }
    out_.line();
  }

  void paintLabels() {
    if (line_.empty()) return;
    const Point first = line_.front();
    const Point last = line_.back();
    if (!panel_.goal.empty()) paintLabel({last.x, last.y - 12}, 17, panel_.goal, true);
    if (!panel_.start.empty()) paintLabel(first, startRadiusPx + 4, panel_.start, true);
    if (visit_.departure) {
      paintLabel(last, changeRadiusPx + 4, departureLabel(*visit_.departure), false);
    }
    if (visit_.arrival && panel_.goal.empty()) {
      paintLabel(first, arrivalRadiusPx + 4, arrivalLabel(*visit_.arrival), false);
    }
  }

  void paintLabel(Point at, double clearance, std::string_view name, bool strong) {
    const double boldness = strong ? 1.12 : 1;
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
               {"font-weight", strong ? 600 : 400},
               {"fill", palette::ink}},
              text);
    out_.line();
  }

  void paintBorder() {
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

  std::string note() const {
    if (visit_.points.empty())
      return floor_.note + (floor_.note.empty() ? "" : " ") + "The route has no place on this map.";
    if (!visit_.pointsLeftOut) return floor_.note;
    return floor_.note + (floor_.note.empty() ? "" : " ") + "Part of the route lies off this map.";
  }

  const FloorPanel& panel_;
  const FloorVisit& visit_;
  const FloorDrawing& floor_;
  MapWindow window_;
  LabelPlacer placer_;
  std::vector<Point> line_;
  Markup out_;
};

}  // namespace

PanelDrawing drawFloor(const FloorPanel& panel) { return PanelPainter(panel).paint(); }

std::string inWords(const FloorPanel& panel) {
  const FloorVisit& visit = *panel.visit;
  std::string words = visit.name.text() + ".";
  if (!panel.start.empty()) words += " Start at " + panel.start + ".";
  if (visit.arrival) words += " Arrive from " + visit.arrival->from.text() + ".";
  if (const std::string length = visit.length.text(); !length.empty()) {
    words += (visit.length.metres ? " Walk " : " Go ") + length + ".";
  }
  if (visit.departure) words += " " + visit.departure->text() + ".";
  if (!panel.goal.empty()) words += " Arrive at " + panel.goal + ".";
  return words;
}

}  // namespace tern::picture
