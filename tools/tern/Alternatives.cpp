#include "tools/tern/Alternatives.hpp"

#include <optional>
#include <string>
#include <utility>

#include "TernCoreKit/model/records/TernWaypoint.hpp"
#include "TernCoreKit/model/venue/TernActiveVenue.hpp"
#include "TernCoreKit/wayfinding/TernASGrid.hpp"
#include "tools/tern/Requests.hpp"
#include "tools/tern/RouteAnswer.hpp"
#include "tools/tern/RouteFile.hpp"
#include "tools/tern/RouteText.hpp"
#include "tools/tern/Routing.hpp"
#include "tools/tern/Whereabouts.hpp"

namespace tern::command {

namespace {

struct Choices {
  std::optional<TernRoute> optimal;
  std::optional<TernASAlternativePath::Routes> alternatives;
};

Choices findChoices(TernActiveVenue& venue, std::int64_t from, std::int64_t to, std::int64_t level,
                    const Value& options) {
  const auto grid = venue.globalASGrid();
  Choices found;
  venue.wayfind(grid->getWPById(from), grid->getWPById(to), options, level,
                [&](const auto& optimal, const auto& alternatives) {
                  found = {optimal, alternatives};
                });
  return found;
}

Value answerOf(const Choices& found) {
  Value answer = Value::map();
  answer.set("optimal", found.optimal ? routeAnswer(*found.optimal) : Value(nullptr));
  Value alternatives(nullptr);
  if (found.alternatives) {
    alternatives = Value::list();
    for (const TernRoute& route : *found.alternatives) alternatives.append(routeAnswer(route));
  }
  answer.set("alternatives", std::move(alternatives));
  return answer;
}

std::string textOf(const TernActiveVenue& venue, const Choices& found) {
  std::string text = routeText(venue, *found.optimal);
  if (!found.alternatives) return text + "\nThere is no sensible alternative.\n";
  for (const TernRoute& route : *found.alternatives) {
    text += "\nAlternative:\n" + routeText(venue, route);
  }
  return text;
}

picture::RoutePicture pictureOf(const TernActiveVenue& venue, const Choices& found) {
  const TernRoute& optimal = *found.optimal;
  const std::string from = placeName(venue, optimal.front().points.front().nodeId());
  const std::string to = placeName(venue, optimal.back().points.back().nodeId());
  picture::RoutePicture drawn{
      venue, std::string(venue.name.text()), picture::RouteSet::choices, {}};
  drawn.routes.push_back({"Best route", from, to, optimal});
  if (!found.alternatives) return drawn;
  for (const TernRoute& route : *found.alternatives) {
    drawn.routes.push_back({"Alternative", from, to, route});
  }
  return drawn;
}

}  // namespace

Value alternativesAnswer(TernActiveVenue& venue, std::int64_t from, std::int64_t to,
                         std::int64_t level, const Value& options) {
  return answerOf(findChoices(venue, from, to, level, options));
}

Outcome answerAlternatives(const Arguments& call, const std::shared_ptr<TernActiveVenue>& venue) {
  const std::int64_t from = call.request["from"].integer();
  const std::int64_t to = call.request["to"].integer();
  const Value& level = call.request["accessibility"];
  const Choices found =
      findChoices(*venue, from, to, level.isAbsent() ? everyonesLevel : level.integer(),
                  call.request["options"]);
  if (found.optimal && !call.picture.empty()) {
    if (auto failure = writePicture(call.picture, pictureOf(*venue, found))) {
      return *std::move(failure);
    }
  }
  Answer answer{.text = {},
                .remark = unknownWaypoints(*venue->globalASGrid(), from, to, venueTitle(*venue))};
  if (!found.optimal) answer.status = ExitStatus::nothingFound;
  if (call.json) {
    answer.text = jsonLine(answerOf(found));
  } else if (found.optimal) {
    answer.text = textOf(*venue, found);
  } else if (answer.remark.empty()) {
    answer.text = noRouteText(*venue, from, to);
  }
  return answer;
}

}  // namespace tern::command
