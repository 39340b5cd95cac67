#include <string>

#include "TernCoreKit/answers/TernAnswers.hpp"
#include "tools/tern/AnsweredRoute.hpp"
#include "tools/tern/AskedAnswers.hpp"
#include "tools/tern/CommandTable.hpp"
#include "tools/tern/RouteText.hpp"
#include "tools/tern/SharedOptions.hpp"
#include "tools/tern/Telling.hpp"
#include "tools/tern/Whereabouts.hpp"

namespace tern::command {

namespace {

std::string textOf(const TernActiveVenue& venue, const Value& answer) {
  std::string text = routeText(venue, answer["optimal"]);
  if (answer["alternatives"].isNull()) return text + "\nThere is no sensible alternative.\n";
  for (const Value& route : answer["alternatives"].items()) {
    text += "\nAlternative:\n" + routeText(venue, route);
  }
  return text;
}

picture::RoutePicture choicesPicture(const TernActiveVenue& venue, const Value& answer) {
  const Value& optimal = answer["optimal"];
  const std::string from = placeName(venue, startOf(optimal));
  const std::string to = placeName(venue, endOf(optimal));
  picture::RoutePicture drawn{
      venue, std::string(venue.name.text()), picture::RouteSet::choices, {}};
  drawn.routes.push_back({"Best route", from, to, routeOf(venue, optimal)});
  for (const Value& route : answer["alternatives"].items()) {
    drawn.routes.push_back({"Alternative", from, to, routeOf(venue, route)});
  }
  for (picture::PictureRoute& route : drawn.routes) route.labels = venue.mapLabels.get();
  return drawn;
}

// To the one of a place's waypoints that is cheapest to reach, since an alternative has one goal.
Value towardsOne(Value request, const TernAnswers& answers) {
  if (!request["to"].isList()) return request;
  Value toAny = request;
  toAny.set("op", "routeToAny");
  const Value route = answerTo(toAny, answers)["route"];
  request.set("to", route.size() > 0 ? endOf(route) : goalOf(request));
  return request;
}

Outcome answerAlternatives(const Arguments& call, const std::shared_ptr<TernActiveVenue>& venue) {
  const TernAnswers answers(venue);
  const Value answer = answerTo(towardsOne(call.request, answers), answers);
  Telling told{
      .isFound = answer["optimal"].size() > 0,
      .remark = unknownWaypoints(call.request, *venue->globalASGrid(), venueTitle(*venue))};
  if (told.isFound) {
    told.text = textOf(*venue, answer);
    told.picture.emplace(choicesPicture(*venue, answer));
  } else if (told.remark.empty()) {
    told.text = noRouteText(*venue, call.request);
  }
  return outcomeOf(call, answer, told);
}

}  // namespace

const Command alternativesCommand{
    .name = "alternatives",
    .summary = "find a route and an alternative beside it",
    .options = {fromOption,
                toOption,
                accessibilityOption,
                {"--match", "R", "how much of the way it may share, up to 1", readNumber,
                 orElse("0.6"), "options.optimalPathMatchRatio"},
                {"--distance", "R", "how many times as long it may be", readNumber, orElse("2"),
                 "options.optimalPathDistanceRatio"},
                pictureOption},
    .about = AboutVenue{answerAlternatives},
    .help = R"(Examples:
  tern generate --out mall
  tern alternatives --data mall --from 22001 --to 14016
  tern alternatives --data mall --from 22001 --to 14016 --match 0.3
  tern alternatives --data mall --from 22001 --to 14016 --picture routes.html

Exits with 1 when there is no route; a route without an alternative is an
answer.
)"};

}  // namespace tern::command
