#include "tools/tern/picture/PicturePlan.hpp"

#include <cstdint>
#include <map>
#include <set>
#include <utility>

#include "tools/tern/picture/FloorDrawings.hpp"
#include "tools/tern/picture/FloorNames.hpp"

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

class Planner {
 public:
  explicit Planner(const RoutePicture& picture) : picture_(picture) {
    for (const PictureRoute& route : picture.routes) {
      const TernVenueData& venue = route.venue != nullptr ? *route.venue : picture.venue;
      walks_.push_back(itineraryOf(venue, route.route));
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
    panel.others = othersOn(visit);
    const PictureRoute& route = picture_.routes[i];
    if (j == 0) panel.start = route.start;
    if (j + 1 == walk.visits.size()) panel.goal = route.goal;
    panel.names = &namesOf(route).on(visit.mapId);
    panel.landmarks.insert(route.landmarks.begin(), route.landmarks.end());
    panel.idPrefix = "r" + std::to_string(i + 1) + "f" + std::to_string(j + 1) + "-";
    return {visit.name, visit.length.text(), drawFloor(panel), inWords(panel), visit.departure};
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

  const FloorNames& namesOf(const PictureRoute& route) {
    const TernVenueData& venue = route.venue != nullptr ? *route.venue : picture_.venue;
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
  std::string text = "Route";
  if (!start.empty()) text += " from " + start;
  if (!goal.empty()) text += " to " + goal;
  return text;
}

std::string PicturePlan::words() const {
  std::string text = summary;
  for (const PlannedRoute& route : routes) {
    if (routes.size() > 1) text += " " + route.title + ": " + route.summary;
    for (const PlannedPanel& panel : route.panels) text += " " + panel.words;
  }
  return text;
}

PicturePlan planOf(const RoutePicture& picture) { return Planner(picture).plan(); }

}  // namespace tern::picture
