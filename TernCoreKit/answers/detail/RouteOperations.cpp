// Routes: one, the cheapest to several goals, one with an alternative, and the candidate with the
// shortest way. An id that the venue does not have is passed over in a list; elsewhere there is
// nothing to be found.
#include <optional>
#include <utility>
#include <vector>

#include "TernCoreKit/answers/detail/AnswerParts.hpp"
#include "TernCoreKit/answers/detail/Operations.hpp"
#include "TernCoreKit/model/collections/TernMapCollection.hpp"
#include "TernCoreKit/model/venue/TernActiveVenue.hpp"
#include "TernCoreKit/wayfinding/TernASGrid.hpp"
#include "TernCoreKit/wayfinding/TernASSearch.hpp"
#include "TernCoreKit/wayfinding/joined/TernMultiActiveVenues.hpp"

namespace tern::inline v5::detail {

namespace {

TernActiveVenue::Waypoints knownWaypoints(const TernASGrid& grid,
                                          const std::vector<std::int64_t>& ids) {
  TernActiveVenue::Waypoints waypoints;
  for (const std::int64_t id : ids) {
    if (auto waypoint = grid.getWPById(id)) waypoints.push_back(std::move(waypoint));
  }
  return waypoints;
}

// Of one venue or of several.
template <class Venues>
Value routeIn(const Venues& venues, RequestFields& fields) {
  const std::int64_t from = fields.integer("from");
  const std::int64_t to = fields.integer("to");
  const std::int64_t level = fields.level();
  if (fields.error()) return {};
  const auto grid = venues.globalASGrid();
  const auto start = grid->getWPById(from);
  const auto end = grid->getWPById(to);
  return answerOf("route",
                  routePart(start && end ? venues.wayfind(start, end, level) : TernRoute()));
}

Value routesPart(const std::optional<TernASAlternativePath::Routes>& routes) {
  if (!routes) return nullptr;
  Value part = Value::list();
  for (const TernRoute& route : *routes) part.append(routePart(route));
  return part;
}

}  // namespace

Value answerRoute(TernActiveVenue& venue, RequestFields& fields) { return routeIn(venue, fields); }

Value answerJoinedRoute(const TernMultiActiveVenues& venues, RequestFields& fields) {
  return routeIn(venues, fields);
}

Value answerRouteToAny(TernActiveVenue& venue, RequestFields& fields) {
  const std::int64_t from = fields.integer("from");
  const std::vector<std::int64_t> to = fields.integers("to");
  const std::int64_t level = fields.level();
  if (fields.error()) return {};
  TernASSearch search;
  search.grid = venue.globalASGrid();
  search.maps = venue.maps;
  const auto route = search.searchInArray(from, knownWaypoints(*search.grid, to), level);
  return answerOf("route", routePart(route.value_or(TernRoute())));
}

Value answerAlternatives(TernActiveVenue& venue, RequestFields& fields) {
  const std::int64_t from = fields.integer("from");
  const std::int64_t to = fields.integer("to");
  const std::int64_t level = fields.level();
  const Value options = fields.numbersOrNone("options");
  if (fields.error()) return {};
  const auto grid = venue.globalASGrid();
  Value answer = Value::map();
  venue.wayfind(grid->getWPById(from), grid->getWPById(to), options, level,
                [&](const auto& optimal, const auto& alternatives) {
                  answer.set("optimal", optimal ? routePart(*optimal) : Value(nullptr));
                  answer.set("alternatives", routesPart(alternatives));
                });
  return answer;
}

Value answerClosestByRoute(TernActiveVenue& venue, RequestFields& fields) {
  const std::vector<std::int64_t> candidates = fields.integers("candidates");
  const std::int64_t to = fields.integer("to");
  const std::int64_t level = fields.level();
  if (fields.error()) return {};
  const auto grid = venue.globalASGrid();
  const auto goal = grid->getWPById(to);
  if (goal == nullptr) return answerOf("waypoint", nullptr);
  const auto known = knownWaypoints(*grid, candidates);
  return answerOf("waypoint", waypointPart(venue.getClosestWaypointInArray(known, goal, level)));
}

}  // namespace tern::detail
