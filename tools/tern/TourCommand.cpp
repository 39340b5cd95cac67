#include <algorithm>
#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "TernCoreKit/answers/TernAnswers.hpp"
#include "TernCoreKit/model/collections/TernDestinationCollection.hpp"
#include "TernCoreKit/model/collections/TernPathTypeCollection.hpp"
#include "TernCoreKit/model/records/TernWaypoint.hpp"
#include "TernCoreKit/wayfinding/TernASGrid.hpp"
#include "TernCoreKit/wayfinding/TernASSearch.hpp"
#include "tools/tern/AnsweredRoute.hpp"
#include "tools/tern/AskedAnswers.hpp"
#include "tools/tern/CommandTable.hpp"
#include "tools/tern/RouteText.hpp"
#include "tools/tern/SharedOptions.hpp"
#include "tools/tern/Telling.hpp"
#include "tools/tern/Whereabouts.hpp"
#include "tools/tern/picture/Itinerary.hpp"

namespace tern::command {

namespace {

std::shared_ptr<TernDestination> destinationOf(const TernActiveVenue& venue, const Value& id) {
  return venue.destinations ? venue.destinations->getById(id.integer()) : nullptr;
}

// Each once, in the order of the request.
std::vector<Value> differentOnes(const Value& ids) {
  std::vector<Value> different;
  for (const Value& id : ids.items()) {
    if (std::ranges::count(different, id) == 0) different.push_back(id);
  }
  return different;
}

// What the venue does not have of what the call names.
std::string unknownParts(const TernActiveVenue& venue, const Value& request) {
  const std::string place = venueTitle(venue);
  std::string text = unknownWaypoints(request, *venue.globalASGrid(), place);
  std::string names;
  for (const Value& id : differentOnes(request["destinations"])) {
    if (destinationOf(venue, id) != nullptr) continue;
    names += (names.empty() ? "destination " : " and no destination ") + id.printed();
  }
  if (names.empty()) return text;
  return text + (text.empty() ? "" : "; ") + "there is no " + names + " in " + place;
}

// The ways that there are: a leg without a route is empty.
std::vector<const Value*> waysOf(const Value& answer) {
  std::vector<const Value*> ways;
  for (const Value& leg : answer["legs"].items()) {
    if (leg.size() > 0) ways.push_back(&leg);
  }
  return ways;
}

// The least of the venue's levels above the given one at which a route leads on to the destination.
std::optional<std::int64_t> levelThatReaches(const TernActiveVenue& venue, std::int64_t from,
                                             const TernDestination& destination,
                                             std::int64_t above) {
  if (!venue.pathTypes) return std::nullopt;
  std::set<std::int64_t> levels;
  for (const TernPathType& type : venue.pathTypes->each()) {
    levels.insert(type.accessibility.integer());
  }
  TernASSearch search;
  search.grid = venue.globalASGrid();
  for (auto level = levels.upper_bound(above); level != levels.end(); ++level) {
    if (search.routeToOneOf(from, destination.waypoints, *level)) return *level;
  }
  return std::nullopt;
}

// "Coral Books (destination 7; no way to it at accessibility 0; 60 reaches it)"
std::string leftOut(const TernActiveVenue& venue, std::int64_t from,
                    const TernDestination& destination, std::int64_t level) {
  const std::string id = "destination " + destination.id.printed();
  const std::string name(destination.name.text());
  const auto other = levelThatReaches(venue, from, destination, level);
  return (name.empty() ? id + " (" : name + " (" + id + "; ") + "no way to it at accessibility " +
         std::to_string(level) + (other ? "; " + std::to_string(*other) + " reaches it" : "") + ")";
}

// A destination is visited when one of its waypoints is the start or ends a way.
std::string leftOutText(const TernActiveVenue& venue, const Value& request,
                        const std::vector<const Value*>& ways) {
  std::vector<std::int64_t> visited{request["from"].integer()};
  for (const Value* way : ways) visited.push_back(endOf(*way));
  std::string text;
  for (const Value& id : differentOnes(request["destinations"])) {
    const auto destination = destinationOf(venue, id);
    const bool isVisited =
        destination == nullptr || std::ranges::any_of(destination->waypoints, [&](const auto& at) {
          return std::ranges::count(visited, at->id.integer()) > 0;
        });
    if (isVisited) continue;
    text += "Left out: " +
            leftOut(venue, visited.back(), *destination, request["accessibility"].integer()) + "\n";
  }
  return text;
}

//   From Juniper Bakery (waypoint 12)
//     Ground floor: walk 62 m
//     Lift up to First floor
//   1. Shoe World (waypoint 40)
//   ...
//   143 m in all
//   Left out: Toy Land (destination 5; no way to it at accessibility 0; 60 reaches it)
std::string textOf(const TernActiveVenue& venue, const Value& request,
                   const std::vector<const Value*>& ways) {
  std::int64_t here = request["from"].integer();
  std::string text = "From " + placeNameWithId(venue, here) + "\n";
  picture::WalkLength length{0, 0.0};
  int number = 0;
  for (const Value* way : ways) {
    if (startOf(*way) != here) text += "From " + placeNameWithId(venue, startOf(*way)) + "\n";
    here = endOf(*way);
    const picture::Itinerary itinerary = picture::itineraryOf(venue, routeOf(venue, *way));
    text += stagesText(itinerary);
    text += std::to_string(++number) + ". " + placeNameWithId(venue, here) + "\n";
    length = length + itinerary.length;
  }
  const std::string total = length.text();
  return total.empty() ? text : text + total + " in all\n";
}

picture::RoutePicture tourPicture(const TernActiveVenue& venue,
                                  const std::vector<const Value*>& ways) {
  picture::RoutePicture drawn{venue, std::string(venue.name.text()), picture::RouteSet::legs, {}};
  for (const Value* way : ways) {
    const std::string goal = placeName(venue, endOf(*way));
    const std::string title = std::to_string(drawn.routes.size() + 1) + ". " + goal;
    drawn.routes.push_back({title, placeName(venue, startOf(*way)), goal, routeOf(venue, *way)});
    drawn.routes.back().labels = venue.mapLabels.get();
  }
  return drawn;
}

Outcome answerTour(const Arguments& call, const std::shared_ptr<TernActiveVenue>& venue) {
  const Value answer = answerTo(call.request, TernAnswers(venue));
  const std::vector<const Value*> ways = waysOf(answer);
  Telling told{.isFound = answer["destinations"].size() > 0,
               .remark = unknownParts(*venue, call.request)};
  const bool isStartKnown =
      venue->globalASGrid()->getWPById(call.request["from"].integer()) != nullptr;
  if (told.isFound) told.text = textOf(*venue, call.request, ways);
  if (isStartKnown) told.text += leftOutText(*venue, call.request, ways);
  if (!ways.empty()) told.picture.emplace(tourPicture(*venue, ways));
  return outcomeOf(call, answer, told);
}

}  // namespace

const Command tourCommand{
    .name = "tour",
    .summary = "find the best order to visit destinations, and the way",
    .options = {fromOption,
                {"--visit", "D,...", "the destinations to visit, in any order", readPlaces,
                 required, "destinations", Naming::destination},
                accessibilityOption,
                pictureOption},
    .about = AboutVenue{answerTour},
    .help = R"(Examples:
  tern generate --out mall
  tern tour --data mall --from 12002 --visit 7,9,30
  tern tour --data mall --from 12002 --visit 7,9,30 --picture tour.html

Stops of one floor are visited in the shortest order that there is, up to 21 of
them; more in the order of going to the nearest next. What no route reaches at
that accessibility is left out, and named with the level that would reach it.
Exits with 1 when nothing is reached.
)"};

}  // namespace tern::command
