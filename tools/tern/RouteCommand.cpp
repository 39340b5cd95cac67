#include "TernCoreKit/answers/TernAnswers.hpp"
#include "TernCoreKit/wayfinding/TernASGrid.hpp"
#include "tools/tern/AnsweredRoute.hpp"
#include "tools/tern/AskedAnswers.hpp"
#include "tools/tern/CommandTable.hpp"
#include "tools/tern/JoinedRouteCommand.hpp"
#include "tools/tern/RouteFile.hpp"
#include "tools/tern/RouteText.hpp"
#include "tools/tern/SharedOptions.hpp"
#include "tools/tern/StepText.hpp"
#include "tools/tern/Telling.hpp"
#include "tools/tern/Whereabouts.hpp"

namespace tern::command {

namespace {

// To a place of several waypoints, whichever is cheapest to reach.
Value routeOrAny(Value request) {
  if (request["to"].isList()) request.set("op", "routeToAny");
  return request;
}

// Of the same route again, since an answer does not have its nodes.
std::vector<TernStep> stepsOfAnswer(const TernActiveVenue& venue, const Value& route,
                                    const Value& request) {
  const auto grid = venue.globalASGrid();
  const TernRoute found = venue.wayfind(grid->getWPById(startOf(route)),
                                        grid->getWPById(endOf(route)), levelOf(request));
  const std::shared_ptr<const TernVenueData> shared(std::shared_ptr<void>(), &venue);
  return stepsOf(TernGuidance({shared}, grid), found, request["language"].text());
}

// With --steps the answer to "directions".
Value shownAnswer(const Arguments& call, const Value& answer, const TernAnswers& answers) {
  if (!call.json || !call.request["steps"].flag()) return answer;
  Value request = call.request;
  request.set("op", "directions");
  const Value& route = answer["route"];
  request.set("to", route.size() > 0 ? endOf(route) : goalOf(request));
  return answerTo(request, answers);
}

Outcome answerRoute(const Arguments& call, const std::shared_ptr<TernActiveVenue>& venue) {
  const TernAnswers answers(venue);
  const Value answer = answerTo(routeOrAny(call.request), answers);
  const Value& route = answer["route"];
  Telling told{
      .isFound = route.size() > 0,
      .remark = unknownWaypoints(call.request, *venue->globalASGrid(), venueTitle(*venue))};
  if (told.isFound) {
    const std::vector<TernStep> steps = stepsOfAnswer(*venue, route, call.request);
    told.text =
        "From " + placeNameWithId(*venue, startOf(route)) + "\nTo " +
        placeNameWithId(*venue, endOf(route)) + "\n\n" +
        stepsText(
            steps, [&](std::int64_t mapId) { return words::floorName(*venue, mapId).text(); },
            call.request["language"].text());
    picture::RoutePicture drawn = pictureOf(*venue, route);
    drawn.routes.front().landmarks = landmarksOf(steps);
    told.picture.emplace(std::move(drawn));
  } else if (told.remark.empty() && isNoWay(call.request)) {
    told.isFound = true;
    told.text =
        placeNameWithId(*venue, call.request["from"].integer()) + ": you are there already\n";
  } else if (told.remark.empty()) {
    told.text = noRouteText(*venue, call.request);
  }
  return outcomeOf(call, shownAnswer(call, answer, answers), told);
}

}  // namespace

const Command routeCommand{.name = "route",
                           .summary = "find a route between two waypoints",
                           .options = {fromOption,
                                       toOption,
                                       accessibilityOption,
                                       languageOption,
                                       {"--steps", "", "with --json: the steps too"},
                                       pictureOption},
                           .about = AboutVenue{answerRoute, answerJoinedRoute},
                           .help = R"(Examples:
  tern generate --out mall
  tern route --data mall --from 22001 --to 14016
  tern route --data mall --from 22001 --to 14016 --accessibility 0
  tern route --data mall --from 22001 --to 14016 --picture route.svg
  tern route --data mall --from 22001 --to 14016 --picture route.geojson
  tern generate --out two --venues 2
  tern route --data two --venue 1,2 --from 12013 --to 111008

Accessibility 0 takes only what a wheelchair can, 100 takes everything. Exits
with 1 when there is no route; from a waypoint to itself none is needed.

A picture in GeoJSON holds longitudes and latitudes, each feature with its
floor, for a map of the world.
)"};

}  // namespace tern::command
