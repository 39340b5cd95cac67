#include "tools/tern/Tour.hpp"

#include <algorithm>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "TernCoreKit/model/collections/TernDestinationCollection.hpp"
#include "TernCoreKit/model/records/TernWaypoint.hpp"
#include "TernCoreKit/optimisation/TernPOIOptimization.hpp"
#include "TernCoreKit/optimisation/TernTSP.hpp"
#include "TernCoreKit/wayfinding/TernASGrid.hpp"
#include "tools/tern/Requests.hpp"
#include "tools/tern/RouteAnswer.hpp"
#include "tools/tern/RouteFile.hpp"
#include "tools/tern/RouteText.hpp"
#include "tools/tern/Routing.hpp"
#include "tools/tern/Whereabouts.hpp"
#include "tools/tern/picture/Itinerary.hpp"

namespace tern::command {

namespace {

using Destinations = TernPOIOptimization::Destinations;

struct TourSearch {
  std::int64_t from;
  std::vector<std::int64_t> destinations;
  std::int64_t level;
};

struct Tour {
  Destinations wanted;  // without those that the venue does not have
  TernPOIOptimization::Legs legs;
  Destinations order;
  // The start and, for each leg, the waypoint that it leads to.
  TernPOIOptimization::Waypoints stops;
};

TourSearch tourSearchOf(RequestFields& fields) {
  return {fields.integer("from"), fields.integers("destinations"),
          fields.integerOr("accessibility", everyonesLevel)};
}

std::shared_ptr<TernDestination> destinationOf(const TernActiveVenue& venue, std::int64_t id) {
  return venue.destinations ? venue.destinations->getById(id) : nullptr;
}

Tour findTour(const TernActiveVenue& venue, const TourSearch& search) {
  Tour tour;
  for (const std::int64_t id : search.destinations) {
    if (auto known = destinationOf(venue, id)) tour.wanted.push_back(std::move(known));
  }
  // The venue outlives the call, and need not be held by a shared_ptr.
  const std::shared_ptr<const TernRouting> routing(&venue, [](const TernRouting*) {});
  const auto nearest = venue.nearestElement();
  const auto ordering = TernPOIOptimization::initWithActiveVenue(routing, nearest);
  ordering->wayfindToMultipleDestinations(tour.wanted, venue.globalASGrid()->getWPById(search.from),
                                          search.level, [&tour](auto legs, auto order) {
                                            tour.legs = std::move(legs);
                                            tour.order = std::move(order);
                                          });
  tour.stops = ordering->finalOrderOfWaypoints();
  return tour;
}

Value answerOf(const Tour& tour) {
  Value legs = Value::list();
  for (const TernRoute& leg : tour.legs) legs.append(routeAnswer(leg));
  Value destinations = Value::list();
  for (const auto& destination : tour.order) destinations.append(destination->id.integer());
  Value answer = Value::map();
  answer.set("legs", std::move(legs));
  answer.set("destinations", std::move(destinations));
  return answer;
}

std::string nameWithId(const TernDestination& destination) {
  const std::string id = "destination " + std::to_string(destination.id.integer());
  const std::string name(destination.name.text());
  return name.empty() ? id : name + " (" + id + ")";
}

// What the venue does not have of what the call names.
std::string unknownParts(const TernActiveVenue& venue, const TourSearch& search) {
  const std::string place = venueTitle(venue);
  std::string text = unknownWaypoints(*venue.globalASGrid(), search.from, search.from, place);
  std::string names;
  for (const std::int64_t id : search.destinations) {
    const std::string name = "destination " + std::to_string(id);
    const bool isNamed = (names + " ").find(name + " ") != std::string::npos;
    if (destinationOf(venue, id) != nullptr || isNamed) continue;
    names += names.empty() ? name : " and no " + name;
  }
  if (names.empty()) return text;
  return text + (text.empty() ? "" : "; ") + "there is no " + names + " in " + place;
}

std::string unvisitedText(const Tour& tour) {
  std::string text;
  for (std::size_t i = 0; i < tour.wanted.size(); ++i) {
    const auto& destination = tour.wanted[i];
    const auto before = tour.wanted.begin() + static_cast<std::ptrdiff_t>(i);
    const bool isRepeated = std::find(tour.wanted.begin(), before, destination) != before;
    if (isRepeated || std::ranges::count(tour.order, destination) > 0) continue;
    text += "Left out: " + nameWithId(*destination) + "; no way to it was found\n";
  }
  return text;
}

// The way to one stop.
struct Stage {
  std::int64_t from;
  std::int64_t to;
  const TernRoute& route;
};

// Without those that lead to where the tour has been before: where a stop cannot be reached, the
// one before it is listed again.
std::vector<Stage> stagesOf(const Tour& tour) {
  std::vector<Stage> stages;
  for (std::size_t i = 0; i < tour.legs.size(); ++i) {
    const auto been = tour.stops.begin() + static_cast<std::ptrdiff_t>(i) + 1;
    if (std::find(tour.stops.begin(), been, *been) != been) continue;
    stages.push_back({tour.stops[i]->id.integer(), (*been)->id.integer(), tour.legs[i]});
  }
  return stages;
}

//   From Juniper Bakery (waypoint 12)
//     Ground floor: walk 62 m
//     Lift up to First floor
//   1. Shoe World (waypoint 40)
//   ...
//   143 m in all
//   Left out: Toy Land (destination 5); no way to it was found
std::string textOf(const TernActiveVenue& venue, const Tour& tour) {
  std::string text = "From " + placeNameWithId(venue, tour.stops.front()->id.integer()) + "\n";
  picture::WalkLength length{0, 0.0};
  int number = 0;
  for (const auto& [from, to, route] : stagesOf(tour)) {
    const picture::Itinerary itinerary = picture::itineraryOf(venue, route);
    text += route.empty() ? "  no route\n" : stagesText(itinerary);
    text += std::to_string(++number) + ". " + placeNameWithId(venue, to) + "\n";
    length = length + itinerary.length;
  }
  const std::string total = length.text();
  if (!total.empty()) text += total + " in all\n";
  return text + unvisitedText(tour);
}

picture::RoutePicture pictureOf(const TernActiveVenue& venue, const Tour& tour) {
  picture::RoutePicture drawn{venue, std::string(venue.name.text()), picture::RouteSet::legs, {}};
  for (const auto& [from, to, route] : stagesOf(tour)) {
    const std::string goal = placeName(venue, to);
    const std::string title = std::to_string(drawn.routes.size() + 1) + ". " + goal;
    drawn.routes.push_back({title, placeName(venue, from), goal, route});
  }
  return drawn;
}

}  // namespace

Value tourAnswer(TernActiveVenue& venue, RequestFields& fields) {
  const TourSearch search = tourSearchOf(fields);
  return fields.error() ? Value() : answerOf(findTour(venue, search));
}

Value solveAnswer(TernActiveVenue&, RequestFields& fields) {
  const TernTSP::Matrix matrix = fields.matrix("matrix", TernTSP::mostPlaces);
  if (fields.error()) return {};
  const auto [tour, cost] = TernTSP::solve(matrix);
  Value places = Value::list();
  for (const std::size_t place : tour) places.append(static_cast<std::int64_t>(place));
  Value answer = Value::map();
  answer.set("tour", std::move(places));
  answer.set("cost", cost);
  return answer;
}

Outcome answerTour(const Arguments& call, const TernActiveVenue& venue) {
  RequestFields fields(call.request);
  const TourSearch search = tourSearchOf(fields);
  const Tour tour = findTour(venue, search);
  if (!tour.legs.empty() && !call.picture.empty()) {
    if (auto failure = writePicture(call.picture, pictureOf(venue, tour))) {
      return *std::move(failure);
    }
  }
  Answer answer{.text = {}, .remark = unknownParts(venue, search)};
  if (tour.order.empty()) answer.status = ExitStatus::nothingFound;
  if (call.json) {
    answer.text = jsonLine(answerOf(tour));
  } else if (!tour.order.empty()) {
    answer.text = textOf(venue, tour);
  } else if (!tour.stops.empty()) {
    answer.text = unvisitedText(tour);
  }
  return answer;
}

}  // namespace tern::command
