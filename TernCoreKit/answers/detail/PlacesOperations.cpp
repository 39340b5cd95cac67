// Destinations and amenities by name.
#include <algorithm>
#include <string_view>
#include <utility>

#include "TernCoreKit/answers/detail/AnswerParts.hpp"
#include "TernCoreKit/answers/detail/Operations.hpp"
#include "TernCoreKit/guidance/TernPlaces.hpp"
#include "TernCoreKit/model/records/TernWaypoint.hpp"

namespace tern::inline v5::detail {

namespace {

// With each map once, in the order of the waypoints.
Value placePart(const TernPlace& place) {
  Value mapIds = Value::list();
  Value waypoints = Value::list();
  for (const auto& waypoint : place.waypoints) {
    const Value mapId = waypoint->mapId.integer();
    if (std::ranges::count(mapIds.items(), mapId) == 0) mapIds.append(mapId);
    waypoints.append(waypointPart(waypoint));
  }
  const bool isDestination = place.element.kind == TernElement::Kind::destination;
  Value part = Value::map({{"kind", isDestination ? "destination" : "amenity"},
                           {"id", place.element.record->id.integer()},
                           {"name", place.name}});
  part.set("mapIds", std::move(mapIds));
  part.set("waypoints", std::move(waypoints));
  return part;
}

}  // namespace

Value answerPlaces(const TernPlaces& places, RequestFields& fields) {
  const std::string_view text = fields.has("text") ? fields.text("text") : std::string_view();
  if (fields.error()) return {};
  Value list = Value::list();
  for (const TernPlace* place : places.find(text)) list.append(placePart(*place));
  return answerOf("places", std::move(list));
}

}  // namespace tern::detail
