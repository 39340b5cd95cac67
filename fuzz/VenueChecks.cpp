#include "fuzz/VenueChecks.hpp"

#include <algorithm>
#include <cmath>
#include <deque>
#include <optional>
#include <string>
#include <unordered_set>
#include <utility>

#include "TernCoreKit/model/collections/TernAmenityCollection.hpp"
#include "TernCoreKit/model/collections/TernDestinationCollection.hpp"
#include "TernCoreKit/model/collections/TernMapCollection.hpp"
#include "TernCoreKit/model/collections/TernPathTypeCollection.hpp"
#include "TernCoreKit/model/records/TernWaypoint.hpp"
#include "TernCoreKit/model/venue/VenueAssembly.hpp"
#include "TernCoreKit/spatial/TernNearestElement.hpp"
#include "fuzz/Target.hpp"

namespace tern::fuzz {

namespace {

using Waypoints = TernASGrid::Waypoints;

// Checks grow with the square of it.
constexpr std::size_t fewWaypoints = 6;
constexpr std::size_t fewPlaces = 4;

bool same(float a, float b) { return a == b || (std::isnan(a) && std::isnan(b)); }

std::vector<TernASNode> pointsOf(const TernRoute& route) {
  std::vector<TernASNode> points;
  for (const TernPathPerFloor& segment : route) {
    points.insert(points.end(), segment.points.begin(), segment.points.end());
  }
  return points;
}

std::vector<std::int64_t> idsOf(const TernRoute& route) {
  std::vector<std::int64_t> ids;
  for (const TernASNode& node : pointsOf(route)) ids.push_back(node.nodeId());
  return ids;
}

void checkSegments(const TernRoute& route) {
  for (std::size_t i = 0; i < route.size(); ++i) {
    const TernPathPerFloor& segment = route[i];
    require(!segment.points.empty(), "a segment has points");
    require(segment.points.size() == segment.mapPoints.size(), "each with its place on the map");
    require(i == 0 || route[i - 1].mapId != segment.mapId, "segments change maps");
    for (const TernASNode& node : segment.points) {
      require(node.mapId() == segment.mapId, "a segment lies on one map");
    }
  }
}

template <class Collection>
auto firstFew(const Nested<Collection>& collection) {
  using Records = decltype(collection->getAll());
  Records records = collection ? collection->getAll() : Records();
  records.resize(std::min(records.size(), fewPlaces));
  return records;
}

// Some from the front and some from the end.
Waypoints fewOf(const Waypoints& all) {
  Waypoints few(all.begin(),
                all.begin() + static_cast<std::ptrdiff_t>(std::min(all.size(), fewWaypoints)));
  for (std::size_t i = std::max(few.size(), all.size() - std::min<std::size_t>(all.size(), 3));
       i < all.size(); ++i) {
    few.push_back(all[i]);
  }
  return few;
}

void checkAlternatives(const TernActiveVenue& venue, RouteChecks& checks,
                       const std::shared_ptr<TernWaypoint>& from,
                       const std::shared_ptr<TernWaypoint>& to, const TernRoute& best) {
  int completions = 0;
  venue.wayfind(from, to, Value::map(), 100, [&](const auto& optimal, const auto& alternatives) {
    ++completions;
    require(optimal.has_value() || !alternatives || alternatives->empty(),
            "there are alternatives to a route only");
    if (optimal && !best.empty()) require(idsOf(*optimal) == idsOf(best), "the best route is best");
    if (!alternatives) return;
    for (const TernRoute& route : *alternatives) {
      checks.checkCopy(route, narrowed(from->id.integer()), 100);
      require(idsOf(route).back() == idsOf(*optimal).back(), "alternatives end where it ends");
    }
  });
  require(completions == 1, "a completion is called once");
}

void checkTour(const TernActiveVenue& venue, RouteChecks& checks,
               const std::shared_ptr<TernWaypoint>& from) {
  int completions = 0;
  const auto wanted = firstFew(venue.destinations);
  venue.wayfindToMultipleDestinations(wanted, from, 100, [&](const auto& legs, const auto& order) {
    ++completions;
    require(order.size() <= legs.size() + 1, "a tour has a leg between every two stops");
    for (const auto& place : order) {
      require(std::ranges::find(wanted, place) != wanted.end(), "a tour goes where it was told");
    }
    for (const TernRoute& leg : legs) {
      if (!leg.empty()) checks.checkCopy(leg, leg.front().points.front().nodeId(), 100);
    }
  });
  require(completions == 1, "a completion is called once");
}

void checkNearest(const TernActiveVenue& venue, const TernElement& element,
                  const std::shared_ptr<TernMap>& map, const std::shared_ptr<TernWaypoint>& from) {
  int completions = 0;
  venue.searchNearestElement(
      element, {12.5, 3}, map, [&](const auto& waypoint, const auto& found, const auto& error) {
        ++completions;
        require((waypoint != nullptr) == found.has_value(), "a waypoint comes with its element");
        require(waypoint == nullptr || !error, "or there is an error");
      });
  require(completions == 1, "a completion is called once");
  const auto nearest = venue.nearestElement()->another();
  const std::int64_t mapId = map != nullptr ? map->id.integer() : 7;
  if (const auto found = nearest->getNearestElementFrom(from, mapId, {element}, 100)) {
    require(found->waypoint != nullptr, "what is found is a waypoint");
    require(!(found->totalDistance < 0), "no distance is negative");
  }
}

void checkPlaces(const TernActiveVenue& venue, const std::shared_ptr<TernWaypoint>& from) {
  const std::vector<std::shared_ptr<TernMap>> maps =
      venue.maps != nullptr ? venue.maps->getAll() : std::vector<std::shared_ptr<TernMap>>();
  for (std::size_t i = 0; i < std::min<std::size_t>(maps.size(), 3); ++i) {
    for (const auto& place : firstFew(venue.destinations))
      checkNearest(venue, place, maps[i], from);
    for (const auto& place : firstFew(venue.amenities)) checkNearest(venue, place, maps[i], from);
    for (const auto& type : firstFew(venue.pathTypes)) checkNearest(venue, type, maps[i], from);
  }
}

}  // namespace

std::shared_ptr<TernActiveVenue> venueOf(const Value& documents) {
  auto venue = TernActiveVenue::initWithDictionary(documents["venue"]);
  for (const Value::Entry& building : documents["buildings"].entries()) {
    addBuilding(*venue, std::atoll(std::string(building.key.text()).c_str()), building.value);
  }
  attachWaypoints(*venue);
  return venue;
}

const RouteChecks::Links& RouteChecks::linksOf(std::int64_t id) {
  const auto known = links_.find(id);
  if (known != links_.end()) return known->second;
  const auto node = grid_.getNodeById(id);
  return links_.emplace(id, node ? node->neighbors() : Links()).first->second;
}

// Over links that the level admits, whatever they cost.
bool RouteChecks::leads(std::int64_t from, std::int64_t to, std::int64_t level) {
  if (!grid_.getNodeById(from)) return false;
  std::unordered_set<std::int64_t> met = {from};
  std::deque<std::int64_t> open = {from};
  while (!open.empty()) {
    const std::int64_t id = open.front();
    open.pop_front();
    if (id == to) return true;
    for (const TernNeighbor& link : linksOf(id)) {
      const std::int64_t next = link.neighborId.integer();
      if (link.acc.integer() > level || !grid_.getNodeById(next)) continue;
      if (met.insert(next).second) open.push_back(next);
    }
  }
  return false;
}

void RouteChecks::checkStep(const TernASNode& a, const TernASNode& b, std::int64_t level) {
  bool isTaken = false;
  for (const TernNeighbor& link : linksOf(a.nodeId())) {
    isTaken = isTaken ||
              (link.neighborId.integer() == b.nodeId() && link.acc.integer() <= level &&
               link.edgeTypeId.integer() == b.usedEdgeTypeId() && same(a.g() + link.cost, b.g()) &&
               same(a.distance().value_or(0) + link.distance, b.distance().value_or(0)));
  }
  require(isTaken, "a route is the sum of its links");
}

void RouteChecks::check(const TernRoute& route, std::int64_t from, std::int64_t to,
                        std::int64_t level) {
  // Who looks for what is not there finds the waypoint without an id.
  const std::int64_t goal = grid_.getNodeById(to) ? to : 0;
  require(!route.empty() == (from != goal && leads(from, goal, level)),
          "there is a route where links lead, and none elsewhere");
  checkSegments(route);
  if (route.empty()) return;
  const std::vector<TernASNode> points = pointsOf(route);
  require(points.front().nodeId() == from, "a route begins at its start");
  require(points.back().nodeId() == goal, "a route ends at its goal");
  for (std::size_t i = 1; i < points.size(); ++i) checkStep(points[i - 1], points[i], level);
  for (const TernPathPerFloor& segment : route) {
    require(same(segment.cost, segment.points.back().g()), "a segment costs what its end costs");
    require(same(segment.pixelDistance, segment.points.back().distance().value_or(0)),
            "and is as long as the way to there");
  }
}

void RouteChecks::checkCopy(const TernRoute& route, std::int64_t from, std::int64_t level) {
  checkSegments(route);
  require(!route.empty(), "a route is not empty");
  const std::vector<std::int64_t> ids = idsOf(route);
  require(ids.front() == from, "a route begins at its start");
  for (std::size_t i = 1; i < ids.size(); ++i) {
    const Links& links = linksOf(ids[i - 1]);
    require(std::ranges::any_of(links,
                                [&](const TernNeighbor& link) {
                                  return link.neighborId.integer() == ids[i] &&
                                         link.acc.integer() <= level;
                                }),
            "a route follows links");
  }
}

void checkVenue(TernActiveVenue& venue) {
  const auto grid = venue.globalASGrid();
  require(grid->nodeCount() == grid->waypoints().size(), "there is a node for each waypoint");
  RouteChecks checks(*grid);
  const Waypoints few = fewOf(grid->waypoints());
  for (const auto& from : few) {
    for (const auto& to : few) {
      const std::int64_t level = from->id.integer() % 2 == to->id.integer() % 2 ? 100 : 0;
      const TernRoute route = venue.wayfind(from, to, level);
      checks.check(route, narrowed(from->id.integer()), narrowed(to->id.integer()), level);
      if (level == 100) checkAlternatives(venue, checks, from, to, route);
    }
  }
  if (few.empty()) return;
  checkTour(venue, checks, few.front());
  checkPlaces(venue, few.back());
  require(venue.copyWithZone()->id == venue.id, "a copy has the same id");
}

}  // namespace tern::fuzz
