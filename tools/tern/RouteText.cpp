#include "tools/tern/RouteText.hpp"

#include <algorithm>

#include "TernCoreKit/model/collections/TernAmenityCollection.hpp"
#include "TernCoreKit/model/collections/TernDestinationCollection.hpp"
#include "TernCoreKit/model/collections/TernMapCollection.hpp"
#include "TernCoreKit/model/records/TernWaypoint.hpp"

namespace tern::command {

namespace {

// The names of the records that are reached at the waypoint, "" without any.
template <class Collection>
std::string namesAt(const Nested<Collection>& collection, std::int64_t waypointId) {
  std::string names;
  if (!collection) return names;
  for (const auto& record : collection->each()) {
    const auto isHere = [&](const auto& waypoint) { return waypoint->id.integer() == waypointId; };
    if (record.name.text().empty() || std::ranges::none_of(record.waypoints, isHere)) continue;
    names.append(names.empty() ? "" : ", ").append(record.name.text());
  }
  return names;
}

std::string namesAt(const TernVenueData& venue, std::int64_t waypointId) {
  std::string names = namesAt(venue.destinations, waypointId);
  return names.empty() ? namesAt(venue.amenities, waypointId) : names;
}

std::string visitText(const picture::FloorVisit& visit) {
  const std::string length = visit.length.text();
  std::string text = "  " + visit.name.text();
  text += length.empty() ? "\n" : ": walk " + length + "\n";
  if (visit.departure) text += "  " + visit.departure->text() + "\n";
  return text;
}

}  // namespace

std::string placeName(const TernVenueData& venue, std::int64_t waypointId) {
  const std::string names = namesAt(venue, waypointId);
  return names.empty() ? "waypoint " + std::to_string(waypointId) : names;
}

std::string placeNameWithId(const TernVenueData& venue, std::int64_t waypointId) {
  const std::string names = namesAt(venue, waypointId);
  const std::string waypoint = "waypoint " + std::to_string(waypointId);
  return names.empty() ? waypoint : names + " (" + waypoint + ")";
}

std::string noRouteText(const TernVenueData& venue, std::int64_t from, std::int64_t to) {
  return "No route from " + placeNameWithId(venue, from) + " to " + placeNameWithId(venue, to) +
         "\n";
}

std::string stagesText(const picture::Itinerary& itinerary) {
  std::string text;
  for (const picture::FloorVisit& visit : itinerary.visits) text += visitText(visit);
  return text;
}

std::string routeText(const TernVenueData& venue, const TernRoute& route) {
  const picture::Itinerary itinerary = picture::itineraryOf(venue, route);
  std::string text = "From " + placeNameWithId(venue, route.front().points.front().nodeId()) + "\n";
  text += stagesText(itinerary);
  text += "To " + placeNameWithId(venue, route.back().points.back().nodeId()) + "\n";
  const std::string length = itinerary.length.text();
  return length.empty() ? text : text + length + " in all\n";
}

}  // namespace tern::command
