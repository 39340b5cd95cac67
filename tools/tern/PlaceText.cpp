#include "tools/tern/PlaceText.hpp"

#include <algorithm>
#include <cstdint>
#include <utility>
#include <vector>

#include "TernCoreKit/model/records/TernWaypoint.hpp"
#include "tools/tern/words/FloorName.hpp"

namespace tern::command {

namespace {

using Ids = std::vector<std::int64_t>;

// With each map once, in the order of the waypoints.
std::vector<std::pair<std::int64_t, Ids>> waypointsByMap(const TernPlace& place) {
  std::vector<std::pair<std::int64_t, Ids>> maps;
  for (const auto& waypoint : place.waypoints) {
    const std::int64_t mapId = waypoint->mapId.integer();
    auto found = std::ranges::find(maps, mapId, [](const auto& each) { return each.first; });
    if (found == maps.end()) found = maps.insert(found, {mapId, {}});
    found->second.push_back(waypoint->id.integer());
  }
  return maps;
}

// "waypoints 3, 9"
std::string waypointsText(const Ids& ids) {
  constexpr std::size_t listedAtMost = 6;
  std::string text = ids.size() == 1 ? "waypoint " : "waypoints ";
  for (std::size_t i = 0; i < std::min(ids.size(), listedAtMost); ++i) {
    text += (i > 0 ? ", " : "") + std::to_string(ids[i]);
  }
  const std::size_t left = ids.size() - std::min(ids.size(), listedAtMost);
  return left == 0 ? text : text + " and " + std::to_string(left) + " more";
}

}  // namespace

std::string placeText(const TernVenueData& venue, const TernPlace& place) {
  const bool isDestination = place.element.kind == TernElement::Kind::destination;
  const std::string record =
      std::string(isDestination ? "destination " : "amenity ") + place.element.record->id.printed();
  std::string text = place.name.empty() ? record : place.name + " (" + record + ")";
  if (place.waypoints.empty()) return text + ", which is placed nowhere";
  std::string_view between = " on ";
  for (const auto& [mapId, ids] : waypointsByMap(place)) {
    text.append(std::exchange(between, ", ")).append(words::floorName(venue, mapId).text());
    text += " (" + waypointsText(ids) + ")";
  }
  return text;
}

}  // namespace tern::command
