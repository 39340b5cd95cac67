#include "tools/tern/picture/FloorPanel.hpp"

#include <algorithm>
#include <cmath>
#include <string_view>

#include "tools/tern/picture/MapNames.hpp"
#include "tools/tern/picture/Palette.hpp"
#include "tools/tern/picture/Symbols.hpp"

namespace tern::picture {

namespace {

using Weight = FloorCanvas::Weight;

constexpr double routeWidthPx = 6;
constexpr double casingWidthPx = 10;
constexpr double otherWidthPx = 4;
constexpr double chevronEveryPx = 54;
constexpr int mostChevrons = 200;

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

std::vector<Point> seenPoints(const FloorPanel& panel) {
  std::vector<Point> points = panel.visit->points;
  if (panel.asked) points.push_back(*panel.asked);
  return points;
}

class PanelPainter {
 public:
  explicit PanelPainter(const FloorPanel& panel)
      : panel_(panel),
        visit_(*panel.visit),
        canvas_({visit_.map, panel.drawing, panel.idPrefix, seenPoints(panel), panel.ghost}),
        line_(canvas_.inPicture(visit_.points)) {}

  PanelDrawing paint() {
    for (const FloorVisit* other : panel_.others) paintOther(canvas_.inPicture(other->points));
    paintAsked();
    paintRoute();
    canvas_.scaleBar(line_);
    paintSymbols();
    paintLabels();
    paintNames();
    PanelDrawing drawing = canvas_.finish();
    addNote(drawing.note);
    return drawing;
  }

 private:
  void paintOther(const std::vector<Point>& line) {
    if (line.size() < 2) return;
    canvas_.placer().avoidLine(line, (otherWidthPx + 3) / 2);
    canvas_.stroke(line, palette::casing, otherWidthPx + 3);
    canvas_.stroke(line, palette::otherRoute, otherWidthPx);
  }

  // From the point that was asked from nobody knows the way, only the direction.
  void paintAsked() {
    if (!panel_.asked) return;
    const Point at = canvas_.toPicture(*panel_.asked);
    if (!line_.empty()) {
      canvas_.placer().avoidLine({at, line_.front()}, 2);
      canvas_.dashes({at, line_.front()}, palette::ink, 2.5);
    }
    drawAsked(canvas_.out(), at);
    avoidAround(at, askedRadiusPx);
  }

  void paintRoute() {
    if (line_.size() < 2) return;
    canvas_.placer().avoidLine(line_, casingWidthPx / 2);
    canvas_.stroke(line_, palette::casing, casingWidthPx);
    canvas_.stroke(line_, palette::route, routeWidthPx);
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
    canvas_.out().leaf("path", {{"d", path},
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

  void avoidAround(Point at, double radius) {
    canvas_.placer().avoid({at.x - radius, at.y - radius, at.x + radius, at.y + radius});
  }

  void paintSymbols() {
    if (line_.empty()) return;
    if (visit_.arrival) {
      drawArrival(canvas_.out(), line_.front());
      avoidAround(line_.front(), arrivalRadiusPx);
    }
    if (!panel_.start.empty()) {
      drawStart(canvas_.out(), line_.front());
      avoidAround(line_.front(), startRadiusPx);
    }
    if (visit_.departure) {
      drawChange(canvas_.out(), line_.back(), visit_.departure->heading);
      avoidAround(line_.back(), changeRadiusPx);
    }
    if (!panel_.goal.empty()) {
      drawGoal(canvas_.out(), line_.back());
      canvas_.placer().avoid({line_.back().x - goalWidthPx / 2, line_.back().y - goalHeightPx,
                              line_.back().x + goalWidthPx / 2, line_.back().y + 2});
    }
    canvas_.out().line();
  }

  void paintLabels() {
    if (line_.empty()) return;
    const Point first = line_.front();
    const Point last = line_.back();
    if (!panel_.goal.empty()) {
      canvas_.label({last.x, last.y - 12}, 17, panel_.goal, Weight::strong);
    }
    if (!panel_.start.empty()) {
      canvas_.label(first, startRadiusPx + 4, panel_.start, Weight::strong);
    }
    if (visit_.departure) {
      canvas_.label(last, changeRadiusPx + 4, departureLabel(*visit_.departure), Weight::normal);
    }
    if (visit_.arrival && panel_.goal.empty()) {
      canvas_.label(first, arrivalRadiusPx + 4, arrivalLabel(*visit_.arrival), Weight::normal);
    }
  }

  void paintNames() {
    if (panel_.names == nullptr) return;
    writeNames(canvas_, {*panel_.names, panel_.landmarks, line_, {panel_.start, panel_.goal}});
  }

  void addNote(std::string& note) const {
    std::string_view more;
    if (visit_.points.empty()) {
      more = "The route has no place on this map.";
    } else if (visit_.pointsLeftOut) {
      more = "Part of the route lies off this map.";
    }
    if (!note.empty() && !more.empty()) note += ' ';
    note += more;
  }

  const FloorPanel& panel_;
  const FloorVisit& visit_;
  FloorCanvas canvas_;
  std::vector<Point> line_;
};

}  // namespace

PanelDrawing drawFloor(const FloorPanel& panel) { return PanelPainter(panel).paint(); }

std::string inWords(const FloorPanel& panel) {
  const FloorVisit& visit = *panel.visit;
  std::string words = visit.name.text() + ".";
  if (panel.asked) words += " Begin at the point asked from.";
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
