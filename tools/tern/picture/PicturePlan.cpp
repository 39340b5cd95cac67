#include "tools/tern/picture/PicturePlan.hpp"

#include <cstdint>
#include <map>
#include <set>
#include <utility>

#include "tools/tern/picture/FloorDrawings.hpp"
#include "tools/tern/picture/FloorNames.hpp"
#include "tools/tern/picture/GhostFloor.hpp"
#include "tools/tern/picture/Palette.hpp"
#include "tools/tern/picture/Symbols.hpp"

namespace tern::picture {

namespace {

std::string summaryOf(const WalkLength& length, std::size_t floors) {
  std::string text = length.text();
  if (text.empty()) text = length.metres ? "less than 1 m" : "no distance";
  return text + (floors == 1 ? ", 1 floor" : ", " + std::to_string(floors) + " floors");
}

// A picture is to be looked at: beyond this many stretches nobody scrolls.
constexpr std::size_t mostPanels = 200;
constexpr std::size_t mostOthers = 50;

constexpr std::string_view askedWords = "The point asked from";

PanelDrawing askedLegend() {
  constexpr double height = 24;
  Markup out;
  drawAsked(out, {11, height / 2});
  out.leaf("text",
           {{"x", 30},
            {"y", height / 2 + 5},
            {"font-size", 13},
            {"font-family", palette::fonts},
            {"fill", palette::quiet}},
           askedWords);
  return {out.take(), {MapWindow::width, height}, {}};
}

class Planner {
 public:
  explicit Planner(const RoutePicture& picture) : picture_(picture) {
    for (const PictureRoute& route : picture.routes) {
      walks_.push_back(itineraryOf(venueOf(route), route.route));
    }
  }

  PicturePlan plan() {
    PicturePlan plan;
    plan.venueName = picture_.venueName;
    for (std::size_t i = 0; i < walks_.size(); ++i) plan.routes.push_back(planRoute(i));
    if (!plan.routes.empty()) {
      const bool isTour = picture_.set == RouteSet::legs;
      plan.start = plan.routes.front().start;
      plan.goal = isTour ? plan.routes.back().goal : plan.routes.front().goal;
      plan.summary = isTour ? tourSummary() : plan.routes.front().summary;
    }
    if (picture_.asked) {
      plan.legend = askedLegend();
      plan.legendWords = std::string(askedWords) + ".";
    }
    plan.drawings = drawings_.takeMarkup();
    plan.darkRules = drawings_.darkRules();
    return plan;
  }

 private:
  PlannedRoute planRoute(std::size_t i) {
    const PictureRoute& route = picture_.routes[i];
    PlannedRoute planned{route.title, route.start, route.goal, "No route was found.", {}};
    if (walks_[i].visits.empty()) return planned;
    planned.summary = summaryOf(walks_[i].length, floorsOf(i).size());
    for (std::size_t j = 0; j < walks_[i].visits.size(); ++j) {
      if (panels_ == mostPanels) {
        planned.summary += "; not all of it is drawn";
        break;
      }
      ++panels_;
      planned.panels.push_back(planPanel(i, j));
    }
    return planned;
  }

  PlannedPanel planPanel(std::size_t i, std::size_t j) {
    const Itinerary& walk = walks_[i];
    const FloorVisit& visit = walk.visits[j];
    FloorPanel panel;
    panel.visit = &visit;
    panel.drawing = &drawings_.of(visit.map);
    const PictureRoute& route = picture_.routes[i];
    const TernMap* ghost = ghostUnder(route, visit, *panel.drawing);
    if (ghost != nullptr) panel.ghost = &drawings_.of(ghost);
    panel.others = othersOn(visit);
    if (j == 0) panel.start = route.start;
    if (j + 1 == walk.visits.size()) panel.goal = route.goal;
    const auto& asked = picture_.asked;
    if (asked && i == 0 && j == 0 && asked->mapId == visit.mapId) panel.asked = asked->at;
    panel.names = &namesOf(route).on(visit.mapId);
    panel.landmarks.insert(route.landmarks.begin(), route.landmarks.end());
    panel.idPrefix = "r" + std::to_string(i + 1) + "f" + std::to_string(j + 1) + "-";
    PlannedPanel planned{visit.name, visit.length.text(), drawFloor(panel), inWords(panel),
                         visit.departure};
    if (ghost != nullptr) addGhostNote(planned.drawing.note, venueOf(route), *ghost);
    return planned;
  }

  std::vector<const FloorVisit*> othersOn(const FloorVisit& visit) const {
    std::vector<const FloorVisit*> others;
    for (const Itinerary& walk : walks_) {
      for (const FloorVisit& other : walk.visits) {
        const bool isOther = &other != &visit && other.mapId == visit.mapId;
        if (isOther && others.size() < mostOthers) others.push_back(&other);
      }
    }
    return others;
  }

  const TernVenueData& venueOf(const PictureRoute& route) const {
    return route.venue != nullptr ? *route.venue : picture_.venue;
  }

  // The map that is drawn faintly where the floor's own drawing is blank around the route.
  const TernMap* ghostUnder(const PictureRoute& route, const FloorVisit& visit,
                            const FloorDrawing& drawing) const {
    if (visit.points.empty()) return nullptr;
    const Box part = windowOf({visit.map, &drawing, {}, visit.points}).shown();
    const bool isBlank = drawing.id.empty() || drawing.marks.isBlankIn(part);
    return isBlank ? ghostOf(venueOf(route), visit.mapId, part) : nullptr;
  }

  static void addGhostNote(std::string& note, const TernVenueData& venue, const TernMap& ghost) {
    if (!note.empty()) note += ' ';
    note += words::floorName(venue, ghost.id.integer()).floor + " is drawn faintly.";
  }

  const FloorNames& namesOf(const PictureRoute& route) {
    const TernVenueData& venue = venueOf(route);
    return names_.try_emplace(&venue, venue, route.labels).first->second;
  }

  std::set<std::int64_t> floorsOf(std::size_t i) const {
    std::set<std::int64_t> floors;
    for (const FloorVisit& visit : walks_[i].visits) floors.insert(visit.mapId);
    return floors;
  }

  std::string tourSummary() const {
    WalkLength length{0, 0};
    std::set<std::int64_t> floors;
    for (std::size_t i = 0; i < walks_.size(); ++i) {
      length = length + walks_[i].length;
      floors.merge(floorsOf(i));
    }
    return summaryOf(length, floors.size());
  }

  const RoutePicture& picture_;
  std::vector<Itinerary> walks_;
  std::size_t panels_ = 0;
  FloorDrawings drawings_;
  std::map<const TernVenueData*, FloorNames> names_;
};

}  // namespace

std::string PicturePlan::title() const {
  std::string text = subject;
  if (!start.empty()) text += " from " + start;
  if (!goal.empty()) text += " to " + goal;
  return text;
}

std::string PicturePlan::words() const {
  std::string text = summary;
  if (!legendWords.empty()) text += " " + legendWords;
  for (const PlannedRoute& route : routes) {
    if (routes.size() > 1) text += " " + route.title + ": " + route.summary;
    for (const PlannedPanel& panel : route.panels) text += " " + panel.words;
  }
  return text;
}

PicturePlan planOf(const RoutePicture& picture) { return Planner(picture).plan(); }

}  // namespace tern::picture
