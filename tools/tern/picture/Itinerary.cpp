#include "tools/tern/picture/Itinerary.hpp"

#include <algorithm>
#include <utility>

#include "TernCoreKit/model/collections/TernBuildingCollection.hpp"
#include "TernCoreKit/model/collections/TernFloorCollection.hpp"
#include "TernCoreKit/model/collections/TernMapCollection.hpp"
#include "TernCoreKit/model/records/TernPathType.hpp"

namespace tern::picture {

namespace {

constexpr double furthestPoint = 1e7;
// What a floor has whose document says null.
constexpr double unknownLevel = -2147483648.0;

class Walker {
 public:
  explicit Walker(const TernVenueData& venue) : venue_(venue) {}

  Itinerary walk(const TernRoute& route) {
    float before = 0;
    for (const TernPathPerFloor& segment : route) {
      addVisit(segment, std::exchange(before, segment.pixelDistance));
    }
    for (std::size_t i = 0; i + 1 < visits_.size(); ++i) {
      visits_[i].departure = changeBetween(i, route[i].mover.get());
    }
    return finished();
  }

 private:
  void addVisit(const TernPathPerFloor& segment, float lengthBefore) {
    floors_.push_back(words::floorOf(venue_, segment.mapId).floor);
    FloorVisit& visit = visits_.emplace_back();
    visit.mapId = segment.mapId;
    visit.map = venue_.maps ? venue_.maps->findById(segment.mapId) : nullptr;
    visit.name = words::floorName(venue_, segment.mapId);
    visit.length = words::lengthOn(visit.map, double{segment.pixelDistance} - double{lengthBefore});
    takePoints(visit, segment.mapPoints);
  }

  // Where a point may lie: on the drawing or not too far off it.
  static Box surroundings(const TernMap* map) {
    const double width = map != nullptr ? map->width.number() : 0;
    const double height = map != nullptr ? map->height.number() : 0;
    Box box{-furthestPoint, -furthestPoint, furthestPoint, furthestPoint};
    if (width > 0 && width <= furthestPoint && height > 0 && height <= furthestPoint) {
      box = Box{0, 0, width, height}.grownBy(std::max(width, height));
    }
    return box;
  }

  static void takePoints(FloorVisit& visit, const std::vector<TernPoint>& points) {
    const Box box = surroundings(visit.map);
    for (const TernPoint& point : points) {
      const Point at{double{point.x}, double{point.y}};
      if (box.contains(at)) visit.points.push_back(at);
    }
    visit.pointsLeftOut = visit.points.size() < points.size();
  }

  FloorChange changeBetween(std::size_t i, const TernPathType* pathType) const {
    FloorChange change;
    if (pathType != nullptr) change.by = pathType->name.text();
    change.heading = headingBetween(floors_[i], floors_[i + 1]);
    change.from = visits_[i].name;
    change.to = visits_[i + 1].name;
    return change;
  }

  static std::optional<double> levelOf(const TernFloor* floor) {
    if (floor == nullptr || !floor->level.isNumber()) return std::nullopt;
    const double level = floor->level.number();
    return level == unknownLevel ? std::nullopt : std::optional(level);
  }

  static Heading headingBetween(const TernFloor* from, const TernFloor* to) {
    const auto start = levelOf(from);
    const auto end = levelOf(to);
    if (!start || !end || *start == *end) return Heading::across;
    return *start < *end ? Heading::up : Heading::down;
  }

  // Whether nothing is done on the floor but to go on in the same way.
  bool isPassed(std::size_t i) const {
    if (i == 0 || i + 1 >= visits_.size() || visits_[i].points.size() != 1) return false;
    const FloorChange& in = *visits_[i - 1].departure;
    const FloorChange& out = *visits_[i].departure;
    return !in.by.empty() && in.by == out.by && in.heading == out.heading &&
           in.heading != Heading::across;
  }

  Itinerary finished() {
    Itinerary itinerary;
    itinerary.length.metres = 0;
    for (std::size_t i = 0; i < visits_.size(); ++i) {
      FloorVisit& visit = visits_[i];
      itinerary.length = itinerary.length + visit.length;
      if (isPassed(i)) {
        FloorChange& change = *itinerary.visits.back().departure;
        change.past.push_back(visit.name.floor);
        change.to = visits_[i + 1].name;
      } else {
        if (!itinerary.visits.empty()) visit.arrival = itinerary.visits.back().departure;
        itinerary.visits.push_back(visit);
      }
    }
    return itinerary;
  }

  const TernVenueData& venue_;
  std::vector<FloorVisit> visits_;
  std::vector<const TernFloor*> floors_;
};

}  // namespace

std::string FloorChange::text() const {
  const bool sameBuilding = from.building == to.building;
  std::string out = by.empty() ? "Go" : by;
  if (heading != Heading::across) out += heading == Heading::up ? " up" : " down";
  out += " to " + (sameBuilding ? to.floor : to.text());
  for (std::size_t i = 0; i < past.size(); ++i) out += (i == 0 ? ", past " : ", ") + past[i];
  return out;
}

Itinerary itineraryOf(const TernVenueData& venue, const TernRoute& route) {
  return Walker(venue).walk(route);
}

}  // namespace tern::picture
