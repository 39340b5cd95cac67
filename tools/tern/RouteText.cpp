#include "tools/tern/RouteText.hpp"

#include <algorithm>

#include "tools/tern/AnsweredRoute.hpp"
#include "tools/tern/Whereabouts.hpp"

namespace tern::command {

namespace {

std::string visitText(const picture::FloorVisit& visit) {
  const std::string length = visit.length.text();
  std::string text = "  " + visit.name.text();
  text += length.empty() ? "\n" : ": walk " + length + "\n";
  if (visit.departure) text += "  " + visit.departure->text() + "\n";
  return text;
}

}  // namespace

std::int64_t goalOf(const Value& request) {
  const Value& to = request["to"];
  return to.isList() ? to.items().front().integer() : to.integer();
}

bool isNoWay(const Value& request) {
  const Value& to = request["to"];
  return to.isList() ? std::ranges::count(to.items(), request["from"]) > 0 : to == request["from"];
}

std::int64_t levelOf(const Value& request) {
  const Value* level = request.find("accessibility");
  return level != nullptr ? level->integer() : 100;
}

std::string noRouteText(const TernVenueData& venue, const Value& request) {
  return "No route from " + placeNameWithId(venue, request["from"].integer()) + " to " +
         placeNameWithId(venue, goalOf(request)) + "\n";
}

std::string stagesText(const picture::Itinerary& itinerary) {
  std::string text;
  for (const picture::FloorVisit& visit : itinerary.visits) text += visitText(visit);
  return text;
}

std::string routeText(const TernVenueData& venue, const Value& segments) {
  const picture::Itinerary itinerary = picture::itineraryOf(venue, routeOf(venue, segments));
  const std::string length = itinerary.length.text();
  return "From " + placeNameWithId(venue, startOf(segments)) + "\n" + stagesText(itinerary) +
         "To " + placeNameWithId(venue, endOf(segments)) + "\n" +
         (length.empty() ? "" : length + " in all\n");
}

}  // namespace tern::command
