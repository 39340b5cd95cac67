#include "tools/import/write/FloorSvg.hpp"

#include <algorithm>
#include <cmath>
#include <string_view>
#include <utility>
#include <vector>

#include "TernCoreKit/platform/Value.hpp"
#include "tools/drawing/SvgText.hpp"
#include "tools/drawing/TextWidth.hpp"

namespace tern::imports {

namespace {

using drawing::PixelPoint;

constexpr std::string_view fontStyle =
    "font-family=\"Inter,Helvetica,Arial,Noto Sans CJK JP,sans-serif\" text-anchor=\"middle\" "
    "fill=\"#2b3138\"";
// Of letters, in units of the drawing; smaller ones are left out.
constexpr double mostLetterPx = 40;
constexpr double leastLetterPx = 9;
// More on one floor only make a blot.
constexpr std::size_t mostLabels = 2'000;
// What a label may take of its area.
constexpr double mostPart = 0.9;
constexpr double lineHeight = 1.25;

std::string_view tintOf(AreaKind kind) {
  switch (kind) {
    case AreaKind::room:
      return "#e3e6ee";
    case AreaKind::shop:
      return "#f4e2c9";
    case AreaKind::toilets:
      return "#cfe3f1";
    case AreaKind::way:
      return "#ffffff";
    case AreaKind::mover:
      return "#dcd3ea";
    case AreaKind::outdoors:
      return "#e4eedb";
    case AreaKind::closed:
      break;
  }
  return "#d6d6d6";
}

double areaOf(const Line& ring) {
  double twice = 0;
  for (std::size_t i = 0; i < ring.size(); ++i) {
    const Point a = ring[i];
    const Point b = ring[(i + 1) % ring.size()];
    twice += a.x * b.y - b.x * a.y;
  }
  return std::abs(twice) / 2;
}

double areaOf(const std::vector<Polygon>& shapes) {
  double area = 0;
  for (const Polygon& shape : shapes) {
    if (!shape.rings.empty()) area += areaOf(shape.rings.front());
  }
  return area;
}

// The unit of the drawing, whatever that of the map is.
constexpr double drawnPerMetre = 20;

Point onDrawing(const Placement& placement, Point at) {
  return {(at.x - placement.corner.x) * drawnPerMetre, (at.y - placement.corner.y) * drawnPerMetre};
}

// Gathers lines and rings as the data of one path.
class PathData {
 public:
  explicit PathData(const Placement& placement) : placement_(placement) {}

  void add(const Line& line, bool isClosed) {
    PixelPoint last{};
    bool isFirst = true;
    for (const Point point : line) {
      const PixelPoint at = pixel(point);
      if (isFirst) {
        begin(at);
      } else if (at != last) {
        step('l', last, at);
      }
      last = at;
      isFirst = false;
    }
    if (isClosed && !isFirst) data_ += 'z';
    if (!isFirst) pen_ = isClosed ? pixel(line.front()) : last;
  }

  void add(const std::vector<Polygon>& shapes) {
    for (const Polygon& shape : shapes) {
      for (const Line& ring : shape.rings) add(ring, true);
    }
  }

  void draw(drawing::SvgText& svg, std::string_view style) const {
    if (!isEmpty_) svg.shape(start_, data_, style);
  }

 private:
  PixelPoint pixel(Point point) const {
    const Point at = onDrawing(placement_, point);
    return {static_cast<int>(std::lround(at.x)), static_cast<int>(std::lround(at.y))};
  }

  void begin(PixelPoint at) {
    if (isEmpty_) {
      start_ = at;
    } else {
      step('m', pen_, at);
    }
    isEmpty_ = false;
  }

  void step(char letter, PixelPoint from, PixelPoint to) {
    data_ += letter;
    data_ += std::to_string(to.x - from.x);
    data_ += ' ';
    data_ += std::to_string(to.y - from.y);
  }

  const Placement& placement_;
  std::string data_;
  PixelPoint start_;
  PixelPoint pen_;
  bool isEmpty_ = true;
};

class FloorDrawer {
 public:
  FloorDrawer(const VenuePlan& venue, std::size_t floor)
      : venue_(venue),
        draft_(*venue.draft),
        floor_(floor),
        svg_(venue.placement.widthPx, venue.placement.heightPx) {}

  std::string draw() {
    const double scale = venue_.placement.pxPerMetre() / drawnPerMetre;
    svg_.openGroup("transform=\"scale(" + Value(scale).printed() + ")\"");
    drawGround();
    drawAreas();
    drawLines(draft_.marks, "fill=\"none\" stroke=\"#5c6570\" stroke-width=\"1\"");
    drawLines(draft_.walls,
              "class=\"walls\" fill=\"none\" stroke=\"#5c6570\" stroke-width=\"3\" "
              "stroke-linecap=\"round\"");
    drawLines(draft_.doors, "fill=\"none\" stroke=\"#fff\" stroke-width=\"6\"");
    drawLines(draft_.doors, "class=\"doors\" fill=\"none\" stroke=\"#2f7d5b\" stroke-width=\"3\"");
    drawLabels();
    svg_.closeGroup();
    return svg_.finished();
  }

 private:
  const DraftFloor& floor() const { return draft_.floors[floor_]; }

  // Over the ways, which show where the source draws nothing round them.
  void drawGround() {
    if (floor().shapes.empty()) drawNeighbour();
    drawWays();
    drawShapes(floor().shapes, "fill=\"#f7f5ef\" stroke=\"#5c6570\" stroke-width=\"4\"");
  }

  void drawShapes(const std::vector<Polygon>& shapes, std::string_view style) {
    PathData data(venue_.placement);
    data.add(shapes);
    data.draw(svg_, "fill-rule=\"evenodd\" " + std::string(style));
  }

  // Faintly, so that one sees where in the building a half deck lies.
  void drawNeighbour() {
    const DraftFloor* nearest = nullptr;
    const auto apart = [&](const DraftFloor& other) {
      return std::abs(other.ordinal - floor().ordinal);
    };
    for (const DraftFloor& other : draft_.floors) {
      if (other.shapes.empty() || apart(other) > 1) continue;
      if (nearest == nullptr || apart(other) < apart(*nearest)) nearest = &other;
    }
    if (nearest == nullptr) return;
    drawShapes(nearest->shapes, "fill=\"#fbfaf8\" stroke=\"#d3d6da\" stroke-width=\"3\"");
  }

  // Two metres and a half wide, within a rim.
  void drawWays() {
    PathData data(venue_.placement);
    for (const DraftLink& link : draft_.links) {
      const bool isHere =
          draft_.nodes[link.from].floor == floor_ && draft_.nodes[link.to].floor == floor_;
      if (!isHere || link.isWithinArea) continue;
      Line line{draft_.nodes[link.from].at};
      line.insert(line.end(), link.bends.begin(), link.bends.end());
      line.push_back(draft_.nodes[link.to].at);
      data.add(line, false);
    }
    constexpr std::string_view round =
        "fill=\"none\" stroke-linecap=\"round\" stroke-linejoin=\"round\" ";
    data.draw(svg_, std::string(round) + "stroke=\"#767e88\" stroke-width=\"56\"");
    data.draw(svg_, std::string(round) + "stroke=\"#f7f5ef\" stroke-width=\"48\"");
  }

  // Large areas first, so that what lies within one stays to be seen.
  void drawAreas() {
    std::vector<std::pair<double, const DraftArea*>> areas;
    for (const DraftArea& area : draft_.areas) {
      if (area.floor == floor_) areas.emplace_back(-areaOf(area.shapes), &area);
    }
    std::ranges::stable_sort(areas, {}, [](const auto& area) { return area.first; });
    for (const auto& [size, area] : areas) {
      drawShapes(area->shapes, "stroke=\"#646c76\" stroke-width=\"2\" fill=\"" +
                                   std::string(tintOf(area->kind)) + "\"");
    }
  }

  template <class Lines>
  void drawLines(const Lines& lines, std::string_view style) {
    PathData data(venue_.placement);
    for (const auto& line : lines) {
      if (line.floor == floor_) data.add(line.line, false);
    }
    data.draw(svg_, style);
  }

  void drawLabels() {
    svg_.openGroup(fontStyle);
    for (const DraftArea& area : draft_.areas) {
      if (area.floor == floor_ && area.kind != AreaKind::mover) drawAreaLabel(area);
    }
    for (const DraftPlace& place : draft_.places) {
      if (place.floor == floor_ && !place.names.empty()) drawPlaceLabel(place);
    }
    svg_.closeGroup();
  }

  void drawAreaLabel(const DraftArea& area) {
    const std::string_view name = nameIn(area.names, venue_.language);
    const auto largest = std::ranges::max_element(area.shapes, {}, [](const Polygon& shape) {
      return shape.rings.empty() ? 0 : areaOf(shape.rings.front());
    });
    if (name.empty() || largest == area.shapes.end() || largest->rings.empty()) return;
    const Box box = boxOf(largest->rings.front());
    named_.emplace_back(name, box);
    const double unit = drawing::textWidth(name, 1);
    const double fits = std::min(
        {mostLetterPx, box.width() * mostPart / unit, box.height() * mostPart / lineHeight});
    if (fits >= leastLetterPx) drawLabel(name, box.centre(), fits);
  }

  Box boxOf(const Line& ring) const {
    const Point first = onDrawing(venue_.placement, ring.front());
    Box box{first.x, first.y, first.x, first.y};
    for (const Point point : ring) {
      const Point at = onDrawing(venue_.placement, point);
      box = box.with({at.x, at.y, at.x, at.y});
    }
    return box;
  }

  // Unless it is the area that it lies in, which has its label, or is too small for one.
  void drawPlaceLabel(const DraftPlace& place) {
    constexpr double letterPx = 30;
    const std::string_view name = nameIn(place.names, venue_.language);
    const Point at = onDrawing(venue_.placement, place.at);
    const bool isArea = std::ranges::any_of(
        named_, [&](const auto& area) { return area.first == name && area.second.contains(at); });
    if (!isArea) drawLabel(name, at, letterPx);
  }

  // Unless another label is there already.
  void drawLabel(std::string_view words, Point middle, double letterPx) {
    if (labels_.size() == mostLabels) return;
    const double half = drawing::textWidth(words, letterPx) / 2;
    const double rise = letterPx * lineHeight / 2;
    const Box box{middle.x - half, middle.y - rise, middle.x + half, middle.y + rise};
    if (std::ranges::any_of(labels_, [&](const Box& other) { return other.meets(box); })) return;
    labels_.push_back(box);
    const int size = static_cast<int>(letterPx);
    const PixelPoint at{static_cast<int>(std::lround(middle.x)),
                        static_cast<int>(std::lround(middle.y)) + size * 7 / 20};
    svg_.text(at, size, words,
              "stroke=\"#fff\" stroke-width=\"4\" paint-order=\"stroke\" stroke-opacity=\"0.8\"");
  }

  const VenuePlan& venue_;
  const Draft& draft_;
  std::size_t floor_;
  drawing::SvgText svg_;
  // Areas with a name, and their boxes on the drawing.
  std::vector<std::pair<std::string_view, Box>> named_;
  // Those that are drawn.
  std::vector<Box> labels_;
};

}  // namespace

std::string drawFloor(const VenuePlan& venue, std::size_t floor) {
  return FloorDrawer(venue, floor).draw();
}

}  // namespace tern::imports
