#include "tools/tern/JoinedRouteCommand.hpp"

#include <limits>
#include <string>
#include <utility>

#include "TernCoreKit/answers/TernAnswers.hpp"
#include "TernCoreKit/model/collections/TernMapCollection.hpp"
#include "TernCoreKit/model/records/TernWaypoint.hpp"
#include "TernCoreKit/service/coordinates/TernUtils.hpp"
#include "TernCoreKit/wayfinding/TernASGrid.hpp"
#include "tools/tern/AnsweredRoute.hpp"
#include "tools/tern/AskedAnswers.hpp"
#include "tools/tern/RouteText.hpp"
#include "tools/tern/StepText.hpp"
#include "tools/tern/Telling.hpp"
#include "tools/tern/Whereabouts.hpp"
#include "tools/tern/words/FloorName.hpp"

namespace tern::command {

namespace {

std::string nameOf(const TernActiveVenue& venue) {
  const std::string name(venue.name.text());
  return name.empty() ? venueTitle(venue) : name;
}

// The segment on its map, behind so many map units of the same leg.
Value onItsMap(const Value& segment, const TernActiveVenue& venue, double walkedPx) {
  const auto grid = venue.globalASGrid();
  Value mapPoints = Value::list();
  std::optional<TernCoordinate> last;
  for (const Value& id : segment["points"].items()) {
    const auto node = grid->getNodeById(id.integer());
    if (!node) continue;
    const TernCoordinate at =
        TernUtils::convertPoint({node->x(), node->y()}, "EPSG:4326", "tern:local", &venue);
    if (last) walkedPx += TernUtils::distanceBetweenPoint1(*last, at);
    last = at;
    mapPoints.append(Value::list({at.x, at.y}));
  }
  const TernMap* map = venue.maps->findById(segment["mapId"].integer());
  Value local = segment;
  local.set("pixelDistance", walkedPx);
  local.set("mmDistance", walkedPx * map->mmPerPixel.number());
  local.set("mapPoints", std::move(mapPoints));
  return local;
}

std::string placeAmong(const TernMultiActiveVenues& venues, std::int64_t waypointId) {
  const auto waypoint = venues.globalASGrid()->getWPById(waypointId);
  const auto venue = waypoint ? venues.getVenueByMapId(waypoint->mapId.integer()) : nullptr;
  return venue ? placeNameWithId(*venue, waypointId) : "waypoint " + std::to_string(waypointId);
}

// "Harbour Mall, Ground Floor"
std::string floorAmong(const TernMultiActiveVenues& venues, std::int64_t mapId) {
  const auto venue = venues.getVenueByMapId(mapId);
  if (venue == nullptr) return "map " + std::to_string(mapId);
  return nameOf(*venue) + ", " + words::floorName(*venue, mapId).text();
}

// Of the same route again, since an answer does not have its nodes.
std::vector<TernStep> stepsOfAnswer(const TernMultiActiveVenues& venues, const Value& route,
                                    const Value& request) {
  const auto grid = venues.globalASGrid();
  const TernRoute found = venues.wayfind(grid->getWPById(startOf(route)),
                                         grid->getWPById(endOf(route)), levelOf(request));
  const auto all = venues.activeVenues();
  return stepsOf(TernGuidance({all.begin(), all.end()}, grid), found, request["language"].text());
}

picture::RoutePicture legsPicture(const std::vector<VenueLeg>& legs,
                                  const std::vector<std::int64_t>& landmarks) {
  picture::RoutePicture drawn{*legs.front().venue, {}, picture::RouteSet::legs, {}};
  for (const auto& [venue, segments] : legs) {
    const std::string name = nameOf(*venue);
    drawn.venueName += drawn.venueName.empty() ? name : ", " + name;
    drawn.routes.push_back({name, placeName(*venue, startOf(segments)),
                            placeName(*venue, endOf(segments)), routeOf(*venue, segments),
                            venue.get(), landmarks, venue->mapLabels.get()});
  }
  return drawn;
}

// Infinite without a route.
double costOf(const Value& answer) {
  const auto segments = answer["route"].items();
  const bool isCosted = !segments.empty() && segments.back()["cost"].isNumber();
  return isCosted ? segments.back()["cost"].number() : std::numeric_limits<double>::infinity();
}

// The answer to whichever of a place's waypoints is cheapest to reach.
Value cheapestAnswer(Value request, const TernAnswers& answers) {
  if (isNoWay(request)) request.set("to", request["from"]);
  if (!request["to"].isList()) return answerTo(request, answers);
  Value best;
  const Value goals = request["to"];
  for (const Value& goal : goals.items()) {
    request.set("to", goal);
    Value answer = answerTo(request, answers);
    if (best.isAbsent() || costOf(answer) < costOf(best)) best = std::move(answer);
  }
  return best;
}

}  // namespace

std::vector<VenueLeg> legsOf(const TernMultiActiveVenues& venues, const Value& segments) {
  std::vector<VenueLeg> legs;
  double walkedPx = 0;
  for (const Value& segment : segments.items()) {
    const auto venue = venues.getVenueByMapId(segment["mapId"].integer());
    if (venue == nullptr) continue;
    if (legs.empty() || legs.back().venue != venue) {
      legs.push_back({venue, Value::list()});
      walkedPx = 0;
    }
    Value local = onItsMap(segment, *venue, walkedPx);
    walkedPx = local["pixelDistance"].number();
    legs.back().segments.append(std::move(local));
  }
  return legs;
}

Outcome answerJoinedRoute(const Arguments& call,
                          const std::shared_ptr<TernMultiActiveVenues>& venues) {
  const Value answer = cheapestAnswer(call.request, TernAnswers(venues));
  const std::vector<VenueLeg> legs = legsOf(*venues, answer["route"]);
  Telling told{.isFound = answer["route"].size() > 0,
               .remark = unknownWaypoints(call.request, *venues->globalASGrid(), "these venues")};
  if (!legs.empty()) {
    const Value& route = answer["route"];
    const std::vector<TernStep> steps = stepsOfAnswer(*venues, route, call.request);
    told.text = "From " + placeAmong(*venues, startOf(route)) + "\nTo " +
                placeAmong(*venues, endOf(route)) + "\n\n" +
                stepsText(
                    steps, [&](std::int64_t mapId) { return floorAmong(*venues, mapId); },
                    call.request["language"].text());
    told.picture.emplace(legsPicture(legs, landmarksOf(steps)));
  } else if (told.remark.empty() && isNoWay(call.request)) {
    told.isFound = true;
    told.text = placeAmong(*venues, call.request["from"].integer()) + ": you are there already\n";
  } else if (told.remark.empty()) {
    told.text = "No route from " + placeAmong(*venues, call.request["from"].integer()) + " to " +
                placeAmong(*venues, goalOf(call.request)) + "\n";
  }
  return outcomeOf(call, answer, told);
}

}  // namespace tern::command
