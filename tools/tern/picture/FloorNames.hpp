// The names that can be written on the maps of a venue: those of its destinations, at the waypoints
// where they are reached, and its map labels, where they are placed.
//
// Ownership: borrows the venue's records.
// Threads: as readers of the venue.
// Fails: never; what has no name or no place is not among them.
//
//   const FloorNames names(venue, venue.mapLabels.record().get());
//   for (const PlaceName& name : names.on(mapId)) ...
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string_view>
#include <vector>

#include "TernCoreKit/model/collections/TernMapLabelCollection.hpp"
#include "TernCoreKit/model/collections/TernVenueData.hpp"
#include "tools/tern/picture/Geometry.hpp"

namespace tern::picture {

struct PlaceName {
  std::string_view name;
  // The destination's id; none of a map label.
  std::optional<std::int64_t> destination;
  // Where it may stand, in map units.
  std::vector<Point> places;
};

class FloorNames {
 public:
  // `labels` may be null.
  FloorNames(const TernVenueData& venue, const TernMapLabelCollection* labels);

  // In the order of the venue, its destinations first.
  const std::vector<PlaceName>& on(std::int64_t mapId) const;

 private:
  void addDestinations(const TernVenueData& venue);
  void addLabels(const TernMapLabelCollection& labels, const TernVenueData& venue);

  std::map<std::int64_t, std::vector<PlaceName>> names_;
};

}  // namespace tern::picture
