#include "tools/tern/picture/ReachPicture.hpp"

#include <algorithm>
#include <array>
#include <map>
#include <set>
#include <utility>

#include "TernCoreKit/model/collections/TernMapCollection.hpp"
#include "tools/tern/picture/FloorCanvas.hpp"
#include "tools/tern/picture/FloorDrawings.hpp"
#include "tools/tern/picture/FloorNames.hpp"
#include "tools/tern/picture/MapNames.hpp"
#include "tools/tern/picture/MetreRamp.hpp"
#include "tools/tern/picture/Palette.hpp"
#include "tools/tern/picture/Symbols.hpp"

namespace tern::picture {

namespace {

constexpr double linkWidthPx = 5;
constexpr double linkCasingPx = 8;
// A picture is to be looked at: more starts than these have no label each.
constexpr std::size_t mostLabels = 12;
constexpr std::size_t mostFloors = 200;

Point between(Point a, Point b, double part) {
  return {a.x + (b.x - a.x) * part, a.y + (b.y - a.y) * part};
}

double furthest(const std::vector<WalkedLink>& links) {
  double metres = 0;
  for (const WalkedLink& link : links) metres = std::max(metres, link.toMetres);
  return metres;
}

// What lies on one map.
struct ReachedFloor {
  std::vector<const WalkedLink*> links;
  std::vector<const PlacedPoint*> starts;
  std::vector<const PlacedPoint*> arrivals;
};

class FloorPainter {
 public:
  FloorPainter(const ReachedFloor& floor, const MetreRamp& ramp, const CanvasRequest& request)
      : floor_(floor), ramp_(ramp), canvas_(request) {}

  PanelDrawing paint(const std::vector<PlaceName>& names) {
    std::vector<Point> way = endsInPicture();
    paintLinks();
    canvas_.scaleBar(way);
    paintPoints();
    std::vector<std::string_view> labels;
    for (const PlacedPoint* start : floor_.starts) labels.push_back(start->name);
    writeNames(canvas_, {names, {}, way, std::move(labels)});
    return canvas_.finish();
  }

 private:
  std::vector<Point> endsInPicture() const {
    std::vector<Point> ends;
    for (const WalkedLink* link : floor_.links) ends.push_back(canvas_.toPicture(link->to));
    for (const PlacedPoint* start : floor_.starts) ends.push_back(canvas_.toPicture(start->at));
    return ends;
  }

  // The far ones first, so that near ones lie above them where they meet.
  void paintLinks() {
    std::array<std::vector<std::vector<Point>>, MetreRamp::steps> byStep;
    std::vector<std::vector<Point>> all;
    for (const WalkedLink* link : floor_.links) {
      all.push_back({canvas_.toPicture(link->from), canvas_.toPicture(link->to)});
      canvas_.placer().avoidLine(all.back(), linkCasingPx / 2);
      cut(*link, byStep);
    }
    canvas_.strokes(all, palette::casing, linkCasingPx);
    for (std::size_t step = MetreRamp::steps; step-- > 0;) {
      canvas_.strokes(byStep[step], MetreRamp::colourOf(step), linkWidthPx);
    }
  }

  // Where a link goes from one colour to the next, it changes on the way.
  void cut(const WalkedLink& link,
           std::array<std::vector<std::vector<Point>>, MetreRamp::steps>& byStep) const {
    const Point from = canvas_.toPicture(link.from);
    const Point to = canvas_.toPicture(link.to);
    const double length = link.toMetres - link.fromMetres;
    double part = 0;
    for (std::size_t step = ramp_.stepOf(link.fromMetres); part < 1; ++step) {
      const double border = ramp_.step() * static_cast<double>(step + 1);
      const bool isLast = step + 1 >= MetreRamp::steps || !(link.toMetres > border);
      const double end = isLast ? 1 : (border - link.fromMetres) / length;
      if (end > part || isLast) {
        byStep[std::min(step, MetreRamp::steps - 1)].push_back(
            {between(from, to, part), between(from, to, end)});
      }
      part = std::max(part, end);
    }
  }

  void paintPoints() {
    for (const PlacedPoint* arrival : floor_.arrivals) {
      const Point at = canvas_.toPicture(arrival->at);
      drawArrival(canvas_.out(), at);
      canvas_.placer().avoid(Box{at.x, at.y, at.x, at.y}.grownBy(arrivalRadiusPx));
    }
    for (const PlacedPoint* start : floor_.starts) {
      const Point at = canvas_.toPicture(start->at);
      drawStart(canvas_.out(), at);
      canvas_.placer().avoid(Box{at.x, at.y, at.x, at.y}.grownBy(startRadiusPx));
    }
    if (floor_.starts.size() > mostLabels) return;
    for (const PlacedPoint* start : floor_.starts) {
      canvas_.label(canvas_.toPicture(start->at), startRadiusPx + 4, start->name,
                    FloorCanvas::Weight::strong);
    }
  }

  const ReachedFloor& floor_;
  const MetreRamp& ramp_;
  FloorCanvas canvas_;
};

class ReachPlanner {
 public:
  explicit ReachPlanner(const ReachPicture& picture)
      : picture_(picture), ramp_(furthest(picture.links)), names_(picture.venue, picture.labels) {
    take(picture.starts, &ReachedFloor::starts);
    take(picture.links, &ReachedFloor::links);
    take(picture.arrivals, &ReachedFloor::arrivals);
  }

  PicturePlan plan() {
    PicturePlan plan;
    plan.subject = "Reach";
    plan.venueName = picture_.venueName;
    for (const PlacedPoint& start : picture_.starts) {
      plan.start += (plan.start.empty() ? "" : ", ") + start.name;
    }
    plan.summary = picture_.summary;
    if (furthest(picture_.links) > 0) {
      plan.legend = ramp_.legend();
      plan.legendWords = ramp_.words();
    }
    PlannedRoute whole{{}, plan.start, {}, plan.summary, {}};
    for (const std::int64_t mapId : order_) whole.panels.push_back(panelOf(mapId));
    plan.routes.push_back(std::move(whole));
    plan.drawings = drawings_.takeMarkup();
    plan.darkRules = drawings_.darkRules();
    return plan;
  }

 private:
  // Floors come in the order in which they are first told.
  template <class Part>
  void take(const std::vector<Part>& parts, std::vector<const Part*> ReachedFloor::*list) {
    for (const Part& part : parts) {
      if (floors_.size() >= mostFloors && !floors_.contains(part.mapId)) continue;
      const auto [floor, isNew] = floors_.try_emplace(part.mapId);
      if (isNew) order_.push_back(part.mapId);
      (floor->second.*list).push_back(&part);
    }
  }

  PlannedPanel panelOf(std::int64_t mapId) {
    const TernMap* map = picture_.venue.maps ? picture_.venue.maps->findById(mapId) : nullptr;
    const ReachedFloor& floor = floors_.at(mapId);
    CanvasRequest request{map, &drawings_.of(map), "f" + std::to_string(mapId) + "-", {}, nullptr};
    double metres = 0;
    for (const WalkedLink* link : floor.links) {
      request.points.insert(request.points.end(), {link->from, link->to});
      metres = std::max(metres, link->toMetres);
    }
    for (const PlacedPoint* point : floor.starts) request.points.push_back(point->at);
    for (const PlacedPoint* point : floor.arrivals) request.points.push_back(point->at);
    const std::string length = words::WalkLength{0, metres}.text();
    const words::FloorName name = words::floorName(picture_.venue, mapId);
    const std::string upTo = length.empty() ? "" : "up to " + length;
    return {name,
            upTo,
            FloorPainter(floor, ramp_, request).paint(names_.on(mapId)),
            name.text() + (length.empty() ? "." : ": " + upTo + "."),
            {}};
  }

  const ReachPicture& picture_;
  MetreRamp ramp_;
  FloorNames names_;
  FloorDrawings drawings_;
  std::map<std::int64_t, ReachedFloor> floors_;
  std::vector<std::int64_t> order_;
};

}  // namespace

PicturePlan planOf(const ReachPicture& picture) { return ReachPlanner(picture).plan(); }

}  // namespace tern::picture
