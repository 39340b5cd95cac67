#include "tools/tern/NearestCommand.hpp"

#include <algorithm>
#include <string>
#include <utility>

#include "TernCoreKit/model/collections/TernMapCollection.hpp"
#include "TernCoreKit/model/collections/TernPathTypeCollection.hpp"
#include "TernCoreKit/model/records/TernWaypoint.hpp"
#include "tools/tern/Nearest.hpp"
#include "tools/tern/Requests.hpp"
#include "tools/tern/RouteFile.hpp"
#include "tools/tern/RouteText.hpp"
#include "tools/tern/Whereabouts.hpp"

namespace tern::command {

namespace {

// The first path type that is placed at both ends of the connector.
std::string connectorName(const TernActiveVenue& venue, const std::shared_ptr<TernWaypoint>& in,
                          const std::shared_ptr<TernWaypoint>& out) {
  if (!venue.pathTypes) return {};
  for (const TernPathType& type : venue.pathTypes->each()) {
    const auto isAt = [&](const auto& end) { return std::ranges::count(type.waypoints, end) > 0; };
    if (isAt(in) && isAt(out)) return std::string(type.name.text());
  }
  return {};
}

//   Toilets (waypoint 12) on First Floor, 23 m away
//   Toilets (waypoint 12) on First Floor, by Lift       where no route says how
std::string headline(const TernActiveVenue& venue, const NearestSearch& search,
                     const NearestFound& found, bool hasRoute) {
  const auto map = venue.maps->getById(found.waypoint->mapId.integer());
  std::string text = placeNameWithId(venue, found.waypoint->id.integer());
  if (map != nullptr) text += " on " + floorName(venue, map);
  if (found.connectors.empty()) {
    return text + ", " + lengthText(*search.map, straightDistance(*found.waypoint, search.at)) +
           " away\n";
  }
  if (hasRoute) return text + "\n";
  const auto& taken = found.connectors;
  for (std::size_t i = 0; i + 1 < taken.size(); i += 2) {
    const std::string name = connectorName(venue, taken[i], taken[i + 1]);
    text += (i == 0 ? ", by " : ", then ") + (name.empty() ? "connector" : name);
  }
  return text + "\n";
}

// Why there is nothing, for a person.
std::string reason(const Value& request, const TernActiveVenue& venue, const NearestSearch& search,
                   const TernError& error) {
  if (search.map == nullptr) {
    return "there is no map " + request["map"].printed() + " in " + venueTitle(venue);
  }
  if (search.element.record != nullptr) return error.message;
  for (const auto& [key, name] : {std::pair("destination", "destination"),
                                  {"amenity", "amenity"},
                                  {"pathType", "path type"}}) {
    const Value* id = request.find(key);
    if (id != nullptr) {
      return std::string("there is no ") + name + " " + id->printed() + " in " + venueTitle(venue);
    }
  }
  return error.message;
}

}  // namespace

Outcome answerNearest(const Arguments& call, const TernActiveVenue& venue) {
  RequestFields fields(call.request);
  // The words have been checked.
  const NearestSearch search = *nearestSearchOf(venue, fields);
  const NearestFound found = findNearest(venue, search);
  Answer answer;
  if (call.json) answer.text = jsonLine(nearestAnswer(venue, search));
  if (found.waypoint == nullptr) {
    answer.status = ExitStatus::nothingFound;
    if (!call.json) answer.remark = reason(call.request, venue, search, *found.error);
    return answer;
  }
  const auto start = TernActiveVenue::getClosestWaypointToCoordinateOnMap(search.map, search.at);
  TernRoute route = venue.wayfind(start, found.waypoint, everyonesLevel);
  if (!call.json) {
    answer.text = headline(venue, search, found, !route.empty());
    if (!route.empty()) answer.text += routeText(venue, route);
  }
  if (call.picture.empty()) return answer;
  if (route.empty()) {
    answer.remark = "--picture: there is no way to draw";
    return answer;
  }
  if (auto failure = drawPicture(call.picture, venue, std::move(route))) return *std::move(failure);
  return answer;
}

}  // namespace tern::command
