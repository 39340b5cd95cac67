#include "tools/tern/picture/Itinerary.hpp"

#include <algorithm>
#include <array>
#include <charconv>
#include <string_view>
#include <utility>

#include "TernCoreKit/model/collections/TernBuildingCollection.hpp"
#include "TernCoreKit/model/collections/TernFloorCollection.hpp"
#include "TernCoreKit/model/collections/TernMapCollection.hpp"
#include "TernCoreKit/model/records/TernPathType.hpp"

namespace tern::picture {

namespace {

constexpr double furthestPoint = 1e7;
constexpr double longestLength = 1e9;
// What a floor has whose document says null.
constexpr double unknownLevel = -2147483648.0;

// A floor that shows the map, with its building.
struct Place {
  const TernFloor* floor = nullptr;
  const TernBuilding* building = nullptr;
};

Place placeOf(const TernVenueData& venue, std::int64_t mapId) {
  if (!venue.buildings) return {};
  for (const TernBuilding& building : venue.buildings->each()) {
    if (!building.floors) continue;
    for (const TernFloor& floor : building.floors->each()) {
      if (floor.map && floor.map->id.integer() == mapId) return {&floor, &building};
    }
  }
  return {};
}

std::string number(double value, int decimals) {
  std::array<char, 32> digits{};
  const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), value,
                                 std::chars_format::fixed, decimals)
                       .ptr;
  return {digits.data(), end};
}

class Walker {
 public:
  explicit Walker(const TernVenueData& venue) : venue_(venue) {
    severalBuildings_ = venue.buildings && venue.buildings->getCount() > 1;
  }

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
    places_.push_back(placeOf(venue_, segment.mapId));
    FloorVisit& visit = visits_.emplace_back();
    visit.mapId = segment.mapId;
    visit.map = venue_.maps ? venue_.maps->findById(segment.mapId) : nullptr;
    visit.name = nameOf(places_.back(), segment.mapId);
    visit.length = lengthOf(visit.map, double{segment.pixelDistance} - double{lengthBefore});
    takePoints(visit, segment.mapPoints);
  }

  FloorName nameOf(const Place& place, std::int64_t mapId) const {
    if (place.floor == nullptr) return {"Map " + std::to_string(mapId), {}};
    const TernFloor& floor = *place.floor;
    FloorName name;
    for (std::string_view text : {floor.name.text(), floor.shortName.text()}) {
      if (name.floor.empty()) name.floor = text;
    }
    if (name.floor.empty()) name.floor = "Floor " + std::to_string(floor.id.integer());
    if (severalBuildings_) name.building = place.building->name.text();
    return name;
  }

  // Nothing where the numbers make no sense.
  static WalkLength lengthOf(const TernMap* map, double mapUnits) {
    const double metres = mapUnits * (map != nullptr ? map->mmPerPixel.number() : 0) / 1000;
    WalkLength length;
    if (mapUnits >= 0 && mapUnits <= longestLength) length.mapUnits = mapUnits;
    if (length.mapUnits == 0 && mapUnits != 0) return length;
    if (map != nullptr && map->mmPerPixel.number() > 0 && metres <= longestLength) {
      length.metres = metres;
    }
    return length;
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

  FloorChange changeBetween(std::size_t i, const TernPathType* mover) const {
    FloorChange change;
    if (mover != nullptr) change.by = mover->name.text();
    change.heading = headingBetween(places_[i], places_[i + 1]);
    change.from = visits_[i].name;
    change.to = visits_[i + 1].name;
    return change;
  }

  static std::optional<double> levelOf(const Place& place) {
    if (place.floor == nullptr || !place.floor->level.isNumber()) return std::nullopt;
    const double level = place.floor->level.number();
    return level == unknownLevel ? std::nullopt : std::optional(level);
  }

  static Heading headingBetween(const Place& from, const Place& to) {
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
  bool severalBuildings_ = false;
  std::vector<FloorVisit> visits_;
  std::vector<Place> places_;
};

}  // namespace

WalkLength operator+(const WalkLength& a, const WalkLength& b) {
  WalkLength sum{a.mapUnits + b.mapUnits, {}};
  if (a.metres && b.metres) sum.metres = *a.metres + *b.metres;
  return sum;
}

std::string WalkLength::text() const {
  if (!metres) return mapUnits < 0.5 ? "" : number(mapUnits, 0) + " map units";
  if (*metres < 0.5) return "";
  return *metres < 999.5 ? number(*metres, 0) + " m" : number(*metres / 1000, 1) + " km";
}

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
