#include "TernCoreKit/guidance/detail/Landmarks.hpp"

#include <algorithm>
#include <cmath>
#include <limits>

#include "TernCoreKit/guidance/detail/Plane.hpp"
#include "TernCoreKit/model/collections/TernDestinationCollection.hpp"
#include "TernCoreKit/model/collections/TernMapCollection.hpp"
#include "TernCoreKit/model/records/TernWaypoint.hpp"

namespace tern::inline v5::detail {

namespace {

// How far off somebody takes a door for one that is at the turn, or on the way. Metres.
constexpr double atHand = 10;
// How long before a turn what one passes still tells it. Metres.
constexpr double stillRemembered = 15;

// Where a door lies beside a straight stretch: how far behind its end, and how far to the right.
struct Beside {
  double behind = 0;
  double right = 0;
};

Beside besideOf(TernCoordinate door, TernCoordinate from, TernCoordinate to) {
  const double length = apart(from, to);
  const TernCoordinate way{(to.x - from.x) / length, (to.y - from.y) / length};
  const TernCoordinate off{door.x - to.x, door.y - to.y};
  return {-(off.x * way.x + off.y * way.y), way.x * off.y - way.y * off.x};
}

double boundPx(const TernVenueData& venue, std::int64_t mapId) {
  const TernMap* map = venue.maps ? venue.maps->findById(mapId) : nullptr;
  const double mmPerPixel = map != nullptr ? map->mmPerPixel.number() : 0;
  return mmPerPixel > 0 ? furthestLandmarkMetres * 1000 / mmPerPixel
                        : std::numeric_limits<double>::max();
}

double distancePx(const TernWaypoint& a, const TernWaypoint& b) {
  return apart({a.coordinate(0).number(), a.coordinate(1).number()},
               {b.coordinate(0).number(), b.coordinate(1).number()});
}

}  // namespace

Landmarks::Landmarks(const MapPlace& place) {
  if (place.map == nullptr || !place.venue->destinations) return;
  const std::int64_t mapId = place.map->id.integer();
  const double scale = metresPerUnit(place.map.get());
  for (const auto& destination : place.venue->destinations->each()) {
    Landmark landmark{destination.id.integer(), std::string(destination.name.text()), {}};
    if (landmark.name.empty()) continue;
    for (const auto& waypoint : destination.waypoints) {
      if (waypoint == nullptr || waypoint->mapId.integer() != mapId) continue;
      landmark.doors.push_back(
          {waypoint->coordinate(0).number() * scale, waypoint->coordinate(1).number() * scale});
    }
    if (!landmark.doors.empty()) all_.push_back(std::move(landmark));
  }
}

std::optional<SeenLandmark> Landmarks::atEnd(std::span<const TernCoordinate> line,
                                             std::optional<std::int64_t> told,
                                             std::optional<std::int64_t> goal) const {
  const TernCoordinate end = line.back();
  std::optional<SeenLandmark> best;
  double least = std::numeric_limits<double>::infinity();
  std::size_t first = line.size() - 1;
  while (first > 0 && apart(line[first], end) < stillRemembered) --first;
  const TernCoordinate from = line[first];
  for (const Landmark& landmark : all_) {
    if (landmark.id == told || landmark.id == goal) continue;
    for (const TernCoordinate door : landmark.doors) {
      // What is at the turn goes before all that is passed.
      const double away = apart(door, end);
      if (away <= atHand && away < least) {
        least = away;
        best = {&landmark, false, false};
      }
      if (from == end) continue;
      const Beside beside = besideOf(door, from, end);
      const double rank = atHand + beside.behind;
      if (beside.behind > 0 && beside.behind <= stillRemembered &&
          std::abs(beside.right) <= atHand && std::abs(beside.right) > 0.5 && rank < least) {
        least = rank;
        best = {&landmark, true, beside.right > 0};
      }
    }
  }
  return best;
}

const TernDestination* destinationNear(const TernVenueData& venue, const TernWaypoint& waypoint) {
  const TernDestination* found = nullptr;
  if (!venue.destinations) return found;
  const std::int64_t mapId = waypoint.mapId.integer();
  double nearest = std::nextafter(boundPx(venue, mapId), std::numeric_limits<double>::infinity());
  for (const TernDestination& destination : venue.destinations->each()) {
    if (destination.name.text().empty()) continue;
    for (const auto& at : destination.waypoints) {
      if (at->mapId.integer() != mapId || distancePx(*at, waypoint) >= nearest) continue;
      nearest = distancePx(*at, waypoint);
      found = &destination;
    }
  }
  return found;
}

}  // namespace tern::detail
