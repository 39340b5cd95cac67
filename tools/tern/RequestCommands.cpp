#include "tools/tern/RequestCommands.hpp"

#include <cmath>
#include <cstdint>
#include <optional>
#include <string>
#include <utility>

#include "TernCoreKit/model/collections/TernBuildingCollection.hpp"
#include "TernCoreKit/model/collections/TernMapCollection.hpp"
#include "TernCoreKit/model/collections/TernWaypointCollection.hpp"
#include "TernCoreKit/model/records/TernFloor.hpp"
#include "TernCoreKit/wayfinding/TernASGrid.hpp"
#include "tools/tern/Alternatives.hpp"
#include "tools/tern/AnswerLog.hpp"
#include "tools/tern/NearestCommand.hpp"
#include "tools/tern/Requests.hpp"
#include "tools/tern/RouteFile.hpp"
#include "tools/tern/RouteText.hpp"
#include "tools/tern/Routing.hpp"
#include "tools/tern/Tour.hpp"
#include "tools/tern/Whereabouts.hpp"
#include "tools/tern/Wording.hpp"
#include "tools/tern/picture/RoutePicture.hpp"

namespace tern::command {

namespace {

Outcome answerRoute(const Arguments& call, const std::shared_ptr<TernActiveVenue>& venue) {
  const std::int64_t from = call.request["from"].integer();
  const std::int64_t to = call.request["to"].integer();
  const Value& level = call.request["accessibility"];
  const TernRoute route =
      findRoute(*venue, from, to, level.isAbsent() ? everyonesLevel : level.integer());
  if (!route.empty() && !call.picture.empty()) {
    if (auto failure = drawPicture(call.picture, *venue, route)) return *std::move(failure);
  }
  Answer answer{.text = {},
                .remark = unknownWaypoints(*venue->globalASGrid(), from, to, venueTitle(*venue))};
  if (route.empty()) answer.status = ExitStatus::nothingFound;
  if (call.json) {
    answer.text = jsonLine(Requests(venue).answer(call.request));
  } else if (!route.empty()) {
    answer.text = routeText(*venue, route);
  } else if (answer.remark.empty()) {
    answer.text = noRouteText(*venue, from, to);
  }
  return answer;
}

Outcome answerClosest(const Arguments& call, const std::shared_ptr<TernActiveVenue>& venue) {
  const Value found = Requests(venue).answer(call.request);
  const std::int64_t id = found["waypoint"].integer();
  const auto map = venue->maps->getById(call.request["map"].integer());
  Answer answer;
  if (call.json) answer.text = jsonLine(found);
  if (found["waypoint"].isNull()) answer.status = ExitStatus::nothingFound;
  if (map == nullptr) {
    answer.remark =
        "there is no map " + call.request["map"].printed() + " in " + venueTitle(*venue);
  } else if (!call.json && found["waypoint"].isNull()) {
    answer.text = "No waypoint lies on " + floorName(*venue, map) + "\n";
  } else if (!call.json) {
    const auto at = call.request["at"].items();
    const double distance =
        straightDistance(*map->waypoints->findById(id), {at[0].number(), at[1].number()});
    answer.text = placeNameWithId(*venue, id) + " on " + floorName(*venue, map) + ", " +
                  lengthText(*map, distance) + " away\n";
  }
  return answer;
}

Outcome answerConvert(const Arguments& call, const std::shared_ptr<TernActiveVenue>& venue) {
  const AnswerLog log;
  const Value converted = Requests(venue).answer(call.request);
  const auto point = converted["point"].items();
  Answer answer{.text = {}, .remark = log.text()};
  // What cannot be converted is (0, 0) and a line in the log.
  if (!answer.remark.empty()) answer.status = ExitStatus::nothingFound;
  if (call.json) {
    answer.text = jsonLine(converted);
  } else if (answer.remark.empty()) {
    answer.text = numberText(point[0].number()) + "," + numberText(point[1].number()) + "\n";
  }
  return answer;
}

}  // namespace

Outcome answerCall(const Arguments& call, const std::shared_ptr<TernActiveVenue>& venue) {
  if (call.command == "route") return answerRoute(call, venue);
  if (call.command == "alternatives") return answerAlternatives(call, venue);
  if (call.command == "tour") return answerTour(call, *venue);
  if (call.command == "nearest") return answerNearest(call, *venue);
  if (call.command == "closest") return answerClosest(call, venue);
  return answerConvert(call, venue);
}

}  // namespace tern::command
