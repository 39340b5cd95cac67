#include "TernCoreKit/optimisation/detail/TourTables.hpp"

#include <algorithm>
#include <utility>

namespace tern::inline v5::detail {

void TourTables::arrange(Destinations destinations) {
  destinations_ = std::move(destinations);
  owners_.clear();
  for (std::size_t position = 0; position < destinations_.size(); ++position) {
    const auto& destination = destinations_[position];
    for (const auto& waypoint :
         waypoints_.try_emplace(destination.get(), destination->waypoints).first->second) {
      if (waypoint != nullptr) owners_.try_emplace(waypoint->id.integer(), position);
    }
  }
}

std::shared_ptr<TernDestination> TourTables::getDesinationById(std::int64_t id) const {
  const auto found = std::ranges::find_if(
      destinations_, [id](const auto& each) { return each->id.integer() == id; });
  return found != destinations_.end() ? *found : nullptr;
}

std::shared_ptr<TernDestination> TourTables::getbyWayPointId(std::int64_t id) const {
  const auto found = owners_.find(id);
  return found != owners_.end() ? destinations_[found->second] : nullptr;
}

bool TourTables::isOwned(const TernWaypoint& waypoint, const TernDestination& by) const {
  const auto owner = getbyWayPointId(waypoint.id.integer());
  return owner != nullptr && owner->id.integer() == by.id.integer();
}

std::int64_t TourTables::getScore(std::int64_t mapId) const {
  const auto level = levelComputedDataDict.find(mapId);
  return level != levelComputedDataDict.end() ? level->second.score : 0;
}

bool TourTables::isReachable(std::int64_t mapId) const {
  const auto level = levelComputedDataDict.find(mapId);
  return level != levelComputedDataDict.end() && level->second.isReachable;
}

bool TourTables::isAllVisited() const {
  return std::ranges::all_of(levelComputedDataDict, [](const auto& level) {
    return level.second.isVisited.value_or(true);
  });
}

const Waypoints& TourTables::waypointsOf(const TernDestination& destination) const {
  const auto known = waypoints_.find(&destination);
  return known != waypoints_.end() ? known->second : destination.waypoints;
}

std::shared_ptr<TernWaypoint> TourTables::waypointOf(const TernDestination& destination,
                                                     std::int64_t id) const {
  return waypointAmong(waypointsOf(destination), id);
}

std::shared_ptr<TernWaypoint> waypointAmong(const Waypoints& waypoints, std::int64_t id) {
  for (const auto& waypoint : waypoints) {
    if (waypoint != nullptr && waypoint->id.integer() == id) return waypoint;
  }
  return nullptr;
}

}  // namespace tern::detail
