#include "TernCoreKit/answers/TernAnswers.hpp"
#include "tools/tern/AskedAnswers.hpp"
#include "tools/tern/CommandTable.hpp"
#include "tools/tern/JoinedRouteCommand.hpp"
#include "tools/tern/RouteFile.hpp"
#include "tools/tern/RouteText.hpp"
#include "tools/tern/SharedOptions.hpp"
#include "tools/tern/Telling.hpp"
#include "tools/tern/Whereabouts.hpp"

namespace tern::command {

namespace {

// To a place of several waypoints, whichever is cheapest to reach.
Value routeOrAny(Value request) {
  if (request["to"].isList()) request.set("op", "routeToAny");
  return request;
}

Outcome answerRoute(const Arguments& call, const std::shared_ptr<TernActiveVenue>& venue) {
  const Value answer = answerTo(routeOrAny(call.request), TernAnswers(venue));
  const Value& route = answer["route"];
  Telling told{
      .isFound = route.size() > 0,
      .remark = unknownWaypoints(call.request, *venue->globalASGrid(), venueTitle(*venue))};
  if (told.isFound) {
    told.text = routeText(*venue, route);
    told.picture.emplace(pictureOf(*venue, route));
  } else if (told.remark.empty() && isNoWay(call.request)) {
    told.isFound = true;
    told.text =
        placeNameWithId(*venue, call.request["from"].integer()) + ": you are there already\n";
  } else if (told.remark.empty()) {
    told.text = noRouteText(*venue, call.request);
  }
  return outcomeOf(call, answer, told);
}

}  // namespace

const Command routeCommand{.name = "route",
                           .summary = "find a route between two waypoints",
                           .options = {fromOption, toOption, accessibilityOption, pictureOption},
                           .about = AboutVenue{answerRoute, answerJoinedRoute},
                           .help = R"(Examples:
  tern generate --out mall
  tern route --data mall --from 22001 --to 14016
  tern route --data mall --from 22001 --to 14016 --accessibility 0  # step-free
  tern route --data mall --from 22001 --to 14016 --picture route.svg
  tern generate --out two --venues 2
  tern route --data two --venue 1,2 --from 12013 --to 111008

Exits with 1 when there is no route; from a waypoint to itself none is needed.
)"};

}  // namespace tern::command
