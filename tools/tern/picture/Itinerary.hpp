// A route as someone walks it: floor after floor, with what leads from each to the next.
//
// A floor that the route only passes on a lift or a flight of stairs, without a step on it, is no
// stop of its own; the change that passes it names it. A route that comes back to a floor visits it
// twice.
//
// Ownership: borrows the venue and its maps, which must outlive it; texts are copies.
// Threads: as readers of the venue.
// Fails: never. What the venue does not know is named by its id; a point that is not finite, or
//   that lies further from the drawing than the drawing is large, is left out.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "TernCoreKit/model/collections/TernVenueData.hpp"
#include "TernCoreKit/model/records/TernMap.hpp"
#include "TernCoreKit/wayfinding/TernPathPerFloor.hpp"
#include "tools/tern/picture/Geometry.hpp"
#include "tools/tern/words/FloorName.hpp"
#include "tools/tern/words/WalkLength.hpp"

namespace tern::picture {

using words::FloorName;
using words::WalkLength;

enum class Heading { up, down, across };

struct FloorChange {
  // The path type's name; empty when it is unknown.
  std::string by;
  Heading heading = Heading::across;
  FloorName from;
  FloorName to;
  // Floors it goes past.
  std::vector<std::string> past;

  // "Lift up to First floor, past Mezzanine"
  std::string text() const;
};

struct FloorVisit {
  std::int64_t mapId = 0;
  // Null when the venue has no such map.
  const TernMap* map = nullptr;
  FloorName name;
  // In map units.
  std::vector<Point> points;
  bool pointsLeftOut = false;
  WalkLength length;
  std::optional<FloorChange> arrival;
  std::optional<FloorChange> departure;
};

struct Itinerary {
  std::vector<FloorVisit> visits;
  WalkLength length;
};

Itinerary itineraryOf(const TernVenueData& venue, const TernRoute& route);

}  // namespace tern::picture
