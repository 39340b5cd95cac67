#include <string>

#include "TernCoreKit/answers/TernAnswers.hpp"
#include "tools/tern/AnsweredRoute.hpp"
#include "tools/tern/RequestCommands.hpp"
#include "tools/tern/RouteText.hpp"
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

picture::RoutePicture pictureOf(const TernActiveVenue& venue, const Value& answer) {
  const Value& optimal = answer["optimal"];
  const std::string from = placeName(venue, startOf(optimal));
  const std::string to = placeName(venue, endOf(optimal));
  picture::RoutePicture drawn{
      venue, std::string(venue.name.text()), picture::RouteSet::choices, {}};
  drawn.routes.push_back({"Best route", from, to, routeOf(venue, optimal)});
  for (const Value& route : answer["alternatives"].items()) {
    drawn.routes.push_back({"Alternative", from, to, routeOf(venue, route)});
  }
  return drawn;
}

}  // namespace

Outcome answerAlternatives(const Arguments& call, const std::shared_ptr<TernActiveVenue>& venue) {
  const Value answer = TernAnswers(venue).answer(call.request);
  Telling told{
      .isFound = answer["optimal"].size() > 0,
      .remark = unknownWaypoints(call.request, *venue->globalASGrid(), venueTitle(*venue))};
  if (told.isFound) {
    told.text = textOf(*venue, answer);
    told.picture.emplace(pictureOf(*venue, answer));
  } else if (told.remark.empty()) {
    told.text = noRouteText(*venue, call.request);
  }
  return outcomeOf(call, answer, told);
}

}  // namespace tern::command
