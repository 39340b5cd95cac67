#include "tools/tern/Requests.hpp"

#include <algorithm>
#include <array>
#include <optional>
#include <string_view>
#include <vector>

#include "TernCoreKit/model/collections/TernMapCollection.hpp"
#include "TernCoreKit/model/records/TernWaypoint.hpp"
#include "TernCoreKit/model/venue/TernActiveVenue.hpp"
#include "TernCoreKit/platform/Json.hpp"
#include "TernCoreKit/service/coordinates/TernUtils.hpp"
#include "TernCoreKit/wayfinding/TernASGrid.hpp"
#include "tools/tern/Alternatives.hpp"
#include "tools/tern/Failure.hpp"
#include "tools/tern/JoinedVenues.hpp"
#include "tools/tern/Nearest.hpp"
#include "tools/tern/RequestFields.hpp"
#include "tools/tern/RouteAnswer.hpp"
#include "tools/tern/Routing.hpp"
#include "tools/tern/Tour.hpp"
#include "tools/tern/Wording.hpp"

namespace tern::command {

namespace {

// What an operation that was refused returns; its fields hold the reason.
const Value noAnswer;

// An answer of one key. A list in braces would be copied.
Value answerOf(std::string_view key, Value value) {
  Value answer = Value::map();
  answer.set(key, std::move(value));
  return answer;
}

Value waypointAnswer(const std::shared_ptr<TernWaypoint>& waypoint) {
  return answerOf("waypoint", waypoint ? Value(waypoint->id.integer()) : Value(nullptr));
}

Value pointAnswer(TernCoordinate point) {
  return answerOf("point", Value::list({point.x, point.y}));
}

Value done() { return answerOf("ok", true); }

Value route(TernActiveVenue& venue, RequestFields& fields) {
  const std::int64_t from = fields.integer("from");
  const std::int64_t to = fields.integer("to");
  const std::int64_t level = fields.integerOr("accessibility", everyonesLevel);
  if (fields.error()) return noAnswer;
  return answerOf("route", routeAnswer(findRoute(venue, from, to, level)));
}

Value routeToAny(TernActiveVenue& venue, RequestFields& fields) {
  const std::int64_t from = fields.integer("from");
  const std::vector<std::int64_t> to = fields.integers("to");
  const std::int64_t level = fields.integerOr("accessibility", everyonesLevel);
  if (fields.error()) return noAnswer;
  return answerOf("route", routeAnswer(findRouteToAny(venue, from, to, level)));
}

Value alternatives(TernActiveVenue& venue, RequestFields& fields) {
  const std::int64_t from = fields.integer("from");
  const std::int64_t to = fields.integer("to");
  const std::int64_t level = fields.integerOr("accessibility", everyonesLevel);
  const Value options = fields.numbersOrNone("options");
  if (fields.error()) return noAnswer;
  return alternativesAnswer(venue, from, to, level, options);
}

Value closest(TernActiveVenue& venue, RequestFields& fields) {
  const std::int64_t map = fields.integer("map");
  const TernCoordinate at = fields.point("at");
  if (fields.error()) return noAnswer;
  return waypointAnswer(venue.getClosestWaypointToCoordinateOnMap(venue.maps->getById(map), at));
}

Value closestByRoute(TernActiveVenue& venue, RequestFields& fields) {
  const std::vector<std::int64_t> candidates = fields.integers("candidates");
  const std::int64_t to = fields.integer("to");
  const std::int64_t level = fields.integerOr("accessibility", everyonesLevel);
  if (fields.error()) return noAnswer;
  return waypointAnswer(findClosestByRoute(venue, candidates, to, level));
}

Value nearest(TernActiveVenue& venue, RequestFields& fields) {
  const auto search = nearestSearchOf(venue, fields);
  return search ? nearestAnswer(venue, *search) : noAnswer;
}

Value nearestOnMap(TernActiveVenue& venue, RequestFields& fields) {
  const auto search = nearestOnMapSearchOf(venue, fields);
  return search ? nearestOnMapAnswer(venue, *search) : noAnswer;
}

Value convert(TernActiveVenue& venue, RequestFields& fields) {
  const TernCoordinate point = fields.point("point");
  const std::string_view from = fields.text("from");
  const std::string_view to = fields.text("to");
  if (fields.error()) return noAnswer;
  return pointAnswer(TernUtils::convertPoint(point, from, to, &venue));
}

Value center(TernActiveVenue& venue, RequestFields&) {
  return pointAnswer(venue.getCenterCoordinates());
}

Value blockEdge(TernActiveVenue& venue, RequestFields& fields) {
  const std::int64_t from = fields.integer("from");
  const std::int64_t to = fields.integer("to");
  const bool blocked = fields.flag("blocked");
  if (fields.error()) return noAnswer;
  const auto grid = venue.globalASGrid();
  const auto a = grid->getNodeById(from);
  const auto b = grid->getNodeById(to);
  if (a && b) grid->shouldBlockEdgeBetweenNode(*a, *b, blocked);
  return done();
}

template <void (TernASGrid::*block)(const TernASNode&, bool)>
Value blockNode(TernActiveVenue& venue, RequestFields& fields) {
  const std::int64_t id = fields.integer("node");
  const bool blocked = fields.flag("blocked");
  if (fields.error()) return noAnswer;
  const auto grid = venue.globalASGrid();
  if (const auto node = grid->getNodeById(id)) (*grid.*block)(*node, blocked);
  return done();
}

Value neighbors(TernActiveVenue& venue, RequestFields& fields) {
  const std::int64_t id = fields.integer("node");
  if (fields.error()) return noAnswer;
  Value list = Value::list();
  if (const auto node = venue.globalASGrid()->getNodeById(id)) {
    for (const TernNeighbor& neighbor : node->neighbors()) list.append(neighborAnswer(neighbor));
  }
  return answerOf("neighbors", std::move(list));
}

struct Operation {
  std::string_view name;
  Value (*answer)(TernActiveVenue& venue, RequestFields& fields);
};

constexpr std::array operations{
    Operation{"route", route},
    Operation{"routeToAny", routeToAny},
    Operation{"alternatives", alternatives},
    Operation{"tour", tourAnswer},
    Operation{"solve", solveAnswer},
    Operation{"closest", closest},
    Operation{"closestByRoute", closestByRoute},
    Operation{"nearest", nearest},
    Operation{"nearestOnMap", nearestOnMap},
    Operation{"convert", convert},
    Operation{"center", center},
    Operation{"blockEdge", blockEdge},
    Operation{"blockEntry", blockNode<&TernASGrid::shouldBlockEntryToNode>},
    Operation{"blockExit", blockNode<&TernASGrid::shouldBlockExitFromNode>},
    Operation{"neighbors", neighbors},
};

Value unknownOperation(std::string_view name) {
  std::string message = "\"op\" is \"" + shortened(name) + "\", which is not known; there are";
  for (const Operation& operation : operations) {
    message.append(&operation == operations.data() ? " " : ", ").append(operation.name);
  }
  return notUnderstoodAnswer(std::move(message));
}

const Operation* findOperation(std::string_view name) {
  const auto* found = std::ranges::find(operations, name, &Operation::name);
  return found != operations.end() ? found : nullptr;
}

Value joinedRoute(const TernMultiActiveVenues& venues, RequestFields& fields) {
  const std::int64_t from = fields.integer("from");
  const std::int64_t to = fields.integer("to");
  const std::int64_t level = fields.integerOr("accessibility", everyonesLevel);
  if (fields.error()) return noAnswer;
  return answerOf("route", routeAnswer(findRoute(venues, from, to, level)));
}

Value askAmong(const TernMultiActiveVenues& venues, const Operation& operation,
               RequestFields& fields) {
  if (operation.name == "route") return joinedRoute(venues, fields);
  const std::int64_t id = fields.integer("venue");
  if (fields.error()) return noAnswer;
  if (const auto venue = venues.getVenueById(id)) return operation.answer(*venue, fields);
  return notUnderstoodAnswer(std::string(operation.name) + ": \"venue\" is " + std::to_string(id) +
                             ", which is not loaded");
}

Value answerToMap(TernActiveVenue* venue, const TernMultiActiveVenues* venues,
                  const Value& request) {
  RequestFields fields(request);
  const std::string_view name = fields.text("op");
  if (fields.error()) return notUnderstoodAnswer(*fields.error());
  const Operation* operation = findOperation(name);
  if (operation == nullptr) return unknownOperation(name);
  Value answer =
      venues != nullptr ? askAmong(*venues, *operation, fields) : operation->answer(*venue, fields);
  return fields.error() ? notUnderstoodAnswer(std::string(name) + ": " + *fields.error()) : answer;
}

Value behindId(const Value& id, Value answer) {
  Value result = Value::map({{"id", id}});
  for (Value::Entry& entry : answer.entries()) result.set(entry.key.text(), std::move(entry.value));
  return result;
}

}  // namespace

Value Requests::answer(const Value& request) {
  if (!request.isMap()) return notUnderstoodAnswer("a request is a JSON object with an \"op\"");
  Value answer = answerToMap(venue_.get(), venues_.get(), request);
  const Value* id = request.find("id");
  return id != nullptr ? behindId(*id, std::move(answer)) : answer;
}

Value Requests::answerText(std::string request) {
  const JsonResult decoded = decodeJson(std::move(request));
  if (decoded.error) return notUnderstoodAnswer("not JSON: " + *decoded.error);
  return answer(decoded.value);
}

}  // namespace tern::command
