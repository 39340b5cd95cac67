// Requests for the nearest destination, amenity or path type.
//
// REQUIRES: the venue's trees are built.
// Ownership: a search shares the records it names. Threads: one search at a time, as they share
// what the venue searches in. Fails: by value: the reading of a request by its fields' error, a
// search that finds nothing by the library's.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>

#include "TernCoreKit/model/venue/TernActiveVenue.hpp"
#include "TernCoreKit/spatial/TernNearestElement.hpp"
#include "tools/tern/RequestFields.hpp"

namespace tern::command {

struct NearestSearch {
  TernCoordinate at;
  // Null when the venue does not have it.
  std::shared_ptr<TernMap> map;
  TernElement element;
};

struct NearestFound {
  // Null when there is none.
  std::shared_ptr<TernWaypoint> waypoint;
  // In pairs: where each is entered and where it is left.
  TernNearestElement::Waypoints connectors;
  std::optional<TernError> error;
};

struct NearestOnMapSearch {
  std::shared_ptr<TernWaypoint> from;
  std::int64_t toMap;
  TernNearestElement::Elements elements;
  std::int64_t level;
};

// {"map", "at", "destination" or "amenity" or "pathType"}; of several the first of these.
std::optional<NearestSearch> nearestSearchOf(const TernActiveVenue& venue, RequestFields& fields);
NearestFound findNearest(const TernActiveVenue& venue, const NearestSearch& search);
// {"waypoint", "element", "connectors", "error"}
Value nearestAnswer(const TernActiveVenue& venue, const NearestSearch& search);

// {"from", "toMap", "destinations" and "amenities" and "pathTypes", "accessibility"}
std::optional<NearestOnMapSearch> nearestOnMapSearchOf(const TernActiveVenue& venue,
                                                       RequestFields& fields);
// {"waypoint", "totalDistance", "connectors", "error"}
Value nearestOnMapAnswer(const TernActiveVenue& venue, const NearestOnMapSearch& search);

}  // namespace tern::command
