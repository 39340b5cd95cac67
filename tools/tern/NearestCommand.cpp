#include <algorithm>
#include <array>
#include <string>
#include <utility>

#include "TernCoreKit/answers/TernAnswers.hpp"
#include "TernCoreKit/model/collections/TernAmenityCollection.hpp"
#include "TernCoreKit/model/collections/TernDestinationCollection.hpp"
#include "TernCoreKit/model/collections/TernMapCollection.hpp"
#include "TernCoreKit/model/collections/TernPathTypeCollection.hpp"
#include "TernCoreKit/model/records/TernWaypoint.hpp"
#include "TernCoreKit/wayfinding/TernASGrid.hpp"
#include "tools/tern/AskedAnswers.hpp"
#include "tools/tern/CommandTable.hpp"
#include "tools/tern/RouteFile.hpp"
#include "tools/tern/RouteText.hpp"
#include "tools/tern/SharedOptions.hpp"
#include "tools/tern/Telling.hpp"
#include "tools/tern/Whereabouts.hpp"

namespace tern::command {

namespace {

// How the kinds of element are called in a request, and by people.
constexpr std::array elementNames{std::pair{"destination", "destination"},
                                  std::pair{"amenity", "amenity"},
                                  std::pair{"pathType", "path type"}};

// The name of the first path type that is placed at both ends of the connector.
std::string connectorName(const TernActiveVenue& venue, std::int64_t in, std::int64_t out) {
  if (!venue.pathTypes) return {};
  for (const TernPathType& type : venue.pathTypes->each()) {
    const auto isAt = [&](std::int64_t id) {
      return std::ranges::any_of(type.waypoints,
                                 [&](const auto& end) { return end->id.integer() == id; });
    };
    if (isAt(in) && isAt(out)) return std::string(type.name.text());
  }
  return {};
}

// ", by Lift, then Stairs"
std::string connectorsText(const TernActiveVenue& venue, const Value& connectors) {
  std::string text;
  const auto taken = connectors.items();
  for (std::size_t i = 0; i + 1 < taken.size(); i += 2) {
    const std::string name = connectorName(venue, taken[i].integer(), taken[i + 1].integer());
    text += (i == 0 ? ", by " : ", then ") + (name.empty() ? "connector" : name);
  }
  return text;
}

// What the venue does not have of what is asked for; empty when it has all.
std::string unknownPart(const TernActiveVenue& venue, const Value& request) {
  std::string text;
  const auto check = [&](std::string_view key, std::string_view name, const auto& collection) {
    const Value* id = request.find(key);
    if (id == nullptr || !text.empty()) return;
    if (collection && collection->findById(id->integer()) != nullptr) return;
    text.append("there is no ").append(name).append(" " + id->printed() + " in ");
    text += venueTitle(venue);
  };
  text = unknownWaypoints(request, *venue.globalASGrid(), venueTitle(venue));
  check("map", "map", venue.maps);
  check("destination", "destination", venue.destinations);
  check("amenity", "amenity", venue.amenities);
  check("pathType", "path type", venue.pathTypes);
  return text;
}

// The way to the waypoint from the one closest to where the request asks.
Value wayTo(const Value& waypoint, const Value& request, TernAnswers& answers) {
  const Value start = answerTo(
      Value::map({{"op", "closest"}, {"map", request["map"]}, {"at", request["at"]}}), answers);
  const Value asked = Value::map({{"op", "route"}, {"from", start["waypoint"]}, {"to", waypoint}});
  return answerTo(asked, answers)["route"];
}

//   Toilets (waypoint 12) on First Floor, 23 m away
//   Toilets (waypoint 12) on First Floor, by Lift       where no route says how
std::string headline(const TernActiveVenue& venue, const Value& request, const Value& answer,
                     bool hasRoute) {
  const auto waypoint = venue.globalASGrid()->getWPById(answer["waypoint"].integer());
  std::string text = placeOnFloor(venue, *waypoint);
  if (answer["connectors"].size() == 0) {
    text += awayText(venue, *waypoint, request["at"]);
  } else if (!hasRoute) {
    text += connectorsText(venue, answer["connectors"]);
  }
  return text + "\n";
}

// Where no way is needed, the map shows the place alone.
picture::RoutePicture pictureFrom(const TernActiveVenue& venue, const Value& request,
                                  const TernWaypoint& found, const Value& route) {
  picture::RoutePicture drawn = route.size() > 0
                                    ? pictureOf(venue, route)
                                    : picture::RoutePicture{venue, std::string(venue.name.text())};
  if (route.size() == 0) {
    TernPathPerFloor there;
    there.mapId = found.mapId.integer();
    there.mapPoints.push_back(TernPoint::initWithX(static_cast<float>(found.coordinate(0).number()),
                                                   static_cast<float>(found.coordinate(1).number()),
                                                   static_cast<float>(there.mapId)));
    drawn.routes.push_back({.title = {},
                            .start = {},
                            .goal = placeName(venue, found.id.integer()),
                            .route = {there},
                            .labels = venue.mapLabels.get()});
  }
  const auto at = request["at"].items();
  drawn.asked.emplace(
      picture::AskedPoint{request["map"].integer(), {at[0].number(), at[1].number()}});
  return drawn;
}

Telling tellFound(const TernActiveVenue& venue, const Value& request, const Value& answer,
                  const Value& route) {
  const bool hasRoute = route.size() > 0;
  Telling told{.text = headline(venue, request, answer, hasRoute)};
  if (hasRoute) told.text += routeText(venue, route);
  if (!hasRoute && answer["connectors"].size() > 0) return told;
  const auto found = venue.globalASGrid()->getWPById(answer["waypoint"].integer());
  told.picture.emplace(pictureFrom(venue, request, *found, route));
  return told;
}

// "No way from Bakery (waypoint 1) to amenity 7"
std::string noWayText(const TernActiveVenue& venue, const Value& request) {
  std::string text = "No way from " + placeNameWithId(venue, request["from"].integer()) + " to ";
  for (const auto& [key, name] : elementNames) {
    if (const Value* id = request.find(key)) text.append(name).append(" " + id->printed());
  }
  return text + "\n";
}

// By walk the answer says the way, and where one stands already there is none.
Telling tellByWalk(const TernActiveVenue& venue, const Value& request, const Value& answer) {
  Telling told;
  if (answer["waypoint"].isNull()) {
    told.isFound = false;
    told.remark = unknownPart(venue, request);
    if (told.remark.empty()) told.text = noWayText(venue, request);
    return told;
  }
  const auto waypoint = venue.globalASGrid()->getWPById(answer["waypoint"].integer());
  const bool hasRoute = answer["route"].size() > 0;
  told.text = placeOnFloor(venue, *waypoint) + (hasRoute ? "\n" : ", right there\n");
  if (!hasRoute) return told;
  told.text += routeText(venue, answer["route"]);
  told.picture.emplace(pictureOf(venue, answer["route"]));
  return told;
}

Outcome answerNearestByWalk(const Arguments& call, const TernActiveVenue& venue,
                            const TernAnswers& answers) {
  Value request = call.request;
  request.set("op", "nearestByWalk");
  const Value answer = answerTo(request, answers);
  Telling told = tellByWalk(venue, request, answer);
  if (call.json) told.remark.clear();
  return outcomeOf(call, answer, told);
}

Outcome answerNearest(const Arguments& call, const std::shared_ptr<TernActiveVenue>& venue) {
  TernAnswers answers(venue);
  if (call.request.find("from") != nullptr) return answerNearestByWalk(call, *venue, answers);
  const Value answer = answerTo(call.request, answers);
  if (answer["waypoint"].isNull()) {
    Telling told{.isFound = false};
    if (!call.json) told.remark = unknownPart(*venue, call.request);
    if (!call.json && told.remark.empty()) told.remark = answer["error"]["message"].printed();
    return outcomeOf(call, answer, told);
  }
  // The answer does not say the way, which JSON alone does not need.
  if (call.json && call.picture.empty()) return outcomeOf(call, answer, {});
  const Value route = wayTo(answer["waypoint"], call.request, answers);
  return outcomeOf(call, answer, tellFound(*venue, call.request, answer, route));
}

std::optional<std::string> objectionToPlaces(const Arguments& call) {
  const auto has = [&](std::string_view key) { return call.request.find(key) != nullptr; };
  const bool isByWalk = has("from") && !has("map") && !has("at");
  const bool isByLine = !has("from") && has("map") && has("at");
  if (!isByWalk && !isByLine) return "either --from W or --map M with --at X,Y is wanted";
  if (isByLine && has("accessibility")) return "--accessibility goes with --from W";
  int elements = 0;
  for (const auto& [key, name] : elementNames) elements += has(key) ? 1 : 0;
  if (elements == 1) return std::nullopt;
  return "one of --destination D, --amenity A and --path-type P is wanted";
}

constexpr Option pointOption{"--at", "X,Y", "a point of that map, in map units", readPoint};

}  // namespace

const Command nearestCommand{
    .name = "nearest",
    .summary = "find the nearest destination, amenity, lift or stairs",
    .options = {{"--map", "M", "the map to start from, in straight lines", readWhole},
                pointOption,
                {"--from",
                 "W",
                 "the waypoint to start from, by walk, by id or name",
                 readPlace,
                 optional,
                 {},
                 Naming::start},
                {"--destination",
                 "D",
                 "the destination to look for, by id or name",
                 readPlace,
                 optional,
                 {},
                 Naming::destination},
                {"--amenity",
                 "A",
                 "the amenity to look for, by id or name",
                 readPlace,
                 optional,
                 {},
                 Naming::amenity},
                {"--path-type", "P", "the path type to look for, such as lifts", readWhole,
                 optional, "pathType"},
                {"--accessibility", "N", "by walk take only paths of this level or below (all)",
                 readWhole},
                pictureOption},
    .about = AboutVenue{answerNearest},
    .objection = objectionToPlaces,
    .help = R"(Examples:
  tern generate --out mall
  tern nearest --data mall --map 11 --at 400,300 --amenity 2
  tern nearest --data mall --map 22 --at 400,300 --path-type 2
  tern nearest --data mall --map 12 --at 9,8 --destination 7 --picture way.svg
  tern nearest --data mall --from 22001 --amenity 2 --accessibility 0

From a point it looks on that map first, then floor by floor above and below.
From a waypoint the cheapest to reach is the nearest. Exits with 1 when there
is none.
)"};

}  // namespace tern::command
