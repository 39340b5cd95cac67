#include "tools/tern/picture/FloorNames.hpp"

#include <cmath>

#include "TernCoreKit/model/collections/TernDestinationCollection.hpp"
#include "TernCoreKit/model/collections/TernMapCollection.hpp"
#include "TernCoreKit/model/collections/TernMapLabelInstances.hpp"
#include "TernCoreKit/model/records/TernWaypoint.hpp"

namespace tern::picture {

namespace {

std::optional<Point> pointOf(const Value& x, const Value& y) {
  if (!x.isNumber() || !y.isNumber()) return std::nullopt;
  const Point point{x.number(), y.number()};
  const bool isFinite = std::isfinite(point.x) && std::isfinite(point.y);
  return isFinite ? std::optional(point) : std::nullopt;
}

}  // namespace

FloorNames::FloorNames(const TernVenueData& venue, const TernMapLabelCollection* labels) {
  addDestinations(venue);
  if (labels != nullptr) addLabels(*labels, venue);
}

void FloorNames::addDestinations(const TernVenueData& venue) {
  if (!venue.destinations) return;
  for (const TernDestination& destination : venue.destinations->each()) {
    const std::string_view name = destination.name.text();
    const std::int64_t id = destination.id.integer();
    if (name.empty()) continue;
    for (const auto& waypoint : destination.waypoints) {
      const auto place = pointOf(waypoint->coordinate(0), waypoint->coordinate(1));
      if (!place) continue;
      std::vector<PlaceName>& names = names_[waypoint->mapId.integer()];
      const bool isNew = names.empty() || names.back().destination != id;
      if (isNew) names.push_back({name, id, {}});
      names.back().places.push_back(*place);
    }
  }
}

// One that shows an image does not show its name.
void FloorNames::addLabels(const TernMapLabelCollection& labels, const TernVenueData& venue) {
  for (const TernMapLabel& label : labels.each()) {
    if (label.svg.isText() || !label.mapLabelInstances) continue;
    for (const TernMapLabelInstance& instance : label.mapLabelInstances->each()) {
      const std::string_view own = instance.name.text();
      const std::string_view name = own.empty() ? label.name.text() : own;
      const auto at = instance.position.items();
      const auto place = at.size() < 2 ? std::nullopt : pointOf(at[0], at[1]);
      if (name.empty() || !place) continue;
      if (!instance.allLevels.flag()) {
        names_[instance.mapId.integer()].push_back({name, std::nullopt, {*place}});
        continue;
      }
      if (!venue.maps) continue;
      for (const TernMap& map : venue.maps->each()) {
        names_[map.id.integer()].push_back({name, std::nullopt, {*place}});
      }
    }
  }
}

const std::vector<PlaceName>& FloorNames::on(std::int64_t mapId) const {
  static const std::vector<PlaceName> none;
  const auto found = names_.find(mapId);
  return found == names_.end() ? none : found->second;
}

}  // namespace tern::picture
