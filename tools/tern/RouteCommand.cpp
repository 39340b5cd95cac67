#include "TernCoreKit/answers/TernAnswers.hpp"
#include "tools/tern/RequestCommands.hpp"
#include "tools/tern/RouteFile.hpp"
#include "tools/tern/RouteText.hpp"
#include "tools/tern/Telling.hpp"
#include "tools/tern/Whereabouts.hpp"

namespace tern::command {

Outcome answerRoute(const Arguments& call, const std::shared_ptr<TernActiveVenue>& venue) {
  const Value answer = TernAnswers(venue).answer(call.request);
  const Value& route = answer["route"];
  Telling told{
      .isFound = route.size() > 0,
      .remark = unknownWaypoints(call.request, *venue->globalASGrid(), venueTitle(*venue))};
  if (told.isFound) {
    told.text = routeText(*venue, route);
    told.picture.emplace(pictureOf(*venue, route));
  } else if (told.remark.empty()) {
    told.text = noRouteText(*venue, call.request);
  }
  return outcomeOf(call, answer, told);
}

}  // namespace tern::command
